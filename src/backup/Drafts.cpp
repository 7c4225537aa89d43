#include "Drafts.h"

#include "BackUp.h"
#include "core/Error.h"
#include "core/Paths.h"
#include "core/SafeWriter.h"
#include "core/Text.h"
#include "core/Xml.h"

#include <QCryptographicHash>

#include <algorithm>
#include <optional>
#include <tuple>
#include <utility>

namespace Tarno
{

namespace
{

constexpr std::string_view prefix = "draft-";
constexpr std::string_view suffix = ".xml";
constexpr std::string_view damagedSuffix = ".damaged";

std::string_view WordOf(RecordTitle::Kind kind)
{
    return kind == RecordTitle::Kind::Trip ? "trip" : "location";
}

/// Returns a word that identifies the text in a file name.
std::string Digest(const std::string& text)
{
    constexpr int length = 16;
    return QCryptographicHash::hash(QByteArray::fromStdString(text), QCryptographicHash::Sha256)
        .toHex()
        .left(length)
        .toStdString();
}

void AddValues(pugi::xml_node root, const char* name, const StoredTexts& values)
{
    pugi::xml_node list = root.append_child(name);
    for (const std::string& value : values) {
        list.append_child("value").text().set(XmlText(value).c_str());
    }
}

StoredTexts ValuesOf(const pugi::xml_node& list)
{
    StoredTexts values;
    for (const pugi::xml_node& value : list.children("value")) {
        values.push_back(TextOf(value));
    }
    return values;
}

/// Returns the draft, or nothing if the file is damaged.
std::optional<Draft> ReadDraft(const std::string& bytes)
{
    pugi::xml_document document;
    if (!ParseXml(bytes, document)) {
        return std::nullopt;
    }
    const pugi::xml_node root = document.child("draft");
    const std::string kind = root.child("kind").text().get();
    const bool isTrip = kind == WordOf(RecordTitle::Kind::Trip);
    Draft draft{isTrip ? RecordTitle::Kind::Trip : RecordTitle::Kind::Location,
                root.child("key").text().get(),
                TextOf(root.child("folder")),
                root.child("written").text().get(),
                ValuesOf(root.child("values")),
                ValuesOf(root.child("before")),
                root.child("number").text().as_int(1)};
    const bool isComplete = (isTrip || kind == WordOf(RecordTitle::Kind::Location)) && !draft.key.empty() &&
                            !draft.dataFolder.empty() && !draft.values.empty();
    return isComplete ? std::optional(std::move(draft)) : std::nullopt;
}

} // namespace

Drafts::Drafts(std::string folder, FileOperations& operations)
    : m_folder(std::move(folder)), m_operations(operations)
{
}

bool Drafts::Claim(const std::string& dataFolder)
{
    if (!m_claim) {
        try {
            MakeFolder();
        } catch (const Error&) { // NOLINT(bugprone-empty-catch): without it, there are no drafts either
        }
        const std::string name = "log-" + Digest(dataFolder) + ".lock";
        auto claim =
            std::make_unique<QLockFile>(QString::fromStdString(FromPath(ToPath(m_folder) / ToPath(name))));
        claim->setStaleLockTime(0); // stale only if the program that has the lock is not running any more
        if (!claim->tryLock() && claim->error() == QLockFile::LockFailedError) {
            return false;
        }
        m_claim = std::move(claim);
        SafeWriter(m_operations).RemoveOldTemporaries(m_folder, prefix);
    }
    return true;
}

std::string Drafts::PathOf(const Draft& draft) const
{
    const std::string number = draft.number == 1 ? std::string() : '-' + std::to_string(draft.number);
    const std::string name = std::string(prefix) + std::string(WordOf(draft.kind)) + '-' +
                             Digest(draft.dataFolder + '\n' + draft.key) + number + std::string(suffix);
    return FromPath(ToPath(m_folder) / name);
}

void Drafts::Write(const Draft& draft)
{
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("draft");
    const auto add = [&](const char* name, std::string_view text) {
        root.append_child(name).text().set(XmlText(text).c_str());
    };
    add("kind", WordOf(draft.kind));
    add("key", draft.key);
    add("folder", draft.dataFolder);
    add("written", draft.written);
    add("number", std::to_string(draft.number));
    AddValues(root, "values", draft.values);
    AddValues(root, "before", draft.before);
    MakeFolder();
    SafeWriter(m_operations).Write(PathOf(draft), SerializeXml(document));
}

void Drafts::MakeFolder()
{
    if (!m_operations.GetState(m_folder).exists) {
        m_operations.MakeFolder(m_folder);
    }
}

bool Drafts::Exists(const Draft& draft)
{
    return m_operations.GetState(PathOf(draft)).exists;
}

void Drafts::Remove(const Draft& draft)
{
    const std::string path = PathOf(draft);
    if (m_operations.GetState(path).exists) {
        m_operations.Remove(path);
        m_operations.SyncFolder(m_folder);
    }
}

std::vector<Draft> Drafts::List(const std::string& dataFolder)
{
    std::vector<Draft> drafts;
    for (const std::string& name : NamesIn(m_folder)) {
        if (!name.starts_with(prefix) || !name.ends_with(suffix)) {
            continue;
        }
        const std::string path = FromPath(ToPath(m_folder) / ToPath(name));
        try {
            std::optional<Draft> draft = ReadDraft(ReadWholeFile(path));
            if (!draft) {
                m_operations.Replace(path, path + std::string(damagedSuffix));
            } else if (draft->dataFolder == dataFolder) {
                drafts.push_back(std::move(*draft));
            }
        } catch (
            const Error&) { // NOLINT(bugprone-empty-catch): cannot be read now; the next call tries again
        }
    }
    std::sort(drafts.begin(), drafts.end(), [](const Draft& left, const Draft& right) {
        return std::tie(left.written, left.kind, left.key) < std::tie(right.written, right.kind, right.key);
    });
    return drafts;
}

DraftState StateOf(const Draft& draft, const cSQL& sql)
{
    if (draft.before.empty()) {
        return DraftState::NewRecord;
    }
    RecordList records;
    if (draft.kind == RecordTitle::Kind::Trip) {
        sql.EntryList(records);
    } else {
        sql.LocationList(records);
    }
    const auto record = std::find_if(records.begin(), records.end(), [&](const RecordView& candidate) {
        return candidate.Text(0) == draft.key;
    });
    if (record == records.end()) {
        return DraftState::RecordDeleted;
    }
    const auto has = [&](const StoredTexts& values) {
        for (std::size_t position = 0; position < values.size(); ++position) {
            if (record->Text(position) != values[position]) {
                return false;
            }
        }
        return record->Count() == values.size();
    };
    return has(draft.values)   ? DraftState::Saved
           : has(draft.before) ? DraftState::Unchanged
                               : DraftState::ChangedSince;
}

} // namespace Tarno
