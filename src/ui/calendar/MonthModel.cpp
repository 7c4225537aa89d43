#include "MonthModel.h"

#include "qt/Strings.h"

#include <QLocale>

namespace Tarno
{

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

MonthModel::MonthModel(int firstDayOfWeek, QObject* parent)
    : QAbstractTableModel(parent), m_firstDayOfWeek(firstDayOfWeek)
{
}

void MonthModel::SetMonth(std::chrono::year_month month, const LocationTexts& location,
                          const std::string& place, const TripDays& trips, year_month_day today)
{
    beginResetModel();
    m_month = month;
    const sys_days first(month / 1);
    const auto weekday = static_cast<int>(std::chrono::weekday(first).iso_encoding());
    m_firstDay = first - days((weekday - m_firstDayOfWeek + daysOfWeek) % daysOfWeek);
    m_cells.clear();
    for (int cell = 0; cell < weeks * daysOfWeek; ++cell) {
        const year_month_day date(m_firstDay + days(cell));
        if (date.year() < std::chrono::year(1) || date.year() > std::chrono::year(9999)) {
            m_cells.emplace_back();
            continue;
        }
        MonthCell shown{.day = DayAt(location, date),
                        .isInMonth = date.year() / date.month() == month,
                        .isToday = date == today};
        for (const TripDays::Trip& trip : trips.On(date)) {
            ++shown.trips;
            shown.tripsHere += trip.place == place ? 1 : 0;
        }
        m_cells.emplace_back(std::move(shown));
    }
    endResetModel();
}

const MonthCell* MonthModel::CellAt(const QModelIndex& index) const
{
    if (!index.isValid()) {
        return nullptr;
    }
    const auto row = static_cast<std::size_t>(index.row());
    const std::size_t cell = row * daysOfWeek + static_cast<std::size_t>(index.column());
    return cell < m_cells.size() && m_cells[cell] ? &*m_cells[cell] : nullptr;
}

QModelIndex MonthModel::IndexOf(year_month_day date) const
{
    const auto cell = static_cast<int>((sys_days(date) - m_firstDay).count());
    return index(cell / daysOfWeek, cell % daysOfWeek);
}

int MonthModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : weeks;
}

int MonthModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : daysOfWeek;
}

QVariant MonthModel::data(const QModelIndex& index, int role) const
{
    const MonthCell* cell = CellAt(index);
    if (cell == nullptr) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return static_cast<unsigned>(cell->day.date.day());
    case Qt::AccessibleTextRole:
    case Qt::ToolTipRole:
        return FromUtf8(DescribeDay(cell->day, cell->trips));
    default:
        return {};
    }
}

QVariant MonthModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)) {
        return {};
    }
    const int day = (m_firstDayOfWeek - 1 + section) % daysOfWeek + 1;
    return QLocale::c().dayName(day, role == Qt::DisplayRole ? QLocale::ShortFormat : QLocale::LongFormat);
}

Qt::ItemFlags MonthModel::flags(const QModelIndex& index) const
{
    return CellAt(index) == nullptr ? Qt::NoItemFlags : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

} // namespace Tarno
