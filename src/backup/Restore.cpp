#include "Restore.h"

#include "BackUpParts.h"
#include "LogPictures.h"
#include "RestoreStaging.h"
#include "core/Paths.h"
#include "core/SafeWriter.h"
#include "core/Xml.h"
#include "store/EntryFields.h"
#include "store/LogFiles.h"
#include "store/RecordLayouts.h"

#include <filesystem>
#include <utility>

namespace Tarno
{

namespace
{

constexpr double checking = 0.4; // the share of the work

using NewPaths = std::map<std::string, std::string>; ///< relative paths of pictures by stored paths

/// Returns the data file `bytes` with the new paths in its records. Returns the same bytes if none changes.
std::string WithPictures(const std::string& bytes, std::size_t position, const NewPaths& paths)
{
    pugi::xml_document document;
    ParseXml(bytes, document);
    bool isChanged = false;
    for (const pugi::xml_node& record : document.child("data").children()) {
        const auto path = paths.find(RecordView(record).Text(position));
        if (path == paths.end() || path->first == path->second) {
            continue;
        }
        std::size_t index = 0;
        for (pugi::xml_node value : record.children()) {
            if (value.type() == pugi::node_element && index++ == position) {
                value.remove_children();
                value.append_child(pugi::node_pcdata).set_value(path->second.c_str());
                isChanged = true;
            }
        }
    }
    return isChanged ? SerializeXml(document) : bytes;
}

/// Creates the folder and its parents.
void CreateFolder(const std::string& folder, FileOperations& operations)
{
    if (!operations.GetState(folder).exists) {
        const std::string parent = FolderOf(folder);
        if (parent != folder) {
            CreateFolder(parent, operations);
        }
        operations.MakeFolder(folder);
    }
}

/// Throws unless the log is complete after the restore and every file can be put in place by renaming it.
void CheckTargets(const BackUpArchive& backUp, const ProgramFolder& folder, FileOperations& operations)
{
    const FileState ours = operations.GetState(folder.GetAppPath());
    const auto fail = [](const std::string& text) {
        throw Error(ErrorNumber::PathFileAccess, text + "\nNothing was changed.");
    };
    for (const LogFile& file : LogFiles::data) {
        if (!backUp.Files().contains(file.name) && !operations.GetState(folder.FindPath(file.name)).exists) {
            fail("Neither the back-up nor the folder has the file " + std::string(file.name) + '.');
        }
    }
    for (const auto& [name, bytes] : backUp.Files()) {
        const std::string target = Resolved(folder.FindPath(name));
        if (!operations.GetState(target).isReplaceable) {
            fail("You may not write to the file " + target + '.');
        }
        if (operations.GetState(FolderOf(target)).volume != ours.volume) {
            fail("The file " + name + " is a link to another disk.");
        }
    }
    const FileState pictures = operations.GetState(folder.PathOf(pictureFolder));
    if (pictures.exists && pictures.volume != ours.volume) {
        fail("The folder " + folder.PathOf(pictureFolder) + " is a link to another disk.");
    }
}

/// Makes a back-up of the present files, without pictures, because none is replaced. Returns its path.
std::string BackUpPresent(const ProgramFolder& folder, FileOperations& operations, const LocalTime& time,
                          const std::string& program)
{
    LogBytes files = ReadLogFiles(folder);
    if (files.empty()) {
        return {};
    }
    const std::string backUps = folder.PathOf("backups");
    EnsureBackUpFolder(folder, operations, backUps);
    ArchiveWriter writer(operations);
    writer.AddBytes(std::string(noteName), WriteNote({.log = Resolved(folder.GetAppPath()),
                                                      .time = ToText(time),
                                                      .program = program,
                                                      .pictures = {}}));
    for (auto& [name, bytes] : files) {
        writer.AddBytes(name, std::move(bytes));
    }
    std::string path =
        FromPath(ToPath(backUps) / BackUpName(BackUpKind::BeforeRestore, time, NamesIn(backUps)));
    writer.Write(path);
    return path;
}

/// Stages the pictures that the folder does not have. Returns the new paths of all.
NewPaths StagePictures(const BackUpArchive& backUp, const ProgramFolder& folder, RestoreStaging& staging,
                       RestoreResult& result, const Progress& progress)
{
    const std::vector<std::string> stored = StoredPictures(backUp.Trips(), backUp.Locations());
    PictureFolder pictures(folder.GetAppPath());
    std::map<const ArchiveEntry*, std::string> placed;
    NewPaths paths;
    double done = 0;
    for (const std::string& picture : stored) {
        Report(progress, done++ / static_cast<double>(stored.size()));
        const ArchiveEntry* entry = backUp.PictureOf(picture);
        if (entry == nullptr) {
            std::error_code ignored;
            if (!std::filesystem::exists(ToPath(PicturePath(folder.GetAppPath(), picture)), ignored)) {
                result.missing.push_back(picture);
            }
            continue;
        }
        const auto [known, isNew] = placed.try_emplace(entry);
        if (isNew) {
            const PictureContents contents = ContentsOf(backUp.Archive(), *entry);
            const PictureFolder::Place place = pictures.PlaceFor(entry->name, contents);
            if (!place.isThere) {
                staging.AddPicture(place.name, contents);
            }
            known->second = place.name;
        }
        paths.emplace(picture, known->second);
    }
    result.pictures = placed.size();
    return paths;
}

void StageFiles(const BackUpArchive& backUp, const NewPaths& paths, RestoreStaging& staging)
{
    for (const auto& [name, bytes] : backUp.Files()) {
        staging.AddFile(name, name == LogFiles::trips.name ? WithPictures(bytes, EntryField::Picture, paths)
                              : name == LogFiles::locations.name
                                  ? WithPictures(bytes, LocationField::LocPicture, paths)
                                  : bytes);
    }
}

} // namespace

RestoreResult RestoreBackUp(const std::string& path, const ProgramFolder& folder, FileOperations& operations,
                            const LocalTime& time, const std::string& program, const Progress& progress)
{
    const BackUpArchive backUp(path);
    backUp.Archive().CheckAll(PartOf(progress, 0, checking));
    CreateFolder(folder.GetAppPath(), operations);
    const FolderLock lock = SafeWriter(operations).LockFolder(folder.GetAppPath());
    RestoreStaging staging(folder, operations);
    if (staging.Exists()) {
        staging.Finish();
    }
    CheckTargets(backUp, folder, operations);
    RestoreResult result;
    result.before = BackUpPresent(folder, operations, time, program);
    staging.Create();
    try {
        const NewPaths paths = StagePictures(backUp, folder, staging, result, PartOf(progress, checking, 1));
        StageFiles(backUp, paths, staging);
        Report(progress, 1);
        staging.Commit();
    } catch (...) {
        staging.Abandon();
        throw;
    }
    staging.Finish();
    result.restored = Summarize(backUp.Trips(), backUp.Locations());
    return result;
}

FinishedRestore FinishRestore(const ProgramFolder& folder, FileOperations& operations)
{
    RestoreStaging staging(folder, operations);
    if (!staging.Exists()) {
        return FinishedRestore::Nothing;
    }
    const FolderLock lock = SafeWriter(operations).LockFolder(folder.GetAppPath());
    return staging.Exists() ? staging.Finish() : FinishedRestore::Nothing;
}

} // namespace Tarno
