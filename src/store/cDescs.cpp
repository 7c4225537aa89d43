#include "cDescs.h"

#include "core/Conversions.h"
#include "store/EntryFields.h"

#include <cstdlib>

namespace Tarno
{

std::string cDescs::TideStartDesc(std::string_view sNo) const
{
    return CodeWord(EntryField::TideStart, sNo);
}

std::string cDescs::TideEndDesc(std::string_view sNo) const
{
    return CodeWord(EntryField::TideEnd, sNo);
}

std::string cDescs::FishActionDesc(std::string_view sNo) const
{
    return CodeWord(EntryField::FishAction, sNo);
}

std::string cDescs::PredictionDesc(std::string_view sNo) const
{
    return CodeWord(EntryField::Prediction, sNo);
}

std::string cDescs::WeatherDesc(std::string_view sNo) const
{
    return CodeWord(EntryField::Weather, sNo);
}

std::string cDescs::WaterClarityDesc(std::string_view sNo) const
{
    return CodeWord(EntryField::WaterClarity, sNo);
}

std::string cDescs::WindStrengthDesc(std::string_view sNo) const
{
    return CodeWord(EntryField::WindStrength, sNo);
}

std::string cDescs::WindDirDesc(std::string_view sNo) const
{
    return CodeWord(EntryField::WindDir, sNo);
}

std::string cDescs::AirPressureDesc(std::string_view sNo) const
{
    return CodeWord(EntryField::AirPressure, sNo);
}

std::string cDescs::MoonPhaseDesc(std::string_view sPhase) const
{
    if (sPhase.empty()) {
        return std::string(FieldWords::notSet);
    }
    const std::int16_t lit = RoundToInt16(std::abs(ToInt16(sPhase))); // overflows for -32768
    const std::string digits = "00" + std::to_string(lit);
    return (sPhase.starts_with('-') ? "Waning, " : "Waxing, ") + digits.substr(digits.size() - 2) + "%";
}

} // namespace Tarno
