#include "EntryCalculator.h"

#include "EntryBinder.h"
#include "astro/Forecast.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "store/RecordLayouts.h"
#include "ui/common/KeyFilter.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include <cstdlib>
#include <utility>

namespace
{

constexpr std::string_view module = "fEntry";

} // namespace

EntryCalculator::EntryCalculator(QWidget* window, const Program& program, EditedRecord& record,
                                 EntryBinder& binder)
    : m_window(window),
      m_program(program),
      m_record(record),
      m_binder(binder),
      m_cboLocation(window->findChild<QComboBox*>(QStringLiteral("cboLocation"))),
      m_txtMoon(window->findChild<QLineEdit*>(QStringLiteral("txtMoon"))),
      m_chkMoon(window->findChild<QCheckBox*>(QStringLiteral("chkMoon")))
{
}

void EntryCalculator::DoTheCalcs()
{
    Trap(module, "DoTheCalcs", [this] {
        DoMoonPhase();
        DoRiseSet();
    });
}

void EntryCalculator::DoMoonPhase()
{
    Trap(module, "DoMoonPhase", [this] {
        const MoonForecast moon = ForecastMoon(ToDate(ToUtf8(m_binder.Box(EntryField::StartDate)->text())));
        const QString percent = QString::number(moon.percent);
        KeyFilter::Show(m_txtMoon, percent);
        m_chkMoon->setChecked(moon.waxing);
        m_record.Store(EntryField::MoonPhase, ToUtf8(percent));
        m_binder.PutCode(EntryField::Prediction, moon.prediction);
    });
}

void EntryCalculator::DoRiseSet()
{
    Trap(module, "DoRiseSet", [this] {
        Record location;
        if (m_cboLocation->currentIndex() < 0 ||
            m_program.sql.LocationGet(ToInt16(std::to_string(m_cboLocation->currentData().toInt())),
                                      location) != succeeded) {
            return;
        }
        const LocationTexts texts{location.Text(LocationField::LocLatt),
                                  location.Text(LocationField::LocLong), location.Text(LocationField::LocGMT),
                                  location.Text(LocationField::LocDST)};
        if (!texts.IsComplete()) {
            m_program.messages.Tell(m_window,
                                    QStringLiteral("Required information for the location is missing:\r\n"
                                                   "to calculate sun/moon times, you need to fill in the\r\n"
                                                   "latitude, longitude and GMT difference"),
                                    QStringLiteral("Location Data Missing"));
            return;
        }
        const RiseSetForecast day =
            ForecastRiseSet(texts, ToDate(ToUtf8(m_binder.Box(EntryField::StartDate)->text())));
        for (const auto& [position, text] :
             {std::pair(EntryField::SunRise, &day.sunRise), std::pair(EntryField::SunSet, &day.sunSet),
              std::pair(EntryField::MoonRise, &day.moonRise), std::pair(EntryField::MoonSet, &day.moonSet),
              std::pair(EntryField::Major1, &day.major1), std::pair(EntryField::Major2, &day.major2),
              std::pair(EntryField::Minor1, &day.minor1), std::pair(EntryField::Minor2, &day.minor2)}) {
            m_binder.Put(position, *text);
        }
    });
}

bool EntryCalculator::PhaseChange()
{
    const std::string percent = ToUtf8(m_txtMoon->text());
    const bool waning = !percent.empty() && !m_chkMoon->isChecked();
    return m_record.Store(EntryField::MoonPhase, (waning ? "-" : "") + percent);
}

void EntryCalculator::SignPhase()
{
    const std::string percent = ToUtf8(m_txtMoon->text());
    if (!percent.empty()) {
        m_record.Store(EntryField::MoonPhase,
                       std::to_string(ToInt16(percent) * (m_chkMoon->isChecked() ? 1 : -1)));
    }
}

void EntryCalculator::ShowPhase()
{
    QString percent;
    bool waxing = true;
    try {
        const int phase = ToInt16(m_record.Text(EntryField::MoonPhase));
        percent = QString::number(std::abs(phase));
        waxing = phase >= 0;
    } catch (const Error& error) {
        if (error.Number() == ErrorNumber::ObjectNotSet) {
            throw;
        }
    }
    KeyFilter::Show(m_txtMoon, percent);
    m_chkMoon->setChecked(waxing);
}
