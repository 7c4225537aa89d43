#pragma once

#include "backup/Archive.h"
#include "core/Error.h"
#include "ui/common/Program.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <string>
#include <vector>

namespace Tarno
{

// What the windows for back-ups have in common.

/// Runs `work` and shows its progress with Cancel. Returns false if the user cancelled.
bool RunWithProgress(const Program& program, QWidget* parent, const QString& text,
                     const std::function<void(const Progress& progress)>& work);

/// Returns one or more sentences for the user.
QString ReasonOf(const Error& error);

/// Shows why something could not be done.
void ShowProblem(const Program& program, QWidget* parent, const QString& text, const QString& title);

/// Returns the last lines of a message about pictures that were not found, or an empty text. `consequence`
/// ends the sentence, for example "they are not in the back-up".
QString ListedMissing(const std::vector<std::string>& pictures, const QString& consequence);

/// Returns the size for the user, for example "2.1 MB".
QString SizeInWords(std::uint64_t bytes);

} // namespace Tarno
