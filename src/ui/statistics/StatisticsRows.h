#pragma once

#include "analysis/ForecastCheck.h"
#include "analysis/TripGroups.h"
#include "analysis/UnmatchedLines.h"
#include "analysis/YearSummary.h"
#include "ui/common/TextTableModel.h"

#include <QStringList>

#include <cstddef>
#include <optional>
#include <vector>

namespace Tarno
{

// The texts of the lists of the statistics.

namespace GroupColumn
{

enum Position : int { Group, Trips, Hours, NoCatch, Actions, Share, LastTrip };

} // namespace GroupColumn

/// Returns the part of the trips with the action Good or Hot!, from 0 to 1, or -1 if no action is set.
double Share(const TripFigures& figures);

QStringList GroupHeadings();

/// Returns a row for each group. Its key is the position of the group.
std::vector<TextTableModel::Row> GroupRows(const std::vector<TripGroup>& groups);

/// Returns the position in `groups` of the row with that key.
std::size_t GroupOfRow(const QString& key);

/// Returns a sentence about the trips that are left out of the hours, or an empty text.
QString LeftOutOfHours(const TripFigures& figures);

QStringList CheckHeadings();
std::vector<TextTableModel::Row> CheckRows(const ForecastCheck& check);

/// Returns the correlation and its probability in numbers, or an empty text.
QString CorrelationText(const ForecastCheck& check);

/// Returns the figures of a year and of the year before.
std::vector<TextTableModel::Row> YearRows(const YearSummary& summary);

QStringList LineHeadings();
/// Returns a row for each line. Its key is the position of the line.
std::vector<TextTableModel::Row> LineRows(const std::vector<UnmatchedLine>& lines);

} // namespace Tarno
