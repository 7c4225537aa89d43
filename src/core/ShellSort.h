#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Tarno
{

/// The texts of one line of a report, by column.
using ReportRow = std::vector<std::string>;

/// The table that a report prints, by row.
using ReportTable = std::vector<ReportRow>;

struct SortSettings {
    std::size_t column = 0;
    bool descending = false;
    std::int16_t mode = 0; ///< see mMain::CompMe
};

namespace mMain
{

/// Sorts the rows by one column's text with Shell's method, gaps ..., 40, 13, 4, 1 and a last pass with
/// gap 1 (D. L. Shell 1959, gaps after D. E. Knuth). Rows are moved whole, never copied. Not stable.
/// Throws Error SubscriptOutOfRange when a row lacks the column; nothing is moved then.
void ShellSort(ReportTable& table, const SortSettings& settings);

} // namespace mMain

} // namespace Tarno
