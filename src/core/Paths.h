#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Tarno
{

// Paths are UTF-8 texts everywhere but at the file system itself.

std::filesystem::path ToPath(std::string_view utf8);
std::string FromPath(const std::filesystem::path& path);

/// `path` with all symbolic links resolved; the file need not exist. Throws Error if links form a circle or a
/// folder of the path cannot be read.
std::string Resolved(const std::string& path);

/// The folder that holds `path`; "." if `path` is only a name.
std::string FolderOf(const std::string& path);

/// All bytes of the regular file at `path`. Throws Error: FileNotFound when there is no such file,
/// PathFileAccess when it is no regular file or may not be read, DeviceInputOutput when reading fails.
std::string ReadWholeFile(const std::string& path);

namespace mMain
{

/// Whether `path` names something that exists and is no folder. The blanks around the text are taken
/// off first, in the caller's text as well. The empty text names nothing; "*" and "?" are ordinary
/// characters. Never fails.
bool FileExist(std::string& path);

} // namespace mMain

} // namespace Tarno
