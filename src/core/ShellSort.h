#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Tarno
{

/// The texts of one row of a report, by column.
using ReportRow = std::vector<std::string>;

/// The rows of a report.
using ReportTable = std::vector<ReportRow>;

struct SortSettings {
    std::size_t column = 0;
    bool descending = false;
    std::int16_t mode = 0; ///< see mMain::CompMe
};

namespace mMain
{

/// Sorts the rows by the text of one column with Shell's method (D. L. Shell, 1959), using Knuth's gaps ...,
/// 40, 13, 4, 1 and a final pass with gap 1. Moves rows, never copies them. Not stable. Throws Error
/// SubscriptOutOfRange without moving anything if a row lacks the column.
void ShellSort(ReportTable& table, const SortSettings& settings);

} // namespace mMain

} // namespace Tarno
