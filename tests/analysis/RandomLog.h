#pragma once

#include "SmallLog.h"

#include <QDate>
#include <QStringList>

#include <random>
#include <vector>

namespace Tarno
{

using Random = std::mt19937;

template <typename List>
const auto& OneOf(const List& list, Random& random)
{
    return list[static_cast<decltype(list.size())>(random()) % list.size()];
}

inline bool Chance(int percent, Random& random)
{
    return static_cast<int>(random() % 100) < percent;
}

inline const QStringList vocabulary{
    QStringLiteral("Bream"),        QStringLiteral("tailor"),     QStringLiteral("Squid jig"),
    QStringLiteral("run in"),       QStringLiteral("R\u00EDo"),   QStringLiteral("Stra\u00DFe"),
    QStringLiteral("clear"),        QStringLiteral("n"),          QStringLiteral("NE"),
    QStringLiteral("cloud"),        QStringLiteral("2024"),       QStringLiteral("a|b"),
    QStringLiteral("x 7"),          QStringLiteral("4, best 38"), QStringLiteral("06:30"),
    QStringLiteral("kind:new"),     QStringLiteral("Waning"),     QStringLiteral("-2"),
    QStringLiteral("\u30BA\u30AD"), QStringLiteral("18.5"),       QStringLiteral("1..2"),
    QStringLiteral(">5"),           QStringLiteral("hot!"),       QStringLiteral("Not Set")};
inline const QStringList places{QStringLiteral("Reef, clear"), QStringLiteral("R\u00EDo n\u00BA 7"),
                                QStringLiteral("Strand 2024")};

inline QString RandomDate(Random& random)
{
    const QDate date = QDate(2023, 12, 1).addDays(static_cast<int>(random() % 800));
    return Chance(8, random)
               ? OneOf(QStringList{{}, QStringLiteral("5.3.2024"), QStringLiteral("2024-02-30")}, random)
               : date.toString(QStringLiteral("yyyy-MM-dd"));
}

inline QString RandomTime(Random& random)
{
    return Chance(20, random)
               ? OneOf(
                     QStringList{
                         {}, QStringLiteral("never"), QStringLiteral("25:00"), QStringLiteral("9:05")},
                     random)
               : QStringLiteral("%1:%2")
                     .arg(random() % 24, 2, 10, QLatin1Char('0'))
                     .arg(random() % 60, 2, 10, QLatin1Char('0'));
}

inline QString RandomNumber(Random& random)
{
    return OneOf(QStringList{{},
                             QStringLiteral("18.5"),
                             QStringLiteral("18,5 C"),
                             QStringLiteral("0.4 m"),
                             QStringLiteral("-2"),
                             QStringLiteral("-2.25 at dawn"),
                             QStringLiteral("warm"),
                             QStringLiteral("about 20"),
                             QStringLiteral("20"),
                             QStringLiteral("06:30"),
                             QStringLiteral("x-7"),
                             QStringLiteral(".5")},
                 random);
}

inline QString RandomLines(Random& random, const QStringList& from)
{
    QStringList lines;
    for (unsigned count = random() % 4; count > 0; --count) {
        lines += OneOf(from, random);
    }
    return lines.join(QStringLiteral("~CL~"));
}

inline QString RandomValue(const FieldInfo& field, Random& random, const QStringList& lines)
{
    switch (field.kind) {
    case FieldKind::Date:
        return RandomDate(random);
    case FieldKind::Time:
        return RandomTime(random);
    case FieldKind::Number:
        return RandomNumber(random);
    case FieldKind::Code:
        return Chance(15, random) ? QString() : QString::number(random() % 9);
    case FieldKind::MoonPhase:
        return Chance(10, random) ? QString() : QString::number(static_cast<int>(random() % 201) - 100);
    case FieldKind::Place:
        return QString::number(random() % 4 + 1);
    case FieldKind::Lines:
        return RandomLines(random, lines);
    case FieldKind::Text:
        return RandomTime(random);
    default:
        return Chance(50, random) ? OneOf(vocabulary, random) : QString();
    }
}

inline std::vector<Values> RandomTrips(Random& random, const QStringList& lines = vocabulary)
{
    std::vector<Values> trips(25);
    for (Values& trip : trips) {
        for (const FieldInfo& field : entryFields) {
            if (!Chance(10, random)) {
                trip[field.position] = RandomValue(field, random, lines).toStdString();
            }
        }
    }
    return trips;
}

} // namespace Tarno
