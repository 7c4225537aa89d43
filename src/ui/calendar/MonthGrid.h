#pragma once

#include "MonthModel.h"

#include <QTableView>

#include <chrono>

namespace Tarno
{

/// The days of a month in a grid, with one of them selected. Arrow keys move by days and weeks, Page Up and
/// Page Down by months, with Ctrl by years, and Home goes to today. Days of other months can be clicked.
class MonthGrid : public QTableView
{
    Q_OBJECT

public:
    explicit MonthGrid(QWidget* parent = nullptr);

    /// Sets the day that Home goes to.
    void SetToday(std::chrono::year_month_day today) { m_today = today; }

    /// Whether the moon is seen from the south, where the other side of it is lit.
    void SetSouthern(bool southern);

    /// Shows the month of `date` and selects `date`.
    void ShowMonth(std::chrono::year_month_day date, const LocationTexts& location, const std::string& place,
                   const TripDays& trips);

    std::chrono::year_month_day Date() const { return m_date; }

    const MonthModel& Month() const { return *m_model; }

    /// Returns the selected day.
    const MonthCell& Selected() const;

Q_SIGNALS:
    /// The user wants to see another day, which may be in another month. Always within the years 1 to 9999.
    void DateWanted(std::chrono::year_month_day date);
    /// The user pressed Enter or double-clicked a day.
    void Activated();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void Want(std::chrono::sys_days day);
    void WantMonths(int count);

    MonthModel* m_model;
    std::chrono::year_month_day m_date{};
    std::chrono::year_month_day m_today{};
    int m_turned = 0; ///< part of a notch by which the wheel was turned, in eighths of a degree
};

} // namespace Tarno
