// The query language: which trips each form of a query finds, and what it reports as faults.

#include "SmallLog.h"
#include "analysis/Query.h"
#include "analysis/QueryFields.h"
#include "support/TestClass.h"

#include <random>

using namespace Tarno;
using namespace EntryField;

using namespace std::string_literals;

namespace
{

const SmallLog& Log()
{
    static const SmallLog log(
        {
            {{StartDate, "2024-10-05"},
             {EndDate, "2024-10-05"},
             {StartTime, "05:30"},
             {EndTime, "10:30"},
             {LocNo, "1"},
             {TideStart, "3"},
             {TideEnd, "1"},
             {HighTide, "09:30"},
             {HighTideHt, "1.6 m"},
             {LowTide, "03:06"},
             {LowTideHt, "0.4 m"},
             {SunRise, "05:27"},
             {SunSet, "18:00"},
             {EntryField::MoonPhase, "16"},
             {Prediction, "3"},
             {AirTemp, "14"},
             {WaterTemp, "18,5 C"},
             {WindDir, "1"},
             {WindStrength, "1"},
             {Weather, "5"},
             {WaterClarity, "0"},
             {TargetSpecies, "Flathead~CL~Squid"},
             {BaitUsed, "Soft plastic, 4\" paddle tail~CL~Squid jig"},
             {Method, "Drifting the drop-off"},
             {FishAction, "2"},
             {FishCaught, "Flathead 41 and 52 cm~CL~Squid x 3"},
             {AirPressure, "0"},
             {PressureReading, "1019"},
             {Obbos, "First of a|b.~CL~kind:new, see 2..3"},
             {Major1, "00:53"},
             {Minor2, "19:31"}},
            {{StartDate, "2024-10-31"},
             {EndDate, "2024-11-02"},
             {StartTime, "22:15"},
             {LocNo, "2"},
             {EntryField::MoonPhase, "-100"},
             {Prediction, "0"},
             {AirTemp, "-2 at dawn"},
             {WaterTemp, "6"},
             {WindDir, "0"},
             {WindStrength, "0"},
             {Weather, "4"},
             {WaterClarity, "1"},
             {TargetSpecies, "Trucha marr\u00F3n"},
             {FishAction, "3"},
             {FishCaught, "MARR\u00D3N 61 cm~CL~Stra\u00DFe"}},
            {{StartDate, "2025-02-08"},
             {EndDate, "2025-01-01"},
             {LocNo, "1"},
             {HighTide, "21:00 or so"},
             {HighTideHt, "2"},
             {EntryField::MoonPhase, "97"},
             {AirTemp, "30"},
             {WindDir, "6"},
             {WindStrength, "3"},
             {Weather, "6"},
             {WaterClarity, "2"},
             {TargetSpecies, "Bream"},
             {BaitUsed, "Pilchard"},
             {FishAction, "0"},
             {FishCaught, "Tailor x 4"}},
            {{StartDate, "5.3.2025"},
             {EndDate, "2025-03-05"},
             {LocNo, "9"},
             {MoonRise, "never"},
             {EntryField::MoonPhase, "-3"},
             {AirTemp, "warm"},
             {WindDir, "9"},
             {Weather, "0"},
             {TargetSpecies, "~CL~"}},
            {{Picture, "pictures/squid.png"}},
            {{StartDate, "2025-12-31"}, {EndDate, "2026-01-01"}},
        },
        {"Pittwater,~CL~Barrenjoey", "R\u00EDo Chimehu\u00EDn"});
    return log;
}

using Rows = std::vector<std::pair<const char*, const char*>>;

void AddRows(const Rows& rows)
{
    QTest::addColumn<std::string>("query");
    QTest::addColumn<std::string>("keys");
    for (const auto& [query, keys] : rows) {
        QTest::newRow(*query == '\0' ? "(empty)" : query) << std::string(query) << std::string(keys);
    }
}

void CheckRow()
{
    QFETCH(std::string, query);
    const Query parsed(query);
    QCOMPARE(parsed.Faults().size(), std::size_t(0));
    QTEST(Log().Matching(query), "keys");
}

} // namespace

class tst_Query : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void text_isSearchedInEverythingShown_data()
    {
        AddRows({{"", "1 2 3 4 5 6"},
                 {"  \t\n ", "1 2 3 4 5 6"},
                 {"flathead", "1"},
                 {"FLAT", "1"},
                 {"2024", "1 2"},
                 {"06:30", ""},
                 {"05:30", "1"},
                 {"barrenjoey", "1 3"},
                 {"rio", "2"},
                 {"r\u00CDo", "2"},
                 {"marron", "2"},
                 {"STRASSE", "2"},
                 {"stra\u00DFe", "2"},
                 {"run", "1"},
                 {"hot!", "2"},
                 {"waning", "2 4"},
                 {"100%", "2"},
                 {"never", "4"},
                 {"not", ""},       // codes without a word show nothing
                 {"squid.png", ""}, // a path is not shown
                 {"tailor bream", "3"},
                 {"tailor flathead", ""},
                 {"squid  \t flathead", "1"}});
    }

    void text_isSearchedInEverythingShown() { CheckRow(); }

    void phrase_isSearchedWithinOneLine_data()
    {
        AddRows({{"\"run in\"", "1"},
                 {"\"Soft  plastic\"", ""},
                 {"\"soft plastic\"", "1"},
                 {"soft\" \"plastic", "1"},
                 {"\"tail squid\"", ""},
                 {"\"tail\nsquid\"", ""},
                 {"\"pittwater, barrenjoey\"", "1 3"}, // a name is one line
                 {"\"run in run out\"", ""},
                 {"\"kind:new\"", "1"},
                 {"k\"ind:new\"", "1"},
                 {"\"a|b\"", "1"},
                 {"\"-off\"", "1"},
                 {"drop-off", "1"}});
    }

    void phrase_isSearchedWithinOneLine() { CheckRow(); }

    void terms_canBeExcludedAndAlternative_data()
    {
        AddRows({{"-squid", "2 3 4 5 6"},
                 {"-\"run in\"", "2 3 4 5 6"},
                 {"2024 -squid", "2"},
                 {"--off", "2 3 4 5 6"},
                 {"tailor|flathead", "1 3"},
                 {"tailor|", "3"},
                 {"|tailor||flathead|", "1 3"},
                 {"tailor|\"\"", "3"},
                 {"-tailor|flathead", "2 4 5 6"},
                 {"\"run in\"|never", "1 4"},
                 {"tailor|-off", "1 3"}});
    }

    void terms_canBeExcludedAndAlternative() { CheckRow(); }

    void fieldName_limitsTheSearch_data()
    {
        AddRows({{"caught:squid", "1"},
                 {"caught:bream", ""},
                 {"target:bream", "3"},
                 {"Target:BREAM", "3"},
                 {"T\u00C1RGET:bream", "3"},
                 {"bait:pilchard|jig", "1 3"},
                 {"caught:tailor|marron", "2 3"},
                 {"-caught:tailor|marron", "1 4 5 6"},
                 {"tailor|target:bream|squid", "1 3"},
                 {"bream|bait:squid", "1 3"},
                 {"bait:squid|", "1"},
                 {"tide:\"run in\"|top", "1"},
                 {"-bait:squid", "2 3 4 5 6"},
                 {"caught:squid target:flathead", "1"},
                 {"notes:\"a|b\"", "1"},
                 {"notes:kind:new", "1"},
                 {"notes:\"2..3\"", "1"},
                 {"bait:4\"\"", "1"},
                 {"start:05", "1"},
                 {"end:30", "1"},
                 {"place:rio", "2"},
                 {"high:09:30", "1"},
                 {"low:0.4", "1"},
                 {"sunrise:05:27", "1"},
                 {"sunset:18", "1"},
                 {"moonrise:never", "4"},
                 {"moonset:never", ""},
                 {"moon:16", "1"},
                 {"water:cloudy", "2"},
                 {"water:18", "1"},
                 {"pressure:rising", "1"},
                 {"pressure:1019", "1"},
                 {"method:drop", "1"},
                 {"peak:19:31", "1"},
                 {"picture:squid", "5"}});
    }

    void fieldName_limitsTheSearch() { CheckRow(); }

    void emptyValue_matchesAnyValue_data()
    {
        AddRows({{"bait:", "1 3"},
                 {"-caught:", "4 5 6"},
                 {"target:", "1 2 3"}, // a line break alone is no value
                 {"wind:", "1 2 3"},   // a code outside its group is no value
                 {"place:", "1 2 3"},
                 {"moon:", "1 2 3 4"},
                 {"picture:", "5"},
                 {"bait:\"\"", "1 3"},
                 {"bait:|moonrise:", "1 3 4"},
                 {"date:", "1 2 3 4 6"}});
    }

    void emptyValue_matchesAnyValue() { CheckRow(); }

    void word_ofACode_isCompleteOrAPart_data()
    {
        AddRows({{"wind:n", "2"},
                 {"wind:N", "2"},
                 {"wind:ne", "1"},
                 {"wind:strong", "3"},
                 {"wind:stro", "3"},
                 {"weather:clear", "3"},
                 {"weather:\"clear\"", "3"},
                 {"weather:cloud", "1 2"},
                 {"weather:cloudy", "2"},
                 {"water:clear", "1"},
                 {"action:hot", "2"},
                 {"rating:best", "1"},
                 {"tide:run", "1"}});
    }

    void word_ofACode_isCompleteOrAPart() { CheckRow(); }

    void date_namesAPeriod_data()
    {
        // the trips: 2024-10-05, 2024-10-31 to 11-02, 2025-02-08, (unreadable), (none), 2025-12-31 to
        // 2026-01-01
        AddRows({{"date:2024", "1 2"},           {"date:2026", "6"},
                 {"date:2024-11", "2"},          {"date:2024-10", "1 2"},
                 {"date:2024-11-01", "2"},       {"date:2024-11-03", ""},
                 {"date:=2024-11", "2"},         {"date:2025", "3 6"},
                 {"date:2025-01", ""},           {"date:2023|2026", "6"},
                 {"-date:2024", "3 4 5 6"},      {"date:>2024-10", "3 6"},
                 {"date:>=2024-10", "1 2 3 6"},  {"date:>=2024-11", "3 6"},
                 {"date:>2024-10-05", "2 3 6"},  {"date:<2024-11", "1"},
                 {"date:<=2024-11", "1 2"},      {"date:<=2024-11-01", "1"},
                 {"date:<2025-02-08", "1 2"},    {"date:<=2025-02-08", "1 2 3"},
                 {"date:2024-11..2025-01", "2"}, {"date:2024-11..2025", "2 3 6"},
                 {"date:2025-02-08..", "3 6"},   {"date:..2024", "1 2"},
                 {"date:..2024-10-31", "1 2"},   {"date:\"5.3\"", "4"},
                 {"date:\"2025-03\"", "4"}});
    }

    void date_namesAPeriod() { CheckRow(); }

    void numbersAndTimes_compare_data()
    {
        AddRows({{"air:>14", "3"},       {"air:>=14", "1 3"},
                 {"air:<14", "2"},       {"air:<=14", "1 2"},
                 {"air:=14", "1"},       {"air:=14.0", "1"},
                 {"air:-2..14", "1 2"},  {"air:15..", "3"},
                 {"air:..0", "2"},       {"air:=-2", "2"},
                 {"air:>\"14\"", "3"},   {"air:5..13|20..40", "3"},
                 {"-air:>0", "2 4 5 6"}, {"water:>18", "1"},
                 {"water:=18.5", "1"},   {"water:=18,5", "1"},
                 {"high:>1.5", "1 3"},   {"high:>20", "3"}, // "21:00 or so" is not a time
                 {"high:>09:00", "1"},   {"high:09:00..09:30", "1"},
                 {"caught:>50", "2"}, // the first number of each line
                 {"caught:=3", "1"},     {"start:<06:00", "1"},
                 {"start:>5:30", "2"},   {"start:05:30..22:15", "1 2"},
                 {"peak:>19:00", "1"},   {"pressure:1010..1020", "1"},
                 {"moon:>90", "2 3"},    {"moon:<=3", "4"},
                 {"moon:full", "2 3"},   {"moon:FULL", "2 3"},
                 {"moon:new", "4"},      {"moon:waxing", "1 3"},
                 {"moon:waning", "2 4"}, {"moon:full moon:waning", "2"}});
    }

    void numbersAndTimes_compare() { CheckRow(); }

    void orderedWords_compare_data()
    {
        AddRows({{"action:>=good", "1 2"},
                 {"action:>good", "2"},
                 {"action:<good", "3"},
                 {"action:=good", "1"},
                 {"action:=Hot!", "2"},
                 {"action:fair..hot", "1 2"},
                 {"action:g..", "1 2"},
                 {"rating:>=f", "1"},
                 {"rating:<=poor", "2"},
                 {"rating:fair..best", "1"},
                 {"wind:>=moderate", "3"},
                 {"wind:<mod", "1 2"},
                 {"wind:calm..light", "1 2"},
                 {"-wind:>calm", "2 4 5 6"}});
    }

    void orderedWords_compare() { CheckRow(); }

    void month_isThatOfTheStart_data()
    {
        AddRows({{"month:october", "1 2"},
                 {"month:oct", "1 2"},
                 {"month:OCT", "1 2"},
                 {"month:10", "1 2"},
                 {"month:=10", "1 2"},
                 {"month:=\"Feb\"", "3"},
                 {"month:02", "3"},
                 {"month:11", ""}, // the second trip starts in October
                 {"month:>=10", "1 2 6"},
                 {"month:>oct", "6"},
                 {"month:<oct", "3"},
                 {"month:<=october", "1 2 3"},
                 {"month:2..10", "1 2 3"},
                 {"month:11..", "6"},
                 {"month:..2", "3"},
                 {"month:november..february", "3 6"},
                 {"month:dec|feb", "3 6"},
                 {"-month:1..12", "4 5"},
                 {"month:", "1 2 3 4 6"}});
    }

    void month_isThatOfTheStart() { CheckRow(); }

    void fieldsOfOneCode_searchNothingElse_data()
    {
        AddRows({{"tidestart:\"run in\"", "1"},
                 {"tidestart:\"run out\"", ""},
                 {"tideend:\"run out\"", "1"},
                 {"clarity:clear", "1"},
                 {"clarity:18", ""},
                 {"trend:rising", "1"},
                 {"trend:1019", ""},
                 {"-trend:rising|falling", "2 3 4 5 6"}});
    }

    void fieldsOfOneCode_searchNothingElse() { CheckRow(); }

    void equalText_isALineOrItsSubject_data()
    {
        AddRows({{"place:=pittwater", "1 3"},
                 {"place:=\"Pittwater, Barrenjoey\"", "1 3"},
                 {"place:==pittwater", ""},
                 {"place:==\"pittwater, barrenjoey\"", "1 3"},
                 {"place:=pitt", ""},
                 {"place:=\"rio chimehuin\"", "2"},
                 {"caught:=flathead", "1"},
                 {"caught:=FLATH\u00C9AD", "1"},
                 {"caught:=flat", ""},
                 {"caught:==flathead", ""},
                 {"caught:==\"flathead 41 and 52 cm\"", "1"},
                 {"caught:=squid|=tailor", "1 3"},
                 {"caught:=squid|==\"tailor x 4\"", "1 3"},
                 {"caught:=strasse", "2"},
                 {"-caught:=tailor", "1 2 4 5 6"},
                 {"bait:=\"soft plastic\"", "1"},
                 {"bait:=\" soft plastic \"", "1"},
                 {"bait:=soft", ""},
                 {"notes:=\"kind:new\"", "1"},
                 {"notes:=\"first of a|b.\"", "1"},
                 {"weather:=cloud", ""},
                 {"weather:=cloudy", "2"},
                 {"tide:=\"run out\"", "1"},
                 {"caught:==3", ""}, // a line that is only a number
                 {"picture:=\"pictures/squid.png\"", "5"}});
    }

    void equalText_isALineOrItsSubject() { CheckRow(); }

    void everyField_hasAName()
    {
        for (const FieldInfo& field : entryFields) {
            const auto& names = QueryFields();
            const auto searches = [&](const QueryField& each) {
                return std::count(each.searched.begin(), each.searched.end(), field.position) == 1;
            };
            const auto count = std::count_if(names.begin(), names.end(), searches);
            QVERIFY(field.position == TarnoNo ? count == 0 : count >= 1);
        }
    }

    void fault_isExplained_data();
    void fault_isExplained();
    void faultyTerm_filtersNothing();
    void longFault_isShortened();
    void hasTerms_tellsWhetherAnythingIsFiltered();
    void missingValues_areEmpty();
    void anyBytes_areAQuery();
    void longQueries_areRead();
};

void tst_Query::fault_isExplained_data()
{
    QTest::addColumn<std::string>("query");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("length");
    QTest::addColumn<std::string>("reason");
    const auto row = [](const char* query, int position, int length, const char* reason) {
        QTest::newRow(query) << std::string(query) << position << length << std::string(reason);
    };
    row("bream \"run in", 6, 7, "\u201C\"run in\u201D has no closing quotation mark.");
    row("-bait:\"x ", 0, 9, "\u201C-bait:\"x \u201D has no closing quotation mark.");
    row("tailor colour:red", 7, 10,
        "\u201Ccolour\u201D is not a field. To search for \u201Ccolour:red\u201D, put it in quotation "
        "marks.");
    row("-bait:a|\u00E9:b", 8, 4,
        "\u201C\u00E9\u201D is not a field. To search for \u201C\u00E9:b\u201D, put it in quotation marks.");
    row("a -", 2, 1, "\u201C-\u201D contains no text to search for.");
    row("|", 0, 1, "\u201C|\u201D contains no text to search for.");
    row("-||", 0, 3, "\u201C-||\u201D contains no text to search for.");
    row("\"\"", 0, 2, "\u201C\"\"\u201D contains no text to search for.");
    row("air:>", 0, 5, "\u201Cair:>\u201D needs a number, for example 18.5.");
    row("-air:>=warm", 1, 10, "\u201Cair:>=warm\u201D needs a number, for example 18.5.");
    row("caught:a|>x", 9, 2, "\u201C>x\u201D needs a number, for example 18.5.");
    row("air:..", 0, 6, "\u201Cair:..\u201D needs a number, for example 18.5.");
    row("air:=1.2.3", 0, 10, "\u201Cair:=1.2.3\u201D needs a number, for example 18.5.");
    row("air:1..06:30", 0, 12, "\u201Cair:1..06:30\u201D needs a time, for example 06:30.");
    row("start:>6", 0, 8, "\u201Cstart:>6\u201D needs a time, for example 06:30.");
    row("start:>25:00", 0, 12, "\u201Cstart:>25:00\u201D needs a time, for example 06:30.");
    row("high:<9:60", 0, 10, "\u201Chigh:<9:60\u201D needs a time, for example 06:30.");
    row("date:may", 0, 8, "\u201Cdate:may\u201D needs a date, for example 2024, 2024-11 or 2024-11-05.");
    row("date:2024-13", 0, 12,
        "\u201Cdate:2024-13\u201D needs a date, for example 2024, 2024-11 or 2024-11-05.");
    row("date:2024|>", 10, 1, "\u201C>\u201D needs a date, for example 2024, 2024-11 or 2024-11-05.");
    row("action:>cold", 0, 12,
        "\u201Caction:>cold\u201D needs a value. The values are, in this order: Slow, Fair, Good, Hot!.");
    row("wind:>=", 0, 7,
        "\u201Cwind:>=\u201D needs a value. The values are, in this order: Calm, Light, Moderate, Strong.");
    row("water:>=clear", 0, 13, "\u201Cwater:>=clear\u201D needs a number, for example 18.5.");
    row("weather:>clear", 0, 14,
        "\u201Cweather:>clear\u201D cannot be compared, because the values of \u201Cweather\u201D have no "
        "order.");
    row("tide:top..bottom", 0, 16,
        "\u201Ctide:top..bottom\u201D cannot be compared, because the values of \u201Ctide\u201D have no "
        "order.");
    row("month:13", 0, 8, "\u201Cmonth:13\u201D needs a month, for example 11 or November.");
    row("month:ju", 0, 8, "\u201Cmonth:ju\u201D needs a month, for example 11 or November.");
    row("month:1.5..3", 0, 12, "\u201Cmonth:1.5..3\u201D needs a month, for example 11 or November.");
    row("place:=", 0, 7, "\u201Cplace:=\u201D needs a text after the equals sign.");
    row("caught:==\"\"", 0, 11, "\u201Ccaught:==\"\"\u201D needs a text after the equals sign.");
    row("wind:=ne", 0, 8,
        "\u201Cwind:=ne\u201D needs a value. The values are, in this order: Calm, Light, Moderate, Strong.");
    row("air:==5", 0, 7, "\u201Cair:==5\u201D needs a number, for example 18.5.");
    row("air:20..10", 0, 10, "\u201Cair:20..10\u201D ends before it begins. Write the smaller value first.");
}

void tst_Query::fault_isExplained()
{
    QFETCH(std::string, query);
    const Query parsed(query);
    QCOMPARE(parsed.Faults().size(), std::size_t(1));
    const QueryFault& fault = parsed.Faults().front();
    QTEST(fault.reason, "reason");
    QTEST(static_cast<int>(fault.position), "position");
    QTEST(static_cast<int>(fault.length), "length");
}

void tst_Query::faultyTerm_filtersNothing()
{
    QCOMPARE(Log().Matching("foo:x"), "1 2 3 4 5 6"s);
    QCOMPARE(Log().Matching("- tailor |"), "3"s);
    QCOMPARE(Log().Matching("tailor|foo:x flathead"), "1"s); // the whole term is faulty
    QCOMPARE(Log().Matching("flathead \"tailor"), "1"s);
    const Query query("a:1 tailor b:2|c:3");
    QCOMPARE(query.Faults().size(), std::size_t(3));
    QCOMPARE(query.Faults()[1].position, std::size_t(11));
    QCOMPARE(query.Faults()[2].position, std::size_t(15));
}

void tst_Query::longFault_isShortened()
{
    const Query query("foo:" + std::string(55, 'x') + "\u00E9\u00E9");
    QCOMPARE(query.Faults().front().reason, "\u201Cfoo\u201D is not a field. To search for \u201Cfoo:"s +
                                                std::string(55, 'x') +
                                                "\u2026\u201D, put it in quotation marks.");
    QCOMPARE(query.Faults().front().length, std::size_t(63));
}

void tst_Query::hasTerms_tellsWhetherAnythingIsFiltered()
{
    QVERIFY(!Query().HasTerms());
    QVERIFY(!Query(" ").HasTerms());
    QVERIFY(!Query("- foo:x").HasTerms());
    QVERIFY(Query("- bream").HasTerms());
}

void tst_Query::missingValues_areEmpty()
{
    pugi::xml_document document;
    document.load_string("<t><k>1</k><d>2024-05-06</d></t>"); // a short record
    const SearchedTrip trip(RecordView(document.first_child()), {});
    for (const char* query : {"2024-05", "date:2024", "-bait:", "-peak:", "-picture:"}) {
        QVERIFY2(Query(query).Matches(trip), query);
    }
}

void tst_Query::anyBytes_areAQuery()
{
    std::mt19937 random(20261122);
    const std::string frequent = "\"\"||--::..<>= ";
    const std::vector<std::string> words{
        "date:", "air:", "moon:", "wind:", "caught:", "2024", "-", "\xC3", "\u00E9"};
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (unsigned length = random() % 30; length > 0; --length) {
            switch (random() % 3) {
            case 0:
                text += static_cast<char>(random() % 256);
                break;
            case 1:
                text += frequent[random() % frequent.size()];
                break;
            default:
                text += words[random() % words.size()];
            }
        }
        const Query query(text);
        for (const QueryFault& fault : query.Faults()) {
            QVERIFY(fault.position + fault.length <= text.size() && !fault.reason.empty());
        }
        Log().Matching(text);
    }
}

void tst_Query::longQueries_areRead()
{
    constexpr std::size_t size = 1000000;
    for (const std::string& text :
         {std::string(size, '"'), std::string(size + 1, '"'), std::string(size, '|'), std::string(size, '-'),
          std::string(size, '\0'), std::string(size, '\xFF'), "air:>" + std::string(size, '9'),
          "date:" + std::string(size, '-'), std::string(size, ':')}) {
        Log().Matching(text);
    }
    std::string alternatives = "bait:";
    while (alternatives.size() < size) {
        alternatives += "zzz|-|\"\"|";
    }
    QCOMPARE(Log().Matching(alternatives + "jig"), "1"s);
}

TEST_CLASS(tst_Query)
#include "tst_Query.moc"
