#pragma once

#include "store/Record.h"

#include <QString>
#include <QStringList>

#include <string>

namespace Tarno
{

// The columns of the log: headings, widths and contents.

QStringList LogHeadings();

/// Returns a sample text for the width of each column, empty for the column that takes the remaining space.
QStringList LogSamples();

/// Returns the index of the column that takes the remaining space.
int StretchedLogColumn();

/// Returns the key of the row of an entry: "K" followed by the number of the entry.
QString EntryRowKey(const std::string& number);

/// Returns what a column shows of an entry at the location with the name `location`. A missing value is
/// empty.
QString LogText(const RecordView& entry, int column, const QString& location);

} // namespace Tarno
