#pragma once

#include <string>
#include <string_view>

namespace Tarno
{

/// The words for the condition codes of an entry, which are in the catalogue of fields. A code is the
/// zero-based index of the chosen option as decimal text; every other text, " 1" and "01" included, reads
/// "Not Set".
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

    /// A signed lit percentage as words: "Waning, 45%" for "-45", "Not Set" for the empty text. Only two
    /// digits are kept, so a full moon reads "00%".
    /// Throws Error: TypeMismatch when the text is no number, Overflow when it is no 16-bit integer.
    std::string MoonPhaseDesc(std::string_view sPhase) const;
};

} // namespace Tarno
