#pragma once

#include "analysis/RankCorrelation.h"
#include "store/Record.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace Tarno
{

/// Whether a forecast or a condition and the action of the fish went together.
struct ForecastCheck {
    struct Row {
        std::string name;
        int level;                  ///< rank of the row; Top and Bottom of the tide have the same one
        std::array<int, 4> actions; ///< trips by action: Slow, Fair, Good, Hot!
    };

    std::string title; ///< for example "Rating and action"
    std::vector<Row> rows;
    int trips; ///< trips with both values
    /// Absent if there are fewer than 10 trips, or all have the same action or the same level.
    std::optional<RankCorrelation> correlation;
    std::string sentence; ///< the result in plain words, for the user
};

/// Compares the action with the rating, with how much of the moon is lit, with the tide at the start (slack
/// or running), and with the pressure trend, in this order. A correlation that chance alone would show in 5
/// or more of 100 logs is not called one.
std::vector<ForecastCheck> CheckForecasts(const RecordList& trips);

} // namespace Tarno
