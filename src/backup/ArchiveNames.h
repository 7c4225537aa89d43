#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace Tarno
{

// The names of files in archives: paths relative to the data folder, with slashes, UTF-8.

/// Returns why a file cannot have the name `name` on every system, as the end of a sentence such as
/// "contains a backslash", or an empty text if it can. No accepted name leads out of its folder.
std::string NameFault(std::string_view name);

/// Returns the form of a name by which two names are the same on systems that ignore the case of letters.
std::string CaseKey(std::string_view name);

/// Returns whether pictures with this name are already compressed.
bool IsCompressedPicture(std::string_view name);

/// Gives pictures names that differ from each other on every system.
class PictureNames
{
public:
    /// Excludes `name` from the names that Add returns.
    void Reserve(std::string_view name);

    bool Has(std::string_view name) const;

    /// Returns `wanted`, or the first of "a-2.jpg", "a-3.jpg" and so on that is free, and reserves it. Makes
    /// the name valid first: NameFault returns an empty text for the result. Stops at the first reserved name
    /// for which `isUsable`, if given, returns true.
    std::string Add(std::string_view wanted,
                    const std::function<bool(const std::string& name)>& isUsable = {});

private:
    std::set<std::string> m_taken; ///< CaseKey of the names
};

} // namespace Tarno
