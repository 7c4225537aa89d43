#include "RestoreStaging.h"

#include "LogPictures.h"
#include "core/Paths.h"
#include "core/SafeWriter.h"
#include "store/LogFiles.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <vector>

namespace Tarno
{

namespace
{

namespace fs = std::filesystem;

constexpr std::string_view stagingName = "tarno-restore.tarno-tmp";
constexpr std::string_view markerName = "restore-complete";

/// Returns everything in the folder and below it, the deepest first. Does not follow links.
std::vector<fs::directory_entry> EntriesBelow(const std::string& folder)
{
    std::vector<fs::directory_entry> entries;
    std::error_code failure;
    for (fs::recursive_directory_iterator entry(ToPath(folder), failure);
         !failure && entry != fs::recursive_directory_iterator(); entry.increment(failure)) {
        entries.push_back(*entry);
    }
    std::sort(entries.begin(), entries.end(), [](const auto& left, const auto& right) {
        return left.path().native().size() > right.path().native().size();
    });
    return entries;
}

bool IsFolder(const fs::directory_entry& entry)
{
    return entry.symlink_status().type() == fs::file_type::directory;
}

std::string RelativeName(const fs::path& path, const std::string& folder)
{
    const std::u8string name = path.lexically_relative(ToPath(folder)).generic_u8string();
    return {name.begin(), name.end()};
}

} // namespace

RestoreStaging::RestoreStaging(const ProgramFolder& folder, FileOperations& operations)
    : m_folder(folder), m_operations(operations), m_path(folder.PathOf(stagingName))
{
}

std::string RestoreStaging::PathOf(std::string_view name) const
{
    return PicturePath(m_path, std::string(name));
}

std::string RestoreStaging::MarkerPath() const
{
    return PathOf(markerName);
}

bool RestoreStaging::Exists() const
{
    std::error_code ignored;
    return fs::symlink_status(ToPath(m_path), ignored).type() == fs::file_type::directory;
}

void RestoreStaging::Create()
{
    m_operations.MakeFolder(m_path);
}

void RestoreStaging::AddFile(const std::string& name, std::string_view bytes)
{
    const FileState made = m_operations.Create(PathOf(name), bytes, Resolved(m_folder.FindPath(name)));
    if (made.size != bytes.size()) {
        throw Error(ErrorNumber::DiskFull);
    }
}

void RestoreStaging::AddPicture(const std::string& name, const PictureContents& contents)
{
    WritePicture(m_path, PathOf(name), contents, m_operations);
}

void RestoreStaging::Commit()
{
    for (const fs::directory_entry& entry : EntriesBelow(m_path)) {
        if (IsFolder(entry)) {
            m_operations.SyncFolder(FromPath(entry.path()));
        }
    }
    m_operations.SyncFolder(m_path);
    m_operations.SyncFolder(m_folder.GetAppPath());
    SafeWriter(m_operations).Write(MarkerPath(), "The files beside this one replace those of the log.\n");
}

void RestoreStaging::Abandon()
{
    try {
        // the marker may exist although it counts as failed, for example if the folder was not synchronised
        if (m_operations.GetState(MarkerPath()).exists) {
            m_operations.Remove(MarkerPath());
        }
    } catch (const Error&) { // NOLINT(bugprone-empty-catch): FinishRestore then completes the restore
    }
    RemoveAll();
}

FinishedRestore RestoreStaging::Finish()
{
    if (m_operations.GetState(MarkerPath()).exists) {
        try {
            PutFilesInPlace();
            m_operations.Remove(MarkerPath());
        } catch (const Error& error) {
            throw RestoreInterrupted("The log was restored only in part: " + error.Description() +
                                     ".\nClose all programs that use the log and start Tarno again. It then "
                                     "completes the restore.");
        }
        RemoveAll();
        return FinishedRestore::Completed;
    }
    const auto entries = EntriesBelow(m_path);
    const bool hasFiles = !std::all_of(entries.begin(), entries.end(), IsFolder);
    RemoveAll();
    return hasFiles ? FinishedRestore::Discarded : FinishedRestore::Nothing;
}

void RestoreStaging::PutFilesInPlace()
{
    std::set<std::string> folders{m_path, m_folder.GetAppPath()};
    for (const fs::directory_entry& entry : EntriesBelow(m_path)) {
        const std::string name = RelativeName(entry.path(), m_path);
        if (IsInPictureFolder(name) && !IsFolder(entry)) {
            PutPictureInPlace(name);
            folders.insert(FolderOf(m_folder.PathOf(name)));
        }
    }
    const auto put = [&](const char* name) {
        if (m_operations.GetState(PathOf(name)).exists) {
            const std::string target = Resolved(m_folder.FindPath(name));
            SafeWriter(m_operations).PutInPlace(PathOf(name), target);
            folders.insert(FolderOf(target));
        }
    };
    for (const LogFile& file : LogFiles::data) {
        put(file.name);
    }
    for (const char* name : LogFiles::pickLists) {
        put(name);
    }
    for (const std::string& folder : folders) { // before the marker disappears
        m_operations.SyncFolder(folder);
    }
}

void RestoreStaging::PutPictureInPlace(const std::string& name)
{
    std::string target = PicturePath(m_folder.GetAppPath(), name);
    // another program may have taken the name while a killed restore was waiting
    for (int number = 2; m_operations.GetState(target).exists; ++number) {
        const fs::path path = ToPath(PicturePath(m_folder.GetAppPath(), name));
        target = FromPath(path.parent_path() / path.stem()) + '-' + std::to_string(number) +
                 FromPath(path.extension());
    }
    MakeFolders(m_folder.GetAppPath(), target, m_operations);
    SafeWriter(m_operations).PutInPlace(PathOf(name), target);
}

void RestoreStaging::RemoveAll()
{
    try {
        for (const fs::directory_entry& entry : EntriesBelow(m_path)) {
            if (IsFolder(entry)) {
                m_operations.RemoveFolder(FromPath(entry.path()));
            } else {
                m_operations.Remove(FromPath(entry.path()));
            }
        }
        m_operations.RemoveFolder(m_path);
    } catch (const Error&) { // NOLINT(bugprone-empty-catch): FinishRestore does it at the next start
    }
}

} // namespace Tarno
