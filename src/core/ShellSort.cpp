#include "ShellSort.h"

#include "Error.h"
#include "Variant.h"

#include <algorithm>
#include <utility>

namespace Tarno
{

namespace
{

/// Inserts every row from `gap` onward into the preceding rows that are a multiple of `gap` away.
void InsertionSortByGap(ReportTable& table, std::size_t gap, const SortSettings& settings)
{
    for (std::size_t i = gap; i < table.size(); ++i) {
        ReportRow row = std::move(table[i]);
        std::size_t place = i;
        while (place >= gap && mMain::CompMe(table[place - gap][settings.column], row[settings.column],
                                             settings.descending, settings.mode)) {
            table[place] = std::move(table[place - gap]);
            place -= gap;
        }
        table[place] = std::move(row);
    }
}

} // namespace

void mMain::ShellSort(ReportTable& table, const SortSettings& settings)
{
    if (std::any_of(table.begin(), table.end(),
                    [&](const ReportRow& row) { return row.size() <= settings.column; })) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    const auto third = [](std::size_t gap) { return (gap + 1) / 3; }; // gap / 3, rounded
    std::size_t gap = 0;
    do {
        gap = 3 * gap + 1;
    } while (gap + 1 <= table.size());
    do {
        gap = third(gap);
        InsertionSortByGap(table, std::max<std::size_t>(gap, 1), settings);
    } while (gap > 0);
}

} // namespace Tarno
