#include "DataFile.h"

#include "core/ErrorLog.h"
#include "core/Paths.h"

#include <filesystem>
#include <utility>

namespace Tarno
{

namespace
{

constexpr int maxAttempts = 100; // one every 10 ms
constexpr std::uint64_t roomToGrow = 65536;

const std::string nothingWritten = "\r\nNothing was written. Your changes are kept while Tarno is open. ";
const std::string saveAgain = ", then save again.";

/// Makes `data` the first node. A node before it, for example a declaration that an XML tool has added, would
/// hide its records.
void MoveDataToTheFront(pugi::xml_document& document)
{
    document.prepend_move(document.child("data"));
    const auto isDeclaration = [](const pugi::xml_node& node) {
        return node.type() == pugi::node_declaration || node.type() == pugi::node_doctype;
    };
    while (document.remove_child(document.find_child(isDeclaration))) {
    }
}

/// Makes the text at the start of `data` its first child, so that records can be inserted before it.
void SeparateText(pugi::xml_node data)
{
    if (const std::string text = data.value(); !text.empty()) {
        data.text().set("");
        data.prepend_child(pugi::node_pcdata).set_value(text.c_str());
    }
}

/// Adds the keys that another merge has given, also to records that already have a new key.
void AddNewKeys(KeyMap& newKeys, KeyMap later)
{
    for (auto& [from, to] : newKeys) {
        if (const auto found = later.find(to); found != later.end()) {
            to = found->second;
            later.erase(found);
        }
    }
    newKeys.merge(later);
}

std::string Describe(const std::string& bytes, const XmlFault& fault)
{
    return DescribeXmlPosition(bytes, fault.offset) + ": " + std::string(fault.reason);
}

/// Writes `record` to a separate file in the folder of `path` without synchronising the folder. Returns the
/// path of that file.
std::string WriteKeptFile(const Record& record, const std::string& path, FileOperations& operations)
{
    pugi::xml_document document;
    document.append_child("data").append_copy(record.View().Node());
    const std::filesystem::path log = ToPath(path);
    for (int number = 1;; ++number) {
        const std::string name =
            FromPath(log.stem()) + "-kept-" + std::to_string(number) + FromPath(log.extension());
        std::string kept = FromPath(log.parent_path() / ToPath(name));
        if (!operations.GetState(kept).exists) {
            SafeWriter(operations).Replace(kept, SerializeXml(document), std::nullopt);
            return kept;
        }
    }
}

} // namespace

DataFile::DataFile(std::string name, RecordTable::Names names) : m_name(std::move(name)), m_names(names)
{
    Release();
}

void DataFile::Load(const ProgramFolder& folder, FileOperations& operations)
{
    Release();
    m_path = folder.FindPath(m_name);
    m_problem.clear();
    try {
        LoadContents(operations);
    } catch (...) { // the document stays empty
        m_problem = CurrentError().Description();
    }
}

void DataFile::LoadContents(FileOperations& operations)
{
    const std::string path = Resolved(m_path);
    m_folder = operations.GetState(FolderOf(path));
    m_version = operations.GetState(path);
    if (!m_version.exists) {
        m_problem = m_folder.exists ? "The file does not exist" : "The folder does not exist";
        return;
    }
    if (const auto fault = ParseContents(ReadWholeFile(path))) {
        m_problem = Describe(ReadWholeFile(path), *fault);
    }
}

void DataFile::LoadBytes(const std::string& bytes)
{
    Release();
    m_path.clear();
    m_folder = {};
    m_problem.clear();
    if (const auto fault = ParseContents(bytes)) {
        m_problem = Describe(bytes, *fault);
    }
}

std::optional<XmlFault> DataFile::ParseContents(std::string bytes)
{
    auto contents = std::make_unique<Contents>(m_names);
    if (auto fault = contents->Parse(std::move(bytes))) {
        return fault;
    }
    m_contents = std::move(contents);
    if (m_contents->document.first_child() != m_contents->document.child("data")) {
        m_problem = "Something precedes the element \"data\", for example a declaration or a comment";
    }
    return std::nullopt;
}

void DataFile::Release()
{
    m_contents = std::make_unique<Contents>(m_names);
}

void DataFile::Save(const ProgramFolder& folder, const std::string& name, FileOperations& operations,
                    MergeResult& merged)
{
    SafeWriter writer(operations);
    WhileMerged(folder, name, operations, merged, [&](const std::string& path, const FileState& found) {
        const std::string bytes = SerializeXml(m_contents->document, m_version.size + roomToGrow);
        const auto written = writer.Replace(path, bytes, found);
        if (written) {
            m_version = *written;
            m_wasSaved = true;
            operations.SyncFolder(FolderOf(path));
            Records().ForgetChanges();
        }
        return written.has_value();
    });
}

void DataFile::MergeChangesOfOthers(const ProgramFolder& folder, const std::string& name,
                                    FileOperations& operations, MergeResult& merged)
{
    WhileMerged(folder, name, operations, merged,
                [](const std::string& /*path*/, const FileState& /*found*/) { return true; });
}

template <typename Finish>
void DataFile::WhileMerged(const ProgramFolder& folder, const std::string& name, FileOperations& operations,
                           MergeResult& merged, const Finish& finish)
{
    std::error_code ignored;
    const std::string path =
        Resolved(std::filesystem::exists(ToPath(m_path), ignored) ? m_path : folder.FindPath(name));
    if (!operations.GetState(FolderOf(path)).IsSameFile(m_folder)) {
        throw Error(ErrorNumber::PathNotFound,
                    "The folder of " + m_name + " is no longer the one that was opened:\r\n" +
                        FolderOf(path) + nothingWritten + "Make the original folder available" + saveAgain);
    }
    SafeWriter writer(operations);
    const FolderLock lock = writer.LockFolder(FolderOf(path));
    std::string lastRead;
    for (int attempt = 1; attempt <= maxAttempts; ++attempt) {
        const FileState found = operations.GetState(path);
        const bool isChangedByOther = found.exists && found.isReplaceable && found != m_version;
        if ((!isChangedByOther || MergeFile(path, found, lastRead, operations, merged)) &&
            finish(path, found)) {
            return;
        }
        operations.Pause();
    }
    throw Error(ErrorNumber::PathFileAccess, "Another program has changed " + path +
                                                 ". The file is damaged, incomplete or cannot be read." +
                                                 nothingWritten + "Restore that file or move it away" +
                                                 saveAgain);
}

std::optional<XmlFault> DataFile::Contents::Parse(std::string newBytes)
{
    bytes = std::move(newBytes);
    if (auto fault = ParseXmlInPlace(bytes, document)) {
        return fault;
    }
    const pugi::xml_node data = document.child("data");
    if (!data) {
        return XmlFault{0, "No element \"data\""};
    }
    SeparateText(data);
    records.Rebuild();
    return std::nullopt;
}

bool DataFile::MergeFile(const std::string& path, const FileState& found, std::string& lastRead,
                         FileOperations& operations, MergeResult& merged)
{
    std::string bytes;
    try {
        bytes = ReadWholeFile(path);
    } catch (const Error&) { // just removed, or held by the program that writes it
        return false;
    }
    // A file that replaced the old one is complete. A file that is written in place may be incomplete, so it
    // must have the same contents twice.
    const bool isStable = !found.IsSameFile(m_version) || bytes == lastRead;
    lastRead = bytes;
    auto theirs = std::make_unique<Contents>(m_names);
    if (!isStable || theirs->Parse(std::move(bytes))) {
        return false;
    }
    MoveDataToTheFront(theirs->document);
    MergeResult result = MergeChanges(Records(), theirs->records);
    for (Conflict& conflict : result.conflicts) {
        if (conflict.theirs.Count() != 0) {
            conflict.keptAs = WriteKeptFile(conflict.theirs, path, operations);
        }
        merged.conflicts.push_back(std::move(conflict));
    }
    if (!result.conflicts.empty()) {
        operations.SyncFolder(FolderOf(path)); // if this fails, the notices still name the kept files
    }
    AddNewKeys(merged.newKeys, std::move(result.newKeys));
    m_contents = std::move(theirs);
    m_version = found;
    return true;
}

} // namespace Tarno
