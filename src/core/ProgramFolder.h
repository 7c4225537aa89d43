#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Tarno
{

/// The folder of the data files, the pick lists and the error log.
class ProgramFolder
{
public:
    /// `path` may end with the separator, as the root of a drive does.
    explicit ProgramFolder(std::string path,
                           char separator = static_cast<char>(std::filesystem::path::preferred_separator));

    /// Returns the folder without a trailing separator.
    const std::string& GetAppPath() const { return m_path; }

    /// Returns the full path of the file `name`: GetAppPath, the separator and the name.
    std::string PathOf(std::string_view name) const;

    /// Like PathOf, but falls back to an existing file whose name differs only in the case of ASCII letters,
    /// so that file names are case-insensitive on every platform.
    std::string FindPath(std::string_view name) const;

    /// Whether an export to `path` could replace a file of the log: `path`, or the file to which it is a
    /// link, is in the folder or below it and does not have the suffix of an export. Ignores the case of
    /// ASCII letters. Throws Error like Resolved.
    bool MayBelongToLog(const std::string& path) const;

private:
    std::string m_path;
    char m_separator;
};

} // namespace Tarno
