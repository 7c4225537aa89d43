#pragma once

#include "analysis/CalendarDay.h"

#include <QAbstractTableModel>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace Tarno
{

/// A day of the calendar and its trips.
struct MonthCell {
    CalendarDay day;
    int trips = 0;     ///< logged on that day
    int tripsHere = 0; ///< of them, those at the place of the calendar
    bool isInMonth = true;
    bool isToday = false;
};

/// Six weeks around a month, one in each row. Each cell has the day as its text and a sentence for assistive
/// tools. Cells outside the years 1 to 9999 are empty.
class MonthModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    static constexpr int weeks = 6;
    static constexpr int daysOfWeek = 7;

    /// `firstDayOfWeek` is 1 for Monday to 7 for Sunday.
    MonthModel(int firstDayOfWeek, QObject* parent);

    void SetMonth(std::chrono::year_month month, const LocationTexts& location, const std::string& place,
                  const TripDays& trips, std::chrono::year_month_day today);

    std::chrono::year_month Month() const { return m_month; }

    /// Returns the cell, or null if it is empty.
    const MonthCell* CellAt(const QModelIndex& index) const;
    /// Returns the cell of a day of the month.
    QModelIndex IndexOf(std::chrono::year_month_day date) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    int m_firstDayOfWeek;
    std::chrono::year_month m_month{};
    std::chrono::sys_days m_firstDay{}; ///< of the first cell
    std::vector<std::optional<MonthCell>> m_cells;
};

} // namespace Tarno
