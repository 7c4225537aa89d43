#pragma once

#include "ui/common/Program.h"

#include <QString>

#include <optional>
#include <string>

namespace Tarno
{

/// Asks where to write an exported file, and writes it there in one step. Asks before a file is replaced,
/// and refuses to replace a file that may belong to the log. Returns the path, or nullopt if the user cancels
/// or the file cannot be written, which is shown.
std::optional<QString> WriteExport(const Program& program, QWidget* parent, const FileQuestion& question,
                                   const std::string& bytes);

} // namespace Tarno
