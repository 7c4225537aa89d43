#pragma once

#include <string>
#include <string_view>

namespace Tarno
{

/// Returns the words for the condition codes of an entry, from the catalogue of fields. A code is the
/// zero-based index of the chosen option as decimal text. Any other text, including " 1" and "01", is "Not
/// Set".
class cDescs
{
public:
    std::string TideStartDesc(std::string_view sNo) const;
    std::string TideEndDesc(std::string_view sNo) const;
    std::string FishActionDesc(std::string_view sNo) const;
    std::string PredictionDesc(std::string_view sNo) const;
    std::string WeatherDesc(std::string_view sNo) const;
    std::string WaterClarityDesc(std::string_view sNo) const;
    std::string WindStrengthDesc(std::string_view sNo) const;
    std::string WindDirDesc(std::string_view sNo) const;
    std::string AirPressureDesc(std::string_view sNo) const;

    /// Describes a signed illuminated percentage: "Waning, 45%" for "-45", "Not Set" for an empty text. Keeps
    /// only two digits, so a full moon is "00%" (see docs/quirks.md). Throws Error: TypeMismatch if the text
    /// is not a number, Overflow if it does not fit 16 bits.
    std::string MoonPhaseDesc(std::string_view sPhase) const;
};

} // namespace Tarno
