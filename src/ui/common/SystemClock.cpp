#include "SystemClock.h"

#include "qt/Strings.h"

#include <QDate>
#include <QLocale>
#include <QTime>

namespace Tarno
{

std::chrono::year_month_day SystemClock::Today() const
{
    const QDate today = QDate::currentDate();
    return std::chrono::year(today.year()) / today.month() / today.day();
}

std::string SystemClock::ShortDate() const
{
    return ToUtf8(QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat));
}

std::string SystemClock::ShortTime() const
{
    return ToUtf8(QLocale::system().toString(QTime::currentTime(), QLocale::ShortFormat));
}

std::chrono::steady_clock::time_point SystemClock::Now() const
{
    return std::chrono::steady_clock::now();
}

} // namespace Tarno
