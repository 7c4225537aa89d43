#include "RankCorrelation.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <numeric>
#include <random>
#include <utility>

namespace Tarno
{

namespace
{

using Counts = std::vector<std::int64_t>;

/// Adds up the rows of each level, in ascending order. Levels without counts are left out.
std::vector<Counts> RowsByLevel(const std::vector<RankedRow>& table)
{
    std::map<int, Counts> levels;
    for (const RankedRow& row : table) {
        Counts& sums = levels.try_emplace(row.level, row.counts.size()).first->second;
        std::transform(row.counts.begin(), row.counts.end(), sums.begin(), sums.begin(),
                       [](int count, std::int64_t sum) { return sum + count; });
    }
    std::vector<Counts> rows;
    for (auto& [level, sums] : levels) {
        if (std::any_of(sums.begin(), sums.end(), [](std::int64_t sum) { return sum > 0; })) {
            rows.push_back(std::move(sums));
        }
    }
    return rows;
}

std::int64_t Sum(const Counts& counts)
{
    return std::accumulate(counts.begin(), counts.end(), std::int64_t{0});
}

Counts RowTotals(const std::vector<Counts>& rows)
{
    Counts totals;
    std::transform(rows.begin(), rows.end(), std::back_inserter(totals), Sum);
    return totals;
}

Counts ColumnTotals(const std::vector<Counts>& rows)
{
    Counts totals(rows.empty() ? 0 : rows.front().size());
    for (const Counts& row : rows) {
        std::transform(row.begin(), row.end(), totals.begin(), totals.begin(), std::plus<>());
    }
    return totals;
}

/// Returns the number of concordant pairs minus the number of discordant ones.
std::int64_t Concordance(const std::vector<Counts>& rows)
{
    std::int64_t concordance = 0;
    Counts above(rows.front().size());
    for (const Counts& row : rows) {
        std::int64_t left = 0;
        std::int64_t right = Sum(above);
        for (std::size_t column = 0; column < row.size(); ++column) {
            right -= above[column];
            concordance += row[column] * (left - right);
            left += above[column];
        }
        std::transform(row.begin(), row.end(), above.begin(), above.begin(), std::plus<>());
    }
    return concordance;
}

/// Returns the number of pairs that are not tied.
double UntiedPairs(const Counts& totals)
{
    const auto pairs = [](std::int64_t count) { return count * (count - 1) / 2; };
    std::int64_t untied = pairs(Sum(totals));
    for (const std::int64_t total : totals) {
        untied -= pairs(total);
    }
    return static_cast<double>(untied);
}

/// Random tables with the same totals. The shuffle and the random indices are written here, because those of
/// the standard library differ between platforms.
class RandomTables
{
public:
    explicit RandomTables(const std::vector<Counts>& rows) : m_rows(rows), m_rowTotals(RowTotals(rows))
    {
        m_columnTotals = ColumnTotals(rows);
        for (std::size_t column = 0; column < m_columnTotals.size(); ++column) {
            m_columns.insert(m_columns.end(), static_cast<std::size_t>(m_columnTotals[column]),
                             static_cast<std::uint16_t>(column));
        }
        m_largest = static_cast<std::size_t>(std::max_element(m_rowTotals.begin(), m_rowTotals.end()) -
                                             m_rowTotals.begin());
    }

    /// Returns the next table, valid until the next call.
    const std::vector<Counts>& Next()
    {
        Counts& rest = m_rows[m_largest];
        rest = m_columnTotals; // what the other rows do not get, so it need not be shuffled
        std::size_t at = 0;
        for (std::size_t row = 0; row < m_rows.size(); ++row) {
            if (row == m_largest) {
                continue;
            }
            std::fill(m_rows[row].begin(), m_rows[row].end(), 0);
            Draw(at, at + static_cast<std::size_t>(m_rowTotals[row]), m_rows[row]);
            at += static_cast<std::size_t>(m_rowTotals[row]);
            std::transform(rest.begin(), rest.end(), m_rows[row].begin(), rest.begin(), std::minus<>());
        }
        return m_rows;
    }

private:
    /// Draws the columns from `at` to `end` from those that are left, and counts them. Each 64 random bits
    /// give two indices. The probabilities of two indices differ by less than the number of columns / 2^32.
    void Draw(std::size_t at, std::size_t end, Counts& counts)
    {
        for (; at < end; ++at) {
            m_bits = at % 2 == 0 ? m_random() : m_bits >> 32U;
            const std::uint64_t left = m_columns.size() - at;
            std::swap(m_columns[at], m_columns[at + (((m_bits & 0xFFFFFFFFU) * left) >> 32U)]);
            ++counts[m_columns[at]];
        }
    }

    std::vector<Counts> m_rows;
    Counts m_rowTotals;
    Counts m_columnTotals;
    std::vector<std::uint16_t> m_columns; ///< the column of everything that is counted
    std::uint64_t m_bits = 0;
    std::size_t m_largest = 0;          ///< the row with the largest total
    std::mt19937_64 m_random{20241105}; // NOLINT(cert-msc51-cpp): the same numbers in every run
};

} // namespace

std::optional<RankCorrelation> KendallTauB(const std::vector<RankedRow>& table)
{
    const std::vector<Counts> rows = RowsByLevel(table);
    const double untied = UntiedPairs(RowTotals(rows)) * UntiedPairs(ColumnTotals(rows));
    if (untied == 0) {
        return std::nullopt;
    }
    constexpr int permutations = 1999;
    const std::int64_t observed = Concordance(rows);
    RandomTables random(rows);
    int extreme = 1; // the observed table is one of the possible ones
    for (int permutation = 0; permutation < permutations; ++permutation) {
        // the totals are the same, so tau differs only in the concordance, which is exact
        extreme += std::abs(Concordance(random.Next())) >= std::abs(observed) ? 1 : 0;
    }
    return RankCorrelation{static_cast<double>(observed) / std::sqrt(untied), extreme / (permutations + 1.0)};
}

} // namespace Tarno
