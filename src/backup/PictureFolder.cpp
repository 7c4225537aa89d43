#include "PictureFolder.h"

#include "LogPictures.h"
#include "core/Paths.h"
#include "core/SafeWriter.h"

#include <QFile>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace Tarno
{

namespace
{

namespace fs = std::filesystem;

constexpr qint64 blockSize = 1 << 20;

/// Thrown to stop reading contents that differ.
struct Different {
};

void ReadFile(const std::string& path, const std::function<void(std::string_view block)>& take)
{
    QFile file(ToPath(path));
    if (!file.open(QIODevice::ReadOnly)) {
        throw Error(ErrorNumber::PathFileAccess);
    }
    std::string block(blockSize, '\0');
    for (qint64 count = 0; (count = file.read(block.data(), blockSize)) != 0;) {
        if (count < 0) {
            throw Error(ErrorNumber::DeviceInputOutput);
        }
        take(std::string_view(block).substr(0, static_cast<std::size_t>(count)));
    }
}

} // namespace

PictureContents ContentsOf(const ArchiveReader& archive, const ArchiveEntry& entry)
{
    return {entry.size, [&](const auto& take) { archive.Read(entry, take); }};
}

PictureContents ContentsOf(const std::string& path)
{
    std::error_code failure;
    const auto size = fs::file_size(ToPath(path), failure);
    return {failure ? 0 : size, [path](const auto& take) { ReadFile(path, take); }};
}

PictureFolder::PictureFolder(const std::string& dataFolder) : m_folder(dataFolder)
{
    std::error_code failure;
    const fs::path base = ToPath(dataFolder);
    for (fs::recursive_directory_iterator entry(base / pictureFolder,
                                                fs::directory_options::follow_directory_symlink, failure);
         !failure && entry != fs::recursive_directory_iterator(); entry.increment(failure)) {
        const std::u8string relative = entry->path().lexically_relative(base).generic_u8string();
        const std::string name(relative.begin(), relative.end());
        m_files.emplace(CaseKey(name), name);
        m_names.Reserve(name);
    }
}

PictureFolder::Place PictureFolder::PlaceFor(const std::string& wanted, const PictureContents& contents)
{
    std::string known;
    std::string name = m_names.Add(wanted, [&](const std::string& taken) {
        const auto file = m_files.find(CaseKey(taken));
        if (file == m_files.end() || !HasContents(PicturePath(m_folder, file->second), contents)) {
            return false;
        }
        known = file->second;
        return true;
    });
    return known.empty() ? Place{std::move(name), false} : Place{std::move(known), true};
}

bool PictureFolder::HasContents(const std::string& path, const PictureContents& contents) const
{
    QFile file(ToPath(path));
    std::error_code ignored;
    if (!fs::is_regular_file(ToPath(path), ignored) || !file.open(QIODevice::ReadOnly) ||
        static_cast<std::uint64_t>(file.size()) != contents.size) {
        return false;
    }
    try {
        contents.read([&](std::string_view block) {
            const QByteArray here = file.read(static_cast<qint64>(block.size()));
            if (std::string_view(here.data(), static_cast<std::size_t>(here.size())) != block) {
                throw Different();
            }
        });
    } catch (const Different&) {
        return false;
    }
    return true;
}

void WritePicture(const std::string& folder, const std::string& path, const PictureContents& contents,
                  FileOperations& operations)
{
    MakeFolders(folder, path, operations);
    operations.Create(path, {}, {});
    try {
        contents.read([&](std::string_view block) { operations.Append(path, block); });
        operations.SyncFile(path);
        if (operations.GetState(path).size != contents.size) {
            throw Error(ErrorNumber::DiskFull);
        }
    } catch (...) {
        SafeWriter(operations).TryRemove(path);
        throw;
    }
}

void MakeFolders(const std::string& folder, const std::string& path, FileOperations& operations)
{
    std::vector<std::string> missing;
    for (std::string parent = FolderOf(path);
         parent.size() > folder.size() && !operations.GetState(parent).exists; parent = FolderOf(parent)) {
        missing.push_back(parent);
    }
    std::reverse(missing.begin(), missing.end());
    for (const std::string& parent : missing) {
        operations.MakeFolder(parent);
    }
}

} // namespace Tarno
