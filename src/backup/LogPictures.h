#pragma once

#include "core/ProgramFolder.h"
#include "store/Record.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

// The pictures that the records of a log refer to. A record stores a full path, or one relative to the data
// folder.

/// The folder of the collected and restored pictures, in the data folder.
inline constexpr std::string_view pictureFolder = "pictures";

/// Returns the pictures of the trips and locations as they are stored, each once, in the order of the
/// records.
std::vector<std::string> StoredPictures(const RecordList& trips, const RecordList& locations);

/// Returns the full path of a stored picture.
std::string PicturePath(const std::string& folder, const std::string& stored);

/// Whether the full path `path` leads to a file that can be read.
bool IsReadablePicture(const std::string& path);

/// Returns the path relative to the data folder, with slashes, or nothing if the picture is elsewhere. Only
/// compares texts: the picture need not exist, and links are not followed.
std::optional<std::string> NameInFolder(const std::string& folder, const std::string& stored);

/// Whether `name` is below the picture folder.
bool IsInPictureFolder(std::string_view name);

/// Returns the name that a picture should get in the picture folder: the name of its file, or its path if it
/// is already there.
std::string WantedName(const std::string& folder, const std::string& stored);

} // namespace Tarno
