#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Tarno
{

/// The folder that holds the data files, the pick lists and the log of errors.
class ProgramFolder
{
public:
    /// `path` may end with the separator (the program runs from the root of a drive).
    explicit ProgramFolder(std::string path,
                           char separator = static_cast<char>(std::filesystem::path::preferred_separator));

    /// The folder without a trailing separator.
    const std::string& GetAppPath() const { return m_path; }

    /// The full path of the file `name`: GetAppPath, the separator and the name.
    std::string PathOf(std::string_view name) const;

    /// As PathOf, but where the folder holds no such file and has one whose name differs only in
    /// the case of ASCII letters, that one's path: a name meets its file on every platform.
    std::string FindPath(std::string_view name) const;

private:
    std::string m_path;
    char m_separator;
};

} // namespace Tarno
