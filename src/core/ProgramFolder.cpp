#include "ProgramFolder.h"

#include "Paths.h"
#include "Text.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

namespace Tarno
{

namespace fs = std::filesystem;

namespace
{

constexpr std::array exportSuffixes{".csv", ".gpx", ".pdf", ".rtf", ".ics", ".zip"};

/// Whether the resolved path `path` is in the resolved folder `folder` or below it.
bool IsBelow(const fs::path& folder, const fs::path& path)
{
    const auto [end, other] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end(),
                                            [](const fs::path& left, const fs::path& right) {
                                                return EqualIgnoringCase(FromPath(left), FromPath(right));
                                            });
    return end == folder.end() && other != path.end();
}

} // namespace

ProgramFolder::ProgramFolder(std::string path, char separator)
    : m_path(std::move(path)), m_separator(separator)
{
    if (m_path.ends_with(m_separator)) {
        m_path.pop_back();
    }
}

std::string ProgramFolder::PathOf(std::string_view name) const
{
    return m_path + m_separator + std::string(name);
}

std::string ProgramFolder::FindPath(std::string_view name) const
{
    std::string path = PathOf(name);
    std::error_code failure;
    if (fs::exists(ToPath(path), failure)) {
        return path;
    }
    const std::string folder = m_path + m_separator;
    for (fs::directory_iterator entry(ToPath(folder), failure); !failure && entry != fs::directory_iterator();
         entry.increment(failure)) {
        const std::string found = FromPath(entry->path().filename());
        if (EqualIgnoringCase(found, name)) {
            return PathOf(found);
        }
    }
    return path;
}

bool ProgramFolder::MayBelongToLog(const std::string& path) const
{
    const fs::path folder = ToPath(Resolved(FolderOf(PathOf("name"))));
    const fs::path absolute = fs::absolute(ToPath(path));
    // the link itself counts too: a file of the log may be a link to a file elsewhere
    const fs::path link = ToPath(Resolved(FromPath(absolute.parent_path()))) / absolute.filename();
    const std::array targets{link, ToPath(Resolved(FromPath(absolute)))};
    return std::any_of(targets.begin(), targets.end(), [&](const fs::path& target) {
        return IsBelow(folder, target) &&
               std::none_of(exportSuffixes.begin(), exportSuffixes.end(),
                            [&](const char* suffix) { return HasSuffix(FromPath(target), suffix); });
    });
}

} // namespace Tarno
