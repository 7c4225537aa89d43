#pragma once

#include "store/Record.h"
#include "ui/common/TextTableModel.h"

#include <QStringList>

#include <functional>
#include <string>
#include <vector>

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

/// Appends a row for each entry in the given order. Calls `locationName` once for each location number. A
/// missing value is empty.
void AddLogRows(std::vector<TextTableModel::Row>& rows, const RecordList& entries,
                const std::function<std::string(const std::string&)>& locationName);

} // namespace Tarno
