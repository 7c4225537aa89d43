#include "MonthGrid.h"

#include "DayDelegate.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QWheelEvent>

namespace Tarno
{

using std::chrono::days;
using std::chrono::months;
using std::chrono::sys_days;
using std::chrono::year_month_day;

MonthGrid::MonthGrid(QWidget* parent)
    : QTableView(parent), m_model(new MonthModel(QLocale().firstDayOfWeek(), this))
{
    setModel(m_model);
    setItemDelegate(new DayDelegate(this));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    const QSize cell = DayDelegate::SmallestCell(font());
    setMinimumSize(MonthModel::daysOfWeek * cell.width() + 2 * frameWidth(),
                   MonthModel::weeks * cell.height() + horizontalHeader()->sizeHint().height() +
                       2 * frameWidth());
}

void MonthGrid::SetSouthern(bool southern)
{
    static_cast<DayDelegate*>(itemDelegate())->SetSouthern(southern);
    viewport()->update();
}

void MonthGrid::ShowMonth(year_month_day date, const LocationTexts& location, const std::string& place,
                          const TripDays& trips)
{
    m_date = date;
    m_model->SetMonth(date.year() / date.month(), location, place, trips, m_today);
    setCurrentIndex(m_model->IndexOf(date));
}

const MonthCell& MonthGrid::Selected() const
{
    return *m_model->CellAt(m_model->IndexOf(m_date));
}

void MonthGrid::Want(sys_days day)
{
    const year_month_day date(day);
    if (date.year() >= std::chrono::year(1) && date.year() <= std::chrono::year(9999)) {
        Q_EMIT DateWanted(date);
    }
}

/// Moves by months, to the last day of a shorter month if needed.
void MonthGrid::WantMonths(int count)
{
    const std::chrono::year_month month = m_date.year() / m_date.month() + months(count);
    const year_month_day sameDay = month / m_date.day();
    Want(sameDay.ok() ? sys_days(sameDay) : sys_days(month / std::chrono::last));
}

void MonthGrid::keyPressEvent(QKeyEvent* event)
{
    constexpr int monthsOfYear = 12;
    const sys_days day(m_date);
    const int step = event->modifiers().testFlag(Qt::ControlModifier) ? monthsOfYear : 1;
    switch (event->key()) {
    case Qt::Key_Left:
        return Want(day - days(1));
    case Qt::Key_Right:
        return Want(day + days(1));
    case Qt::Key_Up:
        return Want(day - days(MonthModel::daysOfWeek));
    case Qt::Key_Down:
        return Want(day + days(MonthModel::daysOfWeek));
    case Qt::Key_PageUp:
        return WantMonths(-step);
    case Qt::Key_PageDown:
        return WantMonths(step);
    case Qt::Key_Home:
        return Want(m_today);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT Activated();
        return;
    default:
        event->ignore(); // the table would select another cell than the day
    }
}

void MonthGrid::mousePressEvent(QMouseEvent* event)
{
    if (const MonthCell* cell = m_model->CellAt(indexAt(event->position().toPoint()))) {
        Want(cell->day.date);
    }
}

void MonthGrid::mouseMoveEvent(QMouseEvent* /*event*/)
{
    // dragging does not select another day
}

void MonthGrid::mouseDoubleClickEvent(QMouseEvent* event)
{
    // the first click has selected the day, and may have shown its month with another day at this place
    if (event->button() == Qt::LeftButton &&
        m_model->CellAt(indexAt(event->position().toPoint())) != nullptr) {
        Q_EMIT Activated();
    }
}

void MonthGrid::wheelEvent(QWheelEvent* event)
{
    constexpr int notch = 120;
    m_turned += event->angleDelta().y(); // touch pads send parts of a notch
    if (const int notches = m_turned / notch; notches != 0) {
        m_turned %= notch;
        WantMonths(-notches);
    }
    event->accept();
}

} // namespace Tarno
