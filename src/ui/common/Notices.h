#pragma once

#include "store/cSQL.h"
#include "ui/common/Prompts.h"

#include <QString>
#include <QStringList>

namespace Tarno
{

// Notices tell the user something that is not an error. They are not logged.

/// Returns for example "the trip of 2026-05-03 at Old Pier".
QString DescribeRecord(const RecordTitle& record);

/// Returns the lines one below the other; of a long list only the first ones and the number of the others.
QString Listed(const QStringList& lines);

/// Returns the text for a list that is empty because its file could not be read. `contents` is what the user
/// misses, for example "Your log".
QString UnreadableHint(const QString& contents, const QString& file);

/// Returns true if all changes are saved or the user agrees to lose those that are not.
bool ConfirmLosingChanges(const cSQL& sql, QWidget* parent, MessageBoxes& messages);

/// Shows a conflict with another program over the active window.
void ShowConflict(const ConflictNotice& conflict, MessageBoxes& messages);

/// Shows which data files in `folder` could not be read and which records have missing values. Shows nothing
/// if there are none.
void ShowFileProblems(const cSQL& sql, const QString& folder, QWidget* parent, MessageBoxes& messages);

} // namespace Tarno
