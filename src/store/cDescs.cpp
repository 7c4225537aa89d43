#include "cDescs.h"

#include "core/Conversions.h"

#include <cstdlib>
#include <initializer_list>

namespace
{

constexpr std::string_view notSet = "Not Set";

std::string WordOf(std::string_view code, std::initializer_list<std::string_view> words)
{
    if (code.size() == 1 && code[0] >= '0' && static_cast<std::size_t>(code[0] - '0') < words.size()) {
        return std::string(words.begin()[code[0] - '0']);
    }
    return std::string(notSet);
}

} // namespace

std::string cDescs::TideStartDesc(std::string_view sNo) const
{
    return WordOf(sNo, {"Top", "Run Out", "Bottom", "Run In"});
}

std::string cDescs::TideEndDesc(std::string_view sNo) const
{
    return TideStartDesc(sNo);
}

std::string cDescs::FishActionDesc(std::string_view sNo) const
{
    return WordOf(sNo, {"Slow", "Fair", "Good", "Hot!"});
}

std::string cDescs::PredictionDesc(std::string_view sNo) const
{
    return WordOf(sNo, {"Poor", "Fair", "Good", "Best"});
}

std::string cDescs::WeatherDesc(std::string_view sNo) const
{
    return WordOf(sNo, {"Stormy", "Rainy", "Showery", "Overcast", "Cloudy", "Few Clouds", "Clear"});
}

std::string cDescs::WaterClarityDesc(std::string_view sNo) const
{
    return WordOf(sNo, {"Clear", "Cloudy", "Muddy"});
}

std::string cDescs::WindStrengthDesc(std::string_view sNo) const
{
    return WordOf(sNo, {"Calm", "Light", "Moderate", "Strong"});
}

std::string cDescs::WindDirDesc(std::string_view sNo) const
{
    return WordOf(sNo, {"N", "NE", "E", "SE", "S", "SW", "W", "NW"});
}

std::string cDescs::AirPressureDesc(std::string_view sNo) const
{
    return WordOf(sNo, {"Rising", "Falling"});
}

std::string cDescs::MoonPhaseDesc(std::string_view sPhase) const
{
    if (sPhase.empty()) {
        return std::string(notSet);
    }
    const std::int16_t lit =
        RoundToInt16(std::abs(ToInt16(sPhase))); // the lowest number has no positive twin
    const std::string digits = "00" + std::to_string(lit);
    return (sPhase.starts_with('-') ? "Waning, " : "Waxing, ") + digits.substr(digits.size() - 2) + "%";
}
