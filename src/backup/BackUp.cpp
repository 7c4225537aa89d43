#include "BackUp.h"

#include "ArchiveNames.h"
#include "BackUpParts.h"
#include "LogPictures.h"
#include "core/Error.h"
#include "core/Paths.h"
#include "core/SafeWriter.h"
#include "store/DataFile.h"
#include "store/LogFiles.h"

#include <QCoreApplication>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <utility>

namespace Tarno
{

namespace
{

namespace fs = std::filesystem;

RecordList RecordsOf(DataFile& file, const std::string& bytes)
{
    file.LoadBytes(bytes);
    return file.Records().List();
}

/// Chooses the entries of the pictures: each file once, and with its own path if it is in the picture folder.
class PicturePacker
{
public:
    PicturePacker(const ProgramFolder& folder, FileOperations& operations, ArchiveWriter& writer)
        : m_folder(folder.GetAppPath()), m_operations(operations), m_writer(writer)
    {
    }

    void Add(const std::vector<std::string>& pictures)
    {
        // the paths of the picture folder first, so that no other picture gets their names
        for (const bool isInFolder : {true, false}) {
            for (const std::string& stored : pictures) {
                const auto name = NameInFolder(m_folder, stored);
                if ((name && IsInPictureFolder(*name)) == isInFolder) {
                    Add(stored);
                }
            }
        }
    }

    BackUpResult result;
    std::map<std::string, std::string> names; ///< of the entries, by stored path

private:
    void Add(const std::string& stored)
    {
        const std::string path = PicturePath(m_folder, stored);
        if (!IsReadablePicture(path)) {
            result.missing.push_back(stored);
            return;
        }
        const FileState state = m_operations.GetState(path);
        const auto [known, isNew] = m_packed.try_emplace({state.volume, state.fileIndex});
        if (isNew) {
            known->second = m_taken.Add(WantedName(m_folder, stored));
            m_writer.AddFile(known->second, path);
            ++result.pictures;
        }
        names.emplace(stored, known->second);
    }

    std::string m_folder;
    FileOperations& m_operations;
    ArchiveWriter& m_writer;
    PictureNames m_taken;
    std::map<std::pair<std::uint64_t, std::uint64_t>, std::string> m_packed; ///< by volume and file
};

/// Returns the data folder of the log that was backed up, or an empty text if that is not known.
std::string LogOfBackUp(const std::string& path)
{
    try {
        const ArchiveReader archive(path);
        const ArchiveEntry* note = archive.Find(noteName);
        return note == nullptr ? std::string() : ReadNote(archive.ReadBytes(*note)).log;
    } catch (const Error&) { // damaged, or not an archive
        return {};
    }
}

} // namespace

std::string ProgramName()
{
    return "Tarno " + QCoreApplication::applicationVersion().toStdString();
}

BackUpResult BackUp(const ProgramFolder& folder, FileOperations& operations, const std::string& path,
                    const BackUpOptions& options, const Progress& progress)
{
    LogBytes files;
    {
        const FolderLock lock = SafeWriter(operations).LockFolder(folder.GetAppPath());
        files = ReadLogFiles(folder);
    }
    if (const std::string problem = ProblemOf(files); !problem.empty()) {
        throw Error(ErrorNumber::PathFileAccess, problem + "\nNothing was backed up.");
    }
    SafeWriter(operations).RemoveOldTemporaries(FolderOf(path), "tarno-");
    ArchiveWriter writer(operations);
    PicturePacker pictures(folder, operations, writer);
    if (options.pictures == BackUpPictures::Include) {
        DataFile trips(LogFiles::trips);
        DataFile locations(LogFiles::locations);
        pictures.Add(StoredPictures(RecordsOf(trips, files.at(trips.Name())),
                                    RecordsOf(locations, files.at(locations.Name()))));
    }
    writer.AddBytes(std::string(noteName), WriteNote({.log = Resolved(folder.GetAppPath()),
                                                      .time = ToText(options.time),
                                                      .program = options.program,
                                                      .pictures = pictures.names}));
    for (auto& [name, bytes] : files) {
        writer.AddBytes(name, std::move(bytes));
    }
    writer.Write(path, progress);
    return pictures.result;
}

bool DiffersFromBackUp(const ProgramFolder& folder, FileOperations& operations, const std::string& path)
{
    LogBytes files;
    {
        const FolderLock lock = SafeWriter(operations).LockFolder(folder.GetAppPath());
        files = ReadLogFiles(folder);
    }
    try {
        const ArchiveReader archive(path);
        LogBytes archived;
        const auto read = [&](const char* name) {
            if (const ArchiveEntry* entry = archive.Find(name)) {
                archived.emplace(name, archive.ReadBytes(*entry));
            }
        };
        for (const LogFile& file : LogFiles::data) {
            read(file.name);
        }
        for (const char* name : LogFiles::pickLists) {
            read(name);
        }
        return files != archived;
    } catch (const Error&) {
        return true;
    }
}

void EnsureBackUpFolder(const ProgramFolder& folder, FileOperations& operations, const std::string& backUps)
{
    if (operations.GetState(backUps).exists) {
        return;
    }
    if (FolderOf(backUps) != folder.GetAppPath()) {
        throw Error(ErrorNumber::PathNotFound, "The folder does not exist. Its drive may not be connected.");
    }
    operations.MakeFolder(backUps);
}

std::string BackUpIfChanged(const ProgramFolder& folder, FileOperations& operations,
                            const std::string& backUps, const BackUpOptions& options,
                            const Progress& progress)
{
    EnsureBackUpFolder(folder, operations, backUps);
    const auto pathOf = [&](const std::string& name) { return FromPath(ToPath(backUps) / ToPath(name)); };
    std::vector<std::string> ofThisLog;
    for (const std::string& other : AutomaticBackUps(NamesIn(backUps))) {
        if (LogOfBackUp(pathOf(other)) == Resolved(folder.GetAppPath())) {
            ofThisLog.push_back(other);
        }
    }
    std::string name;
    if (ofThisLog.empty() || DiffersFromBackUp(folder, operations, pathOf(ofThisLog.back()))) {
        name = BackUpName(BackUpKind::Automatic, options.time, NamesIn(backUps));
        BackUp(folder, operations, pathOf(name), options, progress);
        ofThisLog.push_back(name);
    }
    for (const std::string& expired : ExpiredBackUps(ofThisLog)) {
        SafeWriter(operations).TryRemove(pathOf(expired));
    }
    return name;
}

std::vector<std::string> NamesIn(const std::string& folder)
{
    std::vector<std::string> names;
    std::error_code failure;
    for (fs::directory_iterator entry(ToPath(folder), failure); !failure && entry != fs::directory_iterator();
         entry.increment(failure)) {
        names.push_back(FromPath(entry->path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace Tarno
