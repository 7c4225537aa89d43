#include "EntryCalculator.h"

#include "EntryModule.h"
#include "MoonPhaseEditor.h"
#include "analysis/CalendarDay.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "store/EntryFields.h"
#include "ui/common/RecordBinder.h"

#include <utility>

namespace Tarno
{

EntryCalculator::EntryCalculator(const Program& program, RecordBinder& binder, MoonPhaseEditor& moonPhase,
                                 QWidget* window)
    : m_program(program), m_binder(binder), m_moonPhase(moonPhase), m_window(window)
{
}

bool EntryCalculator::DoTheCalcs(const std::string& date, std::optional<std::int32_t> locationNumber)
{
    bool isCalculated = false;
    Trap(entryModule, "DoTheCalcs", [&] {
        DoMoonPhase(date);
        isCalculated = DoRiseSet(date, locationNumber);
    });
    return isCalculated;
}

void EntryCalculator::DoMoonPhase(const std::string& date)
{
    Trap(entryModule, "DoMoonPhase", [&] {
        const MoonForecast moon = ForecastMoon(ToDate(date));
        m_moonPhase.ShowAndStoreForecast(moon.percent, moon.waxing);
        m_binder.ShowAndStoreCode(EntryField::Prediction, moon.prediction);
    });
}

bool EntryCalculator::DoRiseSet(const std::string& date, std::optional<std::int32_t> locationNumber)
{
    bool isCalculated = false;
    Trap(entryModule, "DoRiseSet", [&] {
        Record location;
        if (!locationNumber ||
            m_program.sql.LocationGet(ToInt16(std::to_string(*locationNumber)), location) != succeeded) {
            return;
        }
        const LocationTexts texts = TextsOf(location.View());
        if (!texts.IsComplete()) {
            m_program.messages.ShowInformation(
                m_window,
                QStringLiteral("Required information for the location is missing:\r\n"
                               "to calculate sun/moon times, you need to fill in the\r\n"
                               "latitude, longitude and GMT difference"),
                QStringLiteral("Location Data Missing"));
            return;
        }
        const RiseSetForecast day = ForecastRiseSet(texts, ToDate(date));
        for (const auto& [field, text] :
             {std::pair(EntryField::SunRise, &day.sunRise), std::pair(EntryField::SunSet, &day.sunSet),
              std::pair(EntryField::MoonRise, &day.moonRise), std::pair(EntryField::MoonSet, &day.moonSet),
              std::pair(EntryField::Major1, &day.major1), std::pair(EntryField::Major2, &day.major2),
              std::pair(EntryField::Minor1, &day.minor1), std::pair(EntryField::Minor2, &day.minor2)}) {
            m_binder.ShowAndStore(field, *text);
        }
        isCalculated = true;
    });
    return isCalculated;
}

} // namespace Tarno
