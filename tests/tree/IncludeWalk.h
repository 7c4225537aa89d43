#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Tarno
{

/// The result of checking the includes of a source tree.
struct IncludeWalk {
    std::vector<std::string> files; ///< the sorted paths of all files read, relative to the tree
    std::vector<std::string>
        violations; ///< for example "store/cSQL.h: ui/main/fTarno.h is on a higher level"
};

/// Returns the folders of the source tree, top layer first.
std::vector<std::string> Layers();

/// Checks the includes of every source and form below `sources` against the layers: a folder includes only
/// folders of lower levels, by their full path below `sources`. core, astro and store do not include Qt;
/// analysis includes only headers of Qt Core, qt and reports only headers of Qt Core and Qt Gui.
IncludeWalk WalkIncludes(const std::filesystem::path& sources);

} // namespace Tarno
