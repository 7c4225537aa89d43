#pragma once

#include <optional>
#include <vector>

namespace Tarno
{

/// A row of a table of counts. Its columns are in ascending order.
struct RankedRow {
    int level; ///< the rank of the row; rows with the same level are tied
    std::vector<int> counts;
};

/// How strongly two ranked values rise and fall together.
struct RankCorrelation {
    double tau; ///< from -1, all pairs are in reversed order, to 1, all pairs are in the same order
    /// The part of random orders with a correlation at least as strong, in either direction.
    double probability;
};

/// Returns Kendall's tau-b ("The treatment of ties in ranking problems", 1945) of a table whose rows all have
/// the same number of columns, or nullopt if all that is counted is in one level or in one column.
///
/// The probability is that of a permutation test with 1,999 random permutations and a fixed seed: one more
/// than those in which tau is at least as far from 0 as observed, divided by 2,000. It is the same on every
/// platform.
std::optional<RankCorrelation> KendallTauB(const std::vector<RankedRow>& table);

} // namespace Tarno
