#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Tarno
{

// The program passes paths as UTF-8 texts and converts them only for calls to the file system.

std::filesystem::path ToPath(std::string_view utf8);
std::string FromPath(const std::filesystem::path& path);

/// Returns `path` with all symbolic links resolved; the file need not exist. Throws Error if the links form a
/// cycle or a folder of the path cannot be read.
std::string Resolved(const std::string& path);

/// Returns the folder that contains `path`, or "." if `path` is only a name.
std::string FolderOf(const std::string& path);

/// Whether the name of the file ends with `suffix`, for example ".csv", without regard to the case of ASCII
/// letters. A name that consists of the suffix does not end with it.
bool HasSuffix(const std::string& path, std::string_view suffix);

/// Returns the contents of the regular file `path`. Throws Error: FileNotFound if it does not exist,
/// PathFileAccess if it is not a regular file or not readable, DeviceInputOutput if reading fails.
std::string ReadWholeFile(const std::string& path);

namespace mMain
{

/// Whether `path` exists and is not a folder. Trims the caller's text first (see docs/quirks.md). Returns
/// false for the empty text. "*" and "?" are not wildcards. Never fails.
bool FileExist(std::string& path);

} // namespace mMain

} // namespace Tarno
