// Random queries on random logs, compared with a slow evaluation that follows the description of the
// language.

#include "RandomLog.h"
#include "SmallLog.h"
#include "support/TestClass.h"

#include <QDate>
#include <QRegularExpression>
#include <QStringList>

#include <cmath>

using namespace Tarno;
using namespace EntryField;

namespace
{

struct Field {
    QString name;
    QList<int> positions;

    enum { Days, Times, Numbers, Words, None } compares;

    int ordered = 0; ///< the position of ordered words
};

const QList<Field>& Fields()
{
    static const QList<Field> fields{
        {QStringLiteral("date"), {StartDate, EndDate}, Field::Days},
        {QStringLiteral("start"), {StartTime}, Field::Times},
        {QStringLiteral("end"), {EndTime}, Field::Times},
        {QStringLiteral("place"), {LocNo}, Field::None},
        {QStringLiteral("tide"), {TideStart, TideEnd}, Field::None},
        {QStringLiteral("tidestart"), {TideStart}, Field::None},
        {QStringLiteral("tideend"), {TideEnd}, Field::None},
        {QStringLiteral("high"), {HighTide, HighTideHt}, Field::Numbers},
        {QStringLiteral("low"), {LowTide, LowTideHt}, Field::Numbers},
        {QStringLiteral("sunrise"), {SunRise}, Field::Times},
        {QStringLiteral("sunset"), {SunSet}, Field::Times},
        {QStringLiteral("moonrise"), {MoonRise}, Field::Times},
        {QStringLiteral("moonset"), {MoonSet}, Field::Times},
        {QStringLiteral("moon"), {EntryField::MoonPhase}, Field::Numbers},
        {QStringLiteral("rating"), {Prediction}, Field::Words, Prediction},
        {QStringLiteral("action"), {FishAction}, Field::Words, FishAction},
        {QStringLiteral("air"), {AirTemp}, Field::Numbers},
        {QStringLiteral("water"), {WaterTemp, WaterClarity}, Field::Numbers},
        {QStringLiteral("clarity"), {WaterClarity}, Field::None},
        {QStringLiteral("wind"), {WindDir, WindStrength}, Field::Words, WindStrength},
        {QStringLiteral("weather"), {Weather}, Field::None},
        {QStringLiteral("pressure"), {AirPressure, PressureReading}, Field::Numbers},
        {QStringLiteral("trend"), {AirPressure}, Field::None},
        {QStringLiteral("target"), {TargetSpecies}, Field::Numbers},
        {QStringLiteral("bait"), {BaitUsed}, Field::Numbers},
        {QStringLiteral("method"), {Method}, Field::Numbers},
        {QStringLiteral("caught"), {FishCaught}, Field::Numbers},
        {QStringLiteral("notes"), {Obbos}, Field::Numbers},
        {QStringLiteral("peak"), {Major1, Major2, Minor1, Minor2}, Field::Times},
        {QStringLiteral("picture"), {EntryField::Picture}, Field::None},
    };
    return fields;
}

QString Folded(const QString& text)
{
    QString folded;
    for (const QChar letter : text.normalized(QString::NormalizationForm_KD)) {
        if (!letter.isMark()) {
            folded += letter;
        }
    }
    return folded.toUpper().toLower();
}

QString WordOf(int position, int code)
{
    const std::string_view word =
        entryFields.at(static_cast<std::size_t>(position)).words[static_cast<std::size_t>(code)];
    return Folded(QString::fromUtf8(word.data(), static_cast<qsizetype>(word.size())));
}

QStringList WordsOf(int position)
{
    QStringList words;
    for (std::size_t code = 0; code < entryFields.at(static_cast<std::size_t>(position)).words.size();
         ++code) {
        words += WordOf(position, static_cast<int>(code));
    }
    return words;
}

// ---- queries

/// A part of a term.
struct Alternative {
    int field = -1; ///< an index of Fields, or -1 for none

    enum { Text, Any, Compares, Range, Equals } form = Text;

    QString sign; ///< for comparisons and equality; empty for a period or a name of a moon phase
    QString value;
    QString upper; ///< for ranges
};

struct Term {
    bool isExcluded = false;
    QList<Alternative> alternatives;
};

QString RandomOperand(const Field& field, Random& random)
{
    const int day = static_cast<int>(random() % 800);
    const QString date = QDate(2023, 12, 1).addDays(day).toString(QStringLiteral("yyyy-MM-dd"));
    switch (field.compares) {
    case Field::Days:
        return date.left(OneOf(QList<int>{4, 7, 10}, random));
    case Field::Times:
        return QStringLiteral("%1:%2").arg(random() % 24).arg(random() % 60, 2, 10, QLatin1Char('0'));
    case Field::Words: {
        const QString word = OneOf(WordsOf(field.ordered), random);
        return Chance(30, random) ? word.left(1) : word;
    }
    default:
        return OneOf(QStringList{QStringLiteral("18.5"), QStringLiteral("18,5"), QStringLiteral("-2"),
                                 QStringLiteral("20"), QStringLiteral("0"), QStringLiteral("7"),
                                 QStringLiteral("45"), QStringLiteral("90")},
                     random);
    }
}

/// Returns the interval of an operand as two numbers.
std::pair<double, double> Bounds(const Field& field, const QString& operand)
{
    if (field.compares == Field::Days) {
        QDate first = QDate::fromString(operand + QStringLiteral("-01-01").right(10 - operand.size()),
                                        QStringLiteral("yyyy-MM-dd"));
        const QDate after = operand.size() == 4   ? first.addYears(1)
                            : operand.size() == 7 ? first.addMonths(1)
                                                  : first.addDays(1);
        return {first.toJulianDay(), after.toJulianDay() - 1};
    }
    double value = 0;
    if (field.compares == Field::Times) {
        value = operand.section(QLatin1Char(':'), 0, 0).toInt() * 60 +
                operand.section(QLatin1Char(':'), 1).toInt();
    } else if (field.compares == Field::Words) {
        value = static_cast<double>(
            WordsOf(field.ordered)
                .indexOf(QRegularExpression(QRegularExpression::escape(operand) + QStringLiteral(".*"))));
    } else {
        value = QString(operand).replace(QLatin1Char(','), QLatin1Char('.')).toDouble();
    }
    return {value, value};
}

bool HasTexts(const Field& field)
{
    return field.compares == Field::None ||
           entryFields.at(static_cast<std::size_t>(field.positions[0])).kind == FieldKind::Lines;
}

Alternative RandomAlternative(int field, Random& random)
{
    Alternative made;
    made.field = field;
    made.value = OneOf(vocabulary, random);
    if (field < 0 || Chance(35, random)) {
        return made;
    }
    const Field& in = Fields()[field];
    if (Chance(15, random)) {
        made.form = Alternative::Any;
    } else if (HasTexts(in) && Chance(30, random)) {
        made.form = Alternative::Equals;
        made.sign = Chance(50, random) ? QStringLiteral("=") : QStringLiteral("==");
        if (Chance(30, random)) {
            made.value = OneOf(places, random).section(QLatin1Char(','), 0, 0);
        }
        static const QRegularExpression ordered(QStringLiteral("^[-0-9:.]+$"));
        if (in.compares == Field::Numbers && ordered.match(made.value).hasMatch()) {
            made.sign = QStringLiteral("=="); // the other one compares
        }
    } else if (in.compares != Field::None) {
        made.form = Chance(60, random) ? Alternative::Compares : Alternative::Range;
        made.value = RandomOperand(in, random);
        made.upper = RandomOperand(in, random);
        made.sign = OneOf(QStringList{QStringLiteral(">"), QStringLiteral(">="), QStringLiteral("<"),
                                      QStringLiteral("<="), QStringLiteral("=")},
                          random);
        if (made.form == Alternative::Compares && in.compares == Field::Days && Chance(40, random)) {
            made.sign.clear();
        }
        if (Bounds(in, made.upper).second < Bounds(in, made.value).first) {
            std::swap(made.value, made.upper);
        }
        if (made.form == Alternative::Range && Chance(40, random)) {
            (Chance(50, random) ? made.value : made.upper).clear();
        }
    } else if (Chance(50, random) &&
               entryFields.at(static_cast<std::size_t>(in.positions[0])).kind == FieldKind::Code) {
        made.value = OneOf(WordsOf(in.positions[0]), random);
    }
    return made;
}

QList<Term> RandomQuery(Random& random)
{
    QList<Term> terms;
    for (unsigned count = random() % 4; count > 0; --count) {
        Term term{Chance(25, random), {}};
        int field =
            Chance(50, random) ? -1 : static_cast<int>(random() % static_cast<unsigned>(Fields().size()));
        for (unsigned alternatives = random() % 3 + 1; alternatives > 0; --alternatives) {
            term.alternatives += RandomAlternative(field, random);
            // an alternative without a name takes over the field, so a field cannot be left again
            if (field >= 0 ? Chance(50, random) : Chance(30, random)) {
                field = static_cast<int>(random() % static_cast<unsigned>(Fields().size()));
            }
        }
        terms += term;
    }
    return terms;
}

// ---- printing

/// Changes the case of some letters and adds some accents.
QString Varied(const QString& text, Random& random)
{
    QString varied;
    for (const QChar letter : text) {
        varied += Chance(30, random) ? letter.toUpper() : letter;
        if (letter.isLetter() && letter.unicode() < 0x80 && Chance(10, random)) {
            varied += QChar(0x0301);
        }
    }
    return varied;
}

QString PrintedText(const Alternative& part, Random& random)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9\u00C0-\u30FF!][^ |:\"]*$"));
    const bool isDate = part.field == 0; // without quotation marks it would be a period
    const bool isPlain =
        !isDate && plain.match(part.value).hasMatch() && !part.value.contains(QStringLiteral(".."));
    const QString value = Varied(part.value, random);
    if (isPlain && Chance(60, random)) {
        return value;
    }
    const qsizetype cut = isPlain ? static_cast<qsizetype>(random()) % (value.size() + 1) : 0;
    return value.left(cut) + QLatin1Char('"') + value.mid(cut) + QLatin1Char('"');
}

QString Printed(const Alternative& part, Random& random)
{
    switch (part.form) {
    case Alternative::Any:
        return Chance(50, random) ? QString() : QStringLiteral("\"\"");
    case Alternative::Compares:
        return part.sign + (part.sign.isEmpty() || Chance(70, random)
                                ? part.value
                                : QLatin1Char('"') + part.value + QLatin1Char('"'));
    case Alternative::Range:
        return part.value + QStringLiteral("..") + part.upper;
    case Alternative::Equals:
        return part.sign + QLatin1Char('"') + Varied(part.value, random) + QLatin1Char('"');
    default:
        return PrintedText(part, random);
    }
}

QString Printed(const QList<Term>& terms, Random& random)
{
    QString query;
    for (const Term& term : terms) {
        query += Chance(20, random) ? QStringLiteral("  ") : QStringLiteral(" ");
        query += term.isExcluded ? QStringLiteral("-") : QString();
        int field = -1;
        for (qsizetype at = 0; at < term.alternatives.size(); ++at) {
            const Alternative& part = term.alternatives[at];
            query += at == 0 ? QString() : Chance(20, random) ? QStringLiteral("||") : QStringLiteral("|");
            // "any value" needs its name, because an empty alternative is ignored
            if (part.field >= 0 &&
                (part.field != field || part.form == Alternative::Any || Chance(30, random))) {
                query += Varied(Fields()[part.field].name, random) + QLatin1Char(':');
            }
            query += Printed(part, random);
            field = part.field;
        }
    }
    return query;
}

// ---- the slow evaluation

/// The lines that a trip shows for a field.
QStringList LinesOf(const Values& trip, int position)
{
    const auto stored = trip.find(static_cast<Position>(position));
    const QString value = stored == trip.end() ? QString() : QString::fromStdString(stored->second);
    switch (entryFields.at(static_cast<std::size_t>(position)).kind) {
    case FieldKind::Code:
        return {value.isEmpty() ? QString() : WordsOf(position).value(value.toInt())};
    case FieldKind::Place:
        return {Folded(places.value(value.toInt() - 1))};
    case FieldKind::MoonPhase:
        return {value.isEmpty() ? QString()
                                : QStringLiteral("%1, %2%")
                                      .arg(value.startsWith(QLatin1Char('-')) ? QStringLiteral("waning")
                                                                              : QStringLiteral("waxing"))
                                      .arg(std::abs(value.toInt()), 2, 10, QLatin1Char('0'))};
    case FieldKind::Lines:
        return Folded(value).split(QStringLiteral("~cl~"));
    default:
        return {Folded(value)};
    }
}

bool Holds(const QString& sign, std::pair<double, double> value, std::pair<double, double> operand)
{
    return sign == QLatin1String(">")    ? value.first > operand.second
           : sign == QLatin1String(">=") ? value.first >= operand.first
           : sign == QLatin1String("<")  ? value.second < operand.first
           : sign == QLatin1String("<=") ? value.second <= operand.second
                                         : value.first <= operand.second && value.second >= operand.first;
}

/// Returns the comparable values of a trip.
QList<std::pair<double, double>> ComparableValues(const Field& field, const Values& trip)
{
    static const QRegularExpression time(QStringLiteral("^([01]?[0-9]|2[0-3]):([0-5][0-9])$"));
    static const QRegularExpression number(
        QStringLiteral("(?<![^ (])-?([0-9]+([.,][0-9]+)?|[.,][0-9]+)|[0-9]+([.,][0-9]+)?"));
    if (field.compares == Field::Days) {
        const QDate start = QDate::fromString(LinesOf(trip, StartDate)[0], QStringLiteral("yyyy-MM-dd"));
        const QDate end = QDate::fromString(LinesOf(trip, EndDate)[0], QStringLiteral("yyyy-MM-dd"));
        if (!start.isValid()) {
            return {};
        }
        return {{start.toJulianDay(), (end.isValid() && end > start ? end : start).toJulianDay()}};
    }
    QList<std::pair<double, double>> values;
    for (const int position : field.positions) {
        for (const QString& line : LinesOf(trip, position)) {
            const auto asTime = time.match(line);
            const auto asNumber = number.match(line);
            const bool isWord = field.compares == Field::Words && WordsOf(field.ordered).contains(line);
            if (isWord || (field.compares == Field::Times && asTime.hasMatch())) {
                values.append(Bounds(field, line));
            } else if (field.compares == Field::Numbers && !asTime.hasMatch() && asNumber.hasMatch()) {
                values.append(Bounds(field, asNumber.captured()));
            }
        }
    }
    return values;
}

bool HasText(const Alternative& part, const Values& trip)
{
    const QString value = Folded(part.value);
    for (int position = StartDate; position < int{EntryField::Picture} && part.field < 0; ++position) {
        for (const QString& line : LinesOf(trip, position)) {
            if (line.contains(value)) {
                return true;
            }
        }
    }
    const QList<int> positions = part.field < 0 ? QList<int>() : Fields()[part.field].positions;
    const bool isWord = std::any_of(positions.begin(), positions.end(),
                                    [&](int position) { return WordsOf(position).contains(value); });
    for (const int position : positions) {
        for (const QString& line : LinesOf(trip, position)) {
            const bool isWhole = isWord && !WordsOf(position).isEmpty();
            if (isWhole ? line == value : line.contains(value)) {
                return true;
            }
        }
    }
    return false;
}

bool HasLine(const Alternative& part, const Values& trip)
{
    static const QRegularExpression details(QStringLiteral("( x)? *[0-9,;(].*$"));
    for (const int position : Fields()[part.field].positions) {
        for (const QString& line : LinesOf(trip, position)) {
            const QString subject = QString(line.trimmed()).remove(details);
            const bool orSubject = part.sign.size() == 1 && !subject.isEmpty();
            if (line.trimmed() == Folded(part.value) || (orSubject && subject == Folded(part.value))) {
                return true;
            }
        }
    }
    return false;
}

bool Matches(const Alternative& part, const Values& trip)
{
    if (part.form == Alternative::Equals) {
        return HasLine(part, trip);
    }
    if (part.form == Alternative::Text) {
        return HasText(part, trip);
    }
    const Field& field = Fields()[part.field];
    if (part.form == Alternative::Any) {
        return std::any_of(field.positions.begin(), field.positions.end(), [&](int position) {
            return !LinesOf(trip, position).join(QString()).trimmed().isEmpty();
        });
    }
    auto operand = part.value.isEmpty() ? std::pair(-HUGE_VAL, HUGE_VAL) : Bounds(field, part.value);
    if (part.form == Alternative::Range) {
        operand.second = part.upper.isEmpty() ? HUGE_VAL : Bounds(field, part.upper).second;
    }
    const QString sign = part.form == Alternative::Range ? QString() : part.sign;
    const auto values = ComparableValues(field, trip);
    return std::any_of(values.begin(), values.end(),
                       [&](const auto& value) { return Holds(sign, value, operand); });
}

bool Matches(const QList<Term>& terms, const Values& trip)
{
    return std::all_of(terms.begin(), terms.end(), [&](const Term& term) {
        return term.isExcluded != std::any_of(term.alternatives.begin(), term.alternatives.end(),
                                              [&](const Alternative& part) { return Matches(part, trip); });
    });
}

std::vector<std::string> PlaceTexts()
{
    std::vector<std::string> texts;
    for (const QString& place : places) {
        texts.push_back(place.toStdString());
    }
    return texts;
}

} // namespace

class tst_QueryProperties : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void query_findsWhatTheDescriptionSays()
    {
        Random random(20261122);
        int found = 0;
        int searched = 0;
        for (int log = 0; log < 20; ++log) {
            const std::vector<Values> trips = RandomTrips(random);
            const SmallLog small(trips, PlaceTexts());
            for (int round = 0; round < 200; ++round) {
                const QList<Term> terms = RandomQuery(random);
                const std::string text = Printed(terms, random).toStdString();
                const Query query(text);
                QVERIFY2(query.Faults().empty(),
                         (text + ": " + (query.Faults().empty() ? "" : query.Faults()[0].reason)).c_str());
                QCOMPARE(query.HasTerms(), !terms.isEmpty());
                for (std::size_t trip = 0; trip < trips.size(); ++trip) {
                    const bool isExpected = Matches(terms, trips[trip]);
                    QVERIFY2(query.Matches(small.Searched()[trip]) == isExpected,
                             (text + " on trip " + std::to_string(trip + 1)).c_str());
                    found += isExpected ? 1 : 0;
                    ++searched;
                }
            }
        }
        // neither everything nor nothing was found
        QVERIFY2(found > searched / 5 && found < searched * 4 / 5, std::to_string(found).c_str());
    }
};

TEST_CLASS(tst_QueryProperties)
#include "tst_QueryProperties.moc"
