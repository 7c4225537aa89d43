// The texts of trips as they are shown and compared.

#include "SmallLog.h"
#include "analysis/TripText.h"
#include "support/TestClass.h"

using namespace Tarno;
using namespace EntryField;

using namespace std::string_literals;

class tst_TripText : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void readableText_showsTheMeaning_data()
    {
        QTest::addColumn<int>("field");
        QTest::addColumn<std::string>("stored");
        QTest::addColumn<std::string>("readable");
        const auto row = [](const char* name, int field, const char* stored, const char* readable) {
            QTest::newRow(name) << field << std::string(stored) << std::string(readable);
        };
        row("code", TideStart, "3", "Run In");
        row("code outside its group", TideStart, "4", "");
        row("code that is no number", TideStart, "01", "");
        row("code not set", TideStart, "", "");
        row("place", LocNo, "2", "Wharf, north side");
        row("unknown place", LocNo, "3", "");
        row("no place", LocNo, "", "");
        row("waning moon", EntryField::MoonPhase, "-45", "Waning, 45%");
        row("waxing moon", EntryField::MoonPhase, "5", "Waxing, 05%");
        row("full moon", EntryField::MoonPhase, "100", "Waxing, 100%");
        row("full moon, waning", EntryField::MoonPhase, "-100", "Waning, 100%");
        row("new moon", EntryField::MoonPhase, "0", "Waxing, 00%");
        row("no moon phase", EntryField::MoonPhase, "", "");
        row("unreadable moon phase", EntryField::MoonPhase, "half", "half");
        row("moon phase that overflows", EntryField::MoonPhase, "-32769", "-32769");
        row("lines", FishCaught, "Bream~CL~~CL~Squid x 3", "Bream\n\nSquid x 3");
        row("line break in another field", PressureReading, "a~CL~b", "a~CL~b");
        row("date", StartDate, "5.3.2024", "5.3.2024");
        row("number", AirTemp, "6 at dawn", "6 at dawn");
        row("picture", Picture, "p.png", "p.png");
    }

    void readableText_showsTheMeaning()
    {
        QFETCH(int, field);
        QFETCH(std::string, stored);
        const auto position = static_cast<Position>(field);
        const SmallLog log({{{position, stored}}}, {"Reef", "Wharf,~CL~north side"});
        QTEST(ReadableText(log.Trips().front(), position, log.Places()), "readable");
    }

    void readableText_missingValue_isEmpty()
    {
        pugi::xml_document document;
        document.load_string("<t><k>1</k></t>");
        for (const FieldInfo& field : entryFields) {
            const std::string text = ReadableText(RecordView(document.first_child()), field.position, {});
            QCOMPARE(text, field.position == TarnoNo ? "1"s : ""s);
        }
    }

    void placeNames_useTheFirstRecordOfANumber()
    {
        pugi::xml_document document;
        document.load_string("<d><l><n>1</n><m>Reef</m></l><l><n>1</n><m>Wharf</m></l><l/></d>");
        RecordList locations;
        for (const pugi::xml_node& node : document.first_child().children()) {
            locations.emplace_back(node);
        }
        QCOMPARE(PlaceNames(locations).Of("1"), "Reef"s);
        QCOMPARE(PlaceNames(locations).Of("01"), ""s);
        QCOMPARE(PlaceNames().Of("1"), ""s);
    }

    void fold_ignoresCaseAndAccents_data()
    {
        QTest::addColumn<std::string>("text");
        QTest::addColumn<std::string>("folded");
        const auto row = [](const std::string& text, const std::string& folded) {
            QTest::newRow(text.c_str()) << text << folded;
        };
        row("", "");
        row("Bream x 4, 38 CM [kept] @{}~", "bream x 4, 38 cm [kept] @{}~");
        row("R\u00EDo", "rio");
        row("Ri\u0301o", "rio");
        row("Stra\u00DFe", "strasse");
        row("\u00C5land \u00D8st", "aland \u00F8st");
        row("\u0130stanbul", "istanbul");
        row("\u03A3\u03AF\u03C3\u03C5\u03C6\u03BF\u03C2", "\u03C3\u03B9\u03C3\u03C5\u03C6\u03BF\u03C3");
        row("\uFB01sh", "fish");
        row("\uFF12\u00BD", "21\u20442");
        row("\u30BA\u30BA\u30AD", "\u30B9\u30B9\u30AD");
        row("\xFF|a", "\uFFFD|a");
        row("\u0301", "");
        row("caf\u00E9\nTH\u00C9", "cafe\nthe");
    }

    void fold_ignoresCaseAndAccents()
    {
        QFETCH(std::string, text);
        QTEST(Fold(text), "folded");
        QTEST(Fold(Fold(text)), "folded");
    }
};

TEST_CLASS(tst_TripText)
#include "tst_TripText.moc"
