#include "EntryBinder.h"

#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "store/RecordLayouts.h"
#include "ui/common/ClickLabel.h"
#include "ui/common/KeyFilter.h"
#include "ui/entry/FieldRules.h"

#include <QLineEdit>
#include <QShortcut>

#include <array>
#include <chrono>

namespace
{

/// How a box's text becomes the stored text.
enum class BoxRule {
    Any,   ///< as typed
    Date,  ///< "yyyy-mm-dd"
    Time,  ///< "hh:mm", empty, or a word of rise and set
    Lines, ///< several lines, line breaks encoded
};

struct BoxBinding {
    EntryField::Position position;
    const char* box;
    BoxRule rule;
};

struct OptionBinding {
    EntryField::Position position;
    const char* group;
};

constexpr std::array boxBindings{
    BoxBinding{EntryField::StartDate, "txtStart", BoxRule::Date},
    BoxBinding{EntryField::EndDate, "txtEnd", BoxRule::Date},
    BoxBinding{EntryField::StartTime, "txtTStart", BoxRule::Time},
    BoxBinding{EntryField::EndTime, "txtTEnd", BoxRule::Time},
    BoxBinding{EntryField::HighTide, "txtTideHigh", BoxRule::Time},
    BoxBinding{EntryField::HighTideHt, "txtTideHighHt", BoxRule::Any},
    BoxBinding{EntryField::LowTide, "txtTideLow", BoxRule::Time},
    BoxBinding{EntryField::LowTideHt, "txtTideLowHt", BoxRule::Any},
    BoxBinding{EntryField::SunRise, "txtSunRise", BoxRule::Time},
    BoxBinding{EntryField::SunSet, "txtSunSet", BoxRule::Time},
    BoxBinding{EntryField::MoonRise, "txtMoonRise", BoxRule::Time},
    BoxBinding{EntryField::MoonSet, "txtMoonSet", BoxRule::Time},
    BoxBinding{EntryField::AirTemp, "txtAirTemp", BoxRule::Any},
    BoxBinding{EntryField::WaterTemp, "txtWaterTemp", BoxRule::Any},
    BoxBinding{EntryField::TargetSpecies, "txtTarget", BoxRule::Lines},
    BoxBinding{EntryField::BaitUsed, "txtBait", BoxRule::Lines},
    BoxBinding{EntryField::Method, "txtMethods", BoxRule::Lines},
    BoxBinding{EntryField::FishCaught, "txtCaught", BoxRule::Lines},
    BoxBinding{EntryField::PressureReading, "txtPressure", BoxRule::Any},
    BoxBinding{EntryField::Obbos, "txtObbos", BoxRule::Lines},
    BoxBinding{EntryField::Major1, "txtMajor1", BoxRule::Any},
    BoxBinding{EntryField::Major2, "txtMajor2", BoxRule::Any},
    BoxBinding{EntryField::Minor1, "txtMinor1", BoxRule::Any},
    BoxBinding{EntryField::Minor2, "txtMinor2", BoxRule::Any},
};

constexpr std::array optionBindings{
    OptionBinding{EntryField::TideStart, "optTideSt"},
    OptionBinding{EntryField::TideEnd, "optTideEnd"},
    OptionBinding{EntryField::Prediction, "optPrediction"},
    OptionBinding{EntryField::WindDir, "optWindDir"},
    OptionBinding{EntryField::WindStrength, "optWindStr"},
    OptionBinding{EntryField::Weather, "optWeather"},
    OptionBinding{EntryField::WaterClarity, "optClarity"},
    OptionBinding{EntryField::FishAction, "optAction"},
    OptionBinding{EntryField::AirPressure, "optPressure"},
};

/// A rule of the entry's boxes as the binder takes it.
RecordBinder::Check CheckWith(void (*rule)(std::string& text, bool& ok))
{
    return [rule](std::string& text) {
        bool ok = false;
        rule(text, ok);
        return ok;
    };
}

} // namespace

EntryBinder::EntryBinder(QWidget* window, EditedRecord& record, LeaveGuard& guard)
    : RecordBinder(window, record, guard)
{
    BindBoxes();
    for (const OptionBinding& binding : optionBindings) {
        BindOptions(binding.position, binding.group);
    }
    BindStep(window, "lblStPlus", EntryField::StartDate, 1);
    BindStep(window, "lblStMinus", EntryField::StartDate, -1);
    BindStep(window, "lblEndPlus", EntryField::EndDate, 1);
    BindStep(window, "lblEndMinus", EntryField::EndDate, -1);
}

void EntryBinder::BindBoxes()
{
    for (const BoxBinding& binding : boxBindings) {
        switch (binding.rule) {
        case BoxRule::Any:
            BindBox(binding.position, binding.box);
            break;
        case BoxRule::Date:
            BindBox(binding.position, binding.box, CheckWith(CheckDateFormat),
                    QStringLiteral("There is no such day. Enter year, month and day, as in 2026-11-14."));
            new KeyFilter(Box(binding.position), QStringLiteral("-."));
            break;
        case BoxRule::Time:
            BindBox(binding.position, binding.box, CheckWith(CheckTimeFormat),
                    QStringLiteral("There is no such time. Enter hours and minutes, as in 05:45."));
            new KeyFilter(Box(binding.position), QStringLiteral(":."));
            break;
        case BoxRule::Lines:
            BindLines(binding.position, binding.box);
            break;
        }
    }
}

void EntryBinder::BindStep(QWidget* window, const char* label, std::size_t position, int days)
{
    const auto step = [this, label, position, days] {
        Trap("fEntry", std::string(label) + "_Click", [&] { StepDate(position, days); });
    };
    connect(window->findChild<ClickLabel*>(QLatin1String(label)), &ClickLabel::Clicked, this, step);
    // the label takes no focus; in the box the arrow keys do the same
    auto* shortcut = new QShortcut(QKeySequence(days > 0 ? Qt::Key_Up : Qt::Key_Down), Box(position));
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, step);
}

void EntryBinder::StepDate(std::size_t position, int days)
{
    const auto date = UserDate(Box(position)->text());
    if (!date) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    const std::chrono::year_month_day stepped = std::chrono::sys_days(*date) + std::chrono::days(days);
    if (stepped.year() < std::chrono::year(1) || stepped.year() > std::chrono::year(9999)) {
        throw Error(ErrorNumber::Overflow);
    }
    KeyFilter::Show(Box(position), FromUtf8(FromDate(stepped)));
    Validate(position);
}

void EntryBinder::Accepted(std::size_t position)
{
    if (position == EntryField::StartDate || position == EntryField::EndDate) {
        OrderDates();
    }
}

/// The end follows a start behind it. Only the box: the record gets the end date when that box is left.
void EntryBinder::OrderDates()
{
    const auto start = UserDate(Box(EntryField::StartDate)->text());
    const auto end = UserDate(Box(EntryField::EndDate)->text());
    if (start && end && *start > *end) {
        KeyFilter::Show(Box(EntryField::EndDate), Box(EntryField::StartDate)->text());
    }
}
