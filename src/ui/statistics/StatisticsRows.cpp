#include "StatisticsRows.h"

#include "analysis/Proportion.h"
#include "analysis/YearComparison.h"
#include "core/Text.h"
#include "qt/Strings.h"
#include "store/EntryFields.h"

#include <numeric>

namespace Tarno
{

namespace
{

constexpr auto& actionWords = FieldWords::action;

QString Percent(double part)
{
    return QString::number(part * 100, 'f', 0);
}

QString InWords(const std::array<int, 4>& actions)
{
    QStringList parts;
    for (std::size_t action = 0; action < actions.size(); ++action) {
        if (actions.at(action) > 0) {
            parts << QStringLiteral("%1 %2").arg(FromUtf8(actionWords.at(action))).arg(actions.at(action));
        }
    }
    return parts.join(QLatin1String(", "));
}

/// Returns for example "43 % (24 to 63 %)".
QString ShareInWords(const TripFigures& figures)
{
    const auto interval = WilsonInterval(figures.Successes(), figures.RatedTrips());
    return interval ? QStringLiteral("%1 % (%2 to %3 %)")
                          .arg(Percent(Share(figures)), Percent(interval->low), Percent(interval->high))
                    : QString();
}

/// Returns the mean action, from 0 for Slow, or -1 if no action is set.
double MeanAction(const TripFigures& figures)
{
    int sum = 0;
    for (std::size_t action = 0; action < figures.actions.size(); ++action) {
        sum += static_cast<int>(action) * figures.actions.at(action);
    }
    return figures.RatedTrips() == 0 ? -1 : static_cast<double>(sum) / figures.RatedTrips();
}

} // namespace

double Share(const TripFigures& figures)
{
    return figures.RatedTrips() == 0 ? -1 : static_cast<double>(figures.Successes()) / figures.RatedTrips();
}

QStringList GroupHeadings()
{
    return {QStringLiteral("Group"),    QStringLiteral("Trips"),
            QStringLiteral("Hours"),    QStringLiteral("No catch"),
            QStringLiteral("Action"),   QStringLiteral("Good or Hot! (95 % interval)"),
            QStringLiteral("Last trip")};
}

std::vector<TextTableModel::Row> GroupRows(const std::vector<TripGroup>& groups)
{
    std::vector<TextTableModel::Row> rows;
    for (std::size_t position = 0; position < groups.size(); ++position) {
        const TripGroup& group = groups[position];
        rows.push_back(
            {QString::number(position),
             {FromUtf8(group.name),
              QString::number(group.trips) + (group.IsFew() ? QStringLiteral(" (few)") : QString()),
              FromUtf8(HoursText(group.Hours())), QString::number(group.tripsWithoutCatch),
              InWords(group.actions), ShareInWords(group), FromUtf8(group.lastDate)},
             {static_cast<double>(position), static_cast<double>(group.trips), group.Hours(),
              static_cast<double>(group.tripsWithoutCatch), MeanAction(group), Share(group)}});
    }
    return rows;
}

std::size_t GroupOfRow(const QString& key)
{
    return key.toULongLong();
}

QString LeftOutOfHours(const TripFigures& figures)
{
    QStringList parts;
    if (figures.longTrips > 0) {
        parts << FromUtf8(Counted(static_cast<std::size_t>(figures.longTrips), "trip")) +
                     QStringLiteral(" of more than 48 hours");
    }
    if (figures.untimedTrips > 0) {
        parts << FromUtf8(Counted(static_cast<std::size_t>(figures.untimedTrips), "trip")) +
                     QStringLiteral(" without usable times");
    }
    return parts.isEmpty() ? QString()
                           : QStringLiteral("The hours leave out ") + parts.join(QLatin1String(" and ")) +
                                 QLatin1Char('.');
}

QStringList CheckHeadings()
{
    QStringList headings{QString()};
    for (const std::string_view word : actionWords) {
        headings << FromUtf8(word);
    }
    return headings << QStringLiteral("All");
}

std::vector<TextTableModel::Row> CheckRows(const ForecastCheck& check)
{
    std::vector<TextTableModel::Row> rows;
    for (const ForecastCheck::Row& row : check.rows) {
        const int all = std::accumulate(row.actions.begin(), row.actions.end(), 0);
        QStringList cells{FromUtf8(row.name)};
        std::vector<double> order{static_cast<double>(rows.size())};
        for (const int count : row.actions) {
            cells << QString::number(count);
            order.push_back(count);
        }
        cells << QString::number(all);
        order.push_back(all);
        rows.push_back({QString::number(rows.size()), cells, order});
    }
    return rows;
}

QString CorrelationText(const ForecastCheck& check)
{
    return check.correlation ? QStringLiteral("Kendall's tau-b %1, p %2")
                                   .arg(check.correlation->tau, 0, 'f', 2)
                                   .arg(check.correlation->probability, 0, 'f', 4)
                             : QString();
}

std::vector<TextTableModel::Row> YearRows(const YearSummary& summary)
{
    std::vector<TextTableModel::Row> rows;
    for (const auto& figures : {CompareYears(summary), CompareSpecies(summary)}) {
        for (const ComparedFigure& figure : figures) {
            rows.push_back({QString::number(rows.size()),
                            {FromUtf8(figure.caption), FromUtf8(figure.year), FromUtf8(figure.before)}});
        }
    }
    return rows;
}

QStringList LineHeadings()
{
    return {QStringLiteral("Line"), QStringLiteral("Box"), QStringLiteral("Trips")};
}

std::vector<TextTableModel::Row> LineRows(const std::vector<UnmatchedLine>& lines)
{
    const auto box = [](EntryField::Position field) {
        switch (field) {
        case EntryField::TargetSpecies:
            return QStringLiteral("Targeted");
        case EntryField::FishCaught:
            return QStringLiteral("Caught");
        case EntryField::BaitUsed:
            return QStringLiteral("Bait");
        default:
            return QStringLiteral("Methods");
        }
    };
    std::vector<TextTableModel::Row> rows;
    rows.reserve(lines.size());
    for (const UnmatchedLine& line : lines) {
        rows.push_back({QString::number(rows.size()),
                        {FromUtf8(line.line), box(line.field), QString::number(line.trips)}});
    }
    return rows;
}

} // namespace Tarno
