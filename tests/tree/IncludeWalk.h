#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Tarno
{

/// What a walk through the includes of a source tree found.
struct IncludeWalk {
    std::vector<std::string> files;      ///< every file read, by its path in the tree, sorted
    std::vector<std::string> violations; ///< "store/cSQL.h: ui/main/fTarno.h runs upwards", in file order
};

/// The folders of the source tree, from the top down.
std::vector<std::string> Layers();

/// Reads the includes of every source and form below `sources` and checks them against the layers: a folder
/// includes only folders of lower levels, each by its full path from the root of the sources; core, astro and
/// store include no Qt, qt and reports only what is in Qt Core and Qt Gui.
IncludeWalk WalkIncludes(const std::filesystem::path& sources);

} // namespace Tarno
