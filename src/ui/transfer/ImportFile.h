#pragma once

#include "ui/common/Program.h"

#include <QString>

#include <optional>
#include <string>

namespace Tarno
{

struct ImportFile {
    QString path;
    std::string bytes;
};

/// Asks for a file to import in the folder of the log, and reads it. Returns nothing if the user cancels or
/// the file cannot be read, which is shown.
std::optional<ImportFile> AskForImport(const Program& program, QWidget* parent, const QString& title,
                                       const QString& filter);

/// Says that the file cannot be imported. `reason` is a sentence.
void ShowImportProblem(const Program& program, QWidget* parent, const QString& path,
                       const std::string& reason);

} // namespace Tarno
