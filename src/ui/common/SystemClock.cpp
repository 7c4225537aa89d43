#include "SystemClock.h"

#include "qt/Strings.h"

#include <QDate>
#include <QLocale>
#include <QRegularExpression>
#include <QTime>

namespace Tarno
{

QString WithoutSeconds(QString format)
{
    // skips quoted words; removes the separator before the seconds and a quoted unit behind them
    static const QRegularExpression seconds(
        QStringLiteral("'[^']*'(*SKIP)(*FAIL)|[:., ]*s+([.,]z+)?( ?'[^']*')?"));
    return format.remove(seconds);
}

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
    const QLocale locale = QLocale::system();
    return ToUtf8(
        locale.toString(QTime::currentTime(), WithoutSeconds(locale.timeFormat(QLocale::ShortFormat))));
}

std::chrono::steady_clock::time_point SystemClock::Now() const
{
    return std::chrono::steady_clock::now();
}

} // namespace Tarno
