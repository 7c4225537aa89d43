#pragma once

#include "store/Record.h"
#include "ui/common/TextTableModel.h"

#include <QStringList>

#include <functional>
#include <string>
#include <vector>

namespace Tarno
{

// The columns of the log: what they are called, how wide they are, and what they show of an entry.

QStringList LogHeadings();

/// For each column a text that should fit into it; empty for the column that takes the space that is left.
QStringList LogSamples();

/// The position of the column that takes the space that is left.
int StretchedLogColumn();

/// Appends a row for each entry, in their order; its key is "K" and the entry's number. `locationName` is
/// asked once for each number of a location. Throws Error ObjectNotSet at the first entry that lacks a value.
void AddLogRows(std::vector<TextTableModel::Row>& rows, const RecordList& entries,
                const std::function<std::string(const std::string&)>& locationName);

} // namespace Tarno
