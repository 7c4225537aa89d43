#include "Paths.h"

#include "Conversions.h"
#include "Text.h"

#include <exception>

namespace Tarno
{

namespace fs = std::filesystem;

fs::path ToPath(std::string_view utf8)
{
    return {std::u8string(utf8.begin(), utf8.end())};
}

std::string FromPath(const fs::path& path)
{
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string FolderOf(const std::string& path)
{
    const fs::path folder = ToPath(path).parent_path();
    return folder.empty() ? "." : FromPath(folder);
}

bool HasSuffix(const std::string& path, std::string_view suffix)
{
    return EqualIgnoringCase(FromPath(ToPath(path).extension()), suffix);
}

bool mMain::FileExist(std::string& path)
{
    path = Trimmed(path);
    try {
        const fs::file_status status = fs::status(ToPath(path));
        return fs::exists(status) && !fs::is_directory(status);
    } catch (const std::exception&) { // not a valid path
        return false;
    }
}

} // namespace Tarno
