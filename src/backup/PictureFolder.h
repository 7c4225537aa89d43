#pragma once

#include "backup/Archive.h"
#include "backup/ArchiveNames.h"
#include "core/FileOperations.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace Tarno
{

/// The contents of a picture, which need not be in memory.
struct PictureContents {
    std::uint64_t size = 0;
    std::function<void(const std::function<void(std::string_view block)>& take)> read;
};

PictureContents ContentsOf(const ArchiveReader& archive, const ArchiveEntry& entry);
/// Reading throws Error if the file cannot be read.
PictureContents ContentsOf(const std::string& path);

/// The picture folder of a log, to which pictures are added without replacing any.
class PictureFolder
{
public:
    /// Lists the pictures in the picture folder of the data folder.
    explicit PictureFolder(const std::string& dataFolder);

    struct Place {
        std::string name; ///< relative to the data folder, with slashes
        bool isThere;     ///< whether a picture with the same contents has this name already
    };

    /// Returns the place of a picture that should be called `wanted`, and reserves it. A name that another
    /// picture has gets a number.
    Place PlaceFor(const std::string& wanted, const PictureContents& contents);

private:
    bool HasContents(const std::string& path, const PictureContents& contents) const;

    std::string m_folder;
    std::map<std::string, std::string> m_files; ///< names of files that exist, by CaseKey
    PictureNames m_names;
};

/// Creates the file `path` and its folders below `folder`, writes the contents and flushes them. Removes the
/// file if that fails.
void WritePicture(const std::string& folder, const std::string& path, const PictureContents& contents,
                  FileOperations& operations);

/// Creates the folders between `folder`, which exists, and the file `path` below it.
void MakeFolders(const std::string& folder, const std::string& path, FileOperations& operations);

} // namespace Tarno
