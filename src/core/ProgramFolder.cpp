#include "ProgramFolder.h"

#include "Paths.h"
#include "Text.h"

#include <system_error>
#include <utility>

namespace Tarno
{

namespace fs = std::filesystem;

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

} // namespace Tarno
