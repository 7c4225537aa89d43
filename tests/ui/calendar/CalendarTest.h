#pragma once

#include "MonthTest.h"
#include "support/Lists.h"
#include "support/Windows.h"
#include "ui/calendar/MonthGrid.h"
#include "ui/calendar/fCalendar.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTextEdit>
#include <QtTest>

#include <string>

namespace Tarno
{

// Helpers to operate the calendar as its user does.

/// A log with three places, the last of them without coordinates, and the clock at 22 November 2026.
class ProgramWithPlaces : public TestProgram
{
public:
    ProgramWithPlaces()
    {
        Start();
        clock.today = Date(2026, 11, 22);
        AddLocation("Pittwater", {{LocationField::LocLatt, pittwater.latitude},
                                  {LocationField::LocLong, pittwater.longitude},
                                  {LocationField::LocDST, "1"}});
        AddLocation("Lake Eucumbene", {{LocationField::LocLatt, "-36.1"}, {LocationField::LocLong, "148.7"}});
        AddLocation("Somewhere", {{LocationField::LocLatt, ""}, {LocationField::LocLong, ""}});
    }

    /// Stores a trip of one day and returns its key.
    int AddTrip(const char* date, const char* place, const Values& values = {})
    {
        Values all{{EntryField::StartDate, date},    {EntryField::EndDate, date},
                   {EntryField::StartTime, "06:00"}, {EntryField::EndTime, "12:00"},
                   {EntryField::LocNo, place},       {EntryField::MoonPhase, "45"},
                   {EntryField::FishAction, "2"}};
        for (const auto& [position, text] : values) {
            all[position] = text;
        }
        return AddEntry(all);
    }
};

/// The calendar on the screen.
class ShownCalendar : public fCalendar
{
public:
    explicit ShownCalendar(const TestProgram& program) : fCalendar(program.program, nullptr)
    {
        show();
        AwaitActive(*this);
    }
};

inline MonthGrid& Grid(const QWidget& window)
{
    return Find<MonthGrid>(window, "monthGrid");
}

inline QComboBox& Places(const QWidget& window)
{
    return Find<QComboBox>(window, "cboPlace");
}

inline std::string ShownDate(const QWidget& window)
{
    return Text(Grid(window).Date());
}

/// Returns the panel about the day, with a line for each cell.
inline std::string DayText(const QWidget& window)
{
    return ToUtf8(Find<QTextEdit>(window, "txtDay").toPlainText());
}

/// Shows the page of the calendar with trips on similar days.
inline void ShowSimilar(const QWidget& window)
{
    Find<QTabWidget>(window, "tabDay").setCurrentIndex(1);
}

} // namespace Tarno
