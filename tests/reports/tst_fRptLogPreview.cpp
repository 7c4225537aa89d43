// What the report builder's "Preview" prints, and the errors that keep it from printing.

#include "reports/BuilderTest.h"
#include "reports/ReadRtf.h"
#include "store/RecordLayouts.h"
#include "support/TestClass.h"

#include <QAction>
#include <QToolBar>

#include <algorithm>
#include <optional>

namespace
{

/// A report as its preview shows it: cells with "|" between them, a row of them each.
struct Shown {
    std::string headings;
    std::vector<std::string> rows;
    QString windowTitle;
    RtfReading all;
};

using Rows = std::vector<std::string>;

std::string Joined(const QStringList& cells, int count)
{
    return ToUtf8(cells.mid(0, count).join(QLatin1Char('|')));
}

/// Has the preview that stands open export its report, and reads it.
RtfReading Exported(TestProgram& program, QWidget& preview)
{
    program.files.ExpectSave({.title = QStringLiteral("Save Report to RTF"),
                              .filter = QStringLiteral("Rich Text Format (*.rtf)"),
                              .folder = FromUtf8(program.folder.Path() + '/'),
                              .fileName = QStringLiteral("RTF Files"),
                              .suffix = QStringLiteral(".rtf")},
                             FromUtf8(program.folder.PathOf("shown.pdf")));
    Click(*Find<QToolBar>(preview, "tlbPreview").widgetForAction(&Find<QAction>(preview, "&RTF Export")));
    return RtfReader::Read(QByteArray::fromStdString(program.folder.Read("shown.pdf")));
}

/// Opens the preview by `open`, reads the report in it, and closes it. All columns have to stand on one line.
template <typename Open>
Shown PreviewBy(TestProgram& program, QWidget& builder, Open&& open)
{
    Shown shown;
    const int columns = List(builder, "lstRpt").count();
    WhileOpen("fPreview", std::forward<Open>(open), [&](QDialog& preview) {
        QCOMPARE(preview.parentWidget(), &builder);
        shown.windowTitle = preview.windowTitle();
        shown.all = Exported(program, preview);
        preview.close();
    });
    if (!shown.all.header.isEmpty()) {
        shown.headings = Joined(shown.all.header.last().cells, columns);
    }
    for (const RtfRow& row : shown.all.body) {
        shown.rows.push_back(Joined(row.cells, columns));
    }
    return shown;
}

Shown Preview(TestProgram& program, QWidget& builder)
{
    return PreviewBy(program, builder, [&] { Click(builder, "cmdPreview"); });
}

/// Presses "Preview", which shows nothing and writes nothing, and leaves the builder as it was.
void PreviewNothing(TestProgram& program, QWidget& builder)
{
    const std::vector<std::string> steps = program.operations.Steps();
    const std::string lists = Numbers(builder, "lstAvail") + " -> " + Numbers(builder, "lstRpt");
    WithoutWindow([&] { Click(builder, "cmdPreview"); });
    QCOMPARE(program.operations.Steps(), steps);
    QCOMPARE(Numbers(builder, "lstAvail") + " -> " + Numbers(builder, "lstRpt"), lists);
    QVERIFY(builder.isVisible());
    QVERIFY(IsEnabled(builder, "cmdPreview"));
    QVERIFY(IsEnabled(builder, "lstRpt"));
    QVERIFY(IsEnabled(builder, "cmdClose"));
}

/// As PreviewNothing, because of an error.
void PreviewFails(TestProgram& program, QWidget& builder, const char* module, const char* routine,
                  ErrorNumber number)
{
    program.reports.Expect(module, routine, number);
    PreviewNothing(program, builder);
}

void PreviewFails(TestProgram& program, QWidget& builder, ErrorNumber number)
{
    PreviewFails(program, builder, "fRptLog", "CreateReport", number);
}

Values Trip(const std::string& date, const std::string& time, const std::string& location,
            const std::string& tide)
{
    return {{EntryField::StartDate, date},
            {EntryField::StartTime, time},
            {EntryField::LocNo, location},
            {EntryField::TideStart, tide}};
}

/// A log of four trips to two locations.
class ProgramWithTrips : public ProgramWithSixFields
{
public:
    explicit ProgramWithTrips(const std::vector<Line>& reports = {}) : ProgramWithSixFields(reports)
    {
        AddLocation("Zeehan");
        AddLocation("Albany");
        AddEntry(Trip("2003-03-01", "06:00", "1", "3"));
        AddEntry(Trip("2003-01-01", "10:00", "2", "0"));
        AddEntry(Trip("2003-04-01", "09:00", "2", "2"));
        AddEntry(Trip("2003-02-01", "07:00", "1", "1"));
    }
};

/// Puts the fields with those numbers on the report, in that order.
void Show(QWidget& builder, const std::vector<int>& numbers)
{
    Click(builder, "cmdBackAll");
    for (const int number : numbers) {
        int row = 0;
        while (List(builder, "lstAvail").item(row)->data(Qt::UserRole).toInt() != number) {
            ++row;
        }
        DoubleClickItem(builder, "lstAvail", row);
    }
}

void ChooseSaved(QWidget& builder, int row, bool tick = true)
{
    if (tick) {
        Click(builder, "chkSaved");
    }
    Choose(builder, "cboSaved", row);
}

} // namespace

class tst_fRptLogPreview : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void preview_showsTheFieldsInTheirOrder()
    {
        ProgramWithTrips program;
        ShowBuilder(program, [&](QDialog& builder) {
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.windowTitle, QStringLiteral("Tarno Fish Log Entry Listing"));
            QCOMPARE(shown.headings, "From|Start|Where");
            QCOMPARE(shown.rows, (Rows{"2003-01-01|10:00|Albany", "2003-02-01|07:00|Zeehan",
                                       "2003-03-01|06:00|Zeehan", "2003-04-01|09:00|Albany"}));
        });
    }

    void preview_followsTheOrderOfTheList()
    {
        ProgramWithTrips program;
        ShowBuilder(program, [&](QDialog& builder) {
            ClickItem(builder, "lstRpt", 0);
            Click(builder, "cmdDn");
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.headings, "Start|From|Where");
            QCOMPARE(shown.rows, (Rows{"06:00|2003-03-01|Zeehan", "07:00|2003-02-01|Zeehan",
                                       "09:00|2003-04-01|Albany", "10:00|2003-01-01|Albany"}));
            ClickItem(builder, "lstAvail", 2);
            Click(builder, "cmdMove");
            ClickItem(builder, "lstRpt", 0);
            Click(builder, "cmdBack");
            QCOMPARE(Preview(program, builder).headings, "From|Where|Water");
        });
    }

    void preview_isALandscapePageWithTitleAndDate()
    {
        ProgramWithTrips program;
        ShowBuilder(program, [&](QDialog& builder) {
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.all.fault, QString());
            QVERIFY(shown.all.set.value(QStringLiteral("paperw")) >
                    shown.all.set.value(QStringLiteral("paperh")));
            QCOMPARE(shown.all.title, QStringLiteral("Tarno Fish Log Entry Listing"));
            QStringList header;
            for (const RtfRow& row : shown.all.header) {
                header << row.cells;
            }
            for (const char* text : {"Tarno Fishing Log - Log Reporting", "Printed on 5/02/2003 at 9:07 PM",
                                     "Page", "of", "<PAGE>", "<NUMPAGES>"}) {
                QVERIFY2(header.contains(QLatin1String(text)), text);
            }
        });
    }

    void preview_byKeyboard_data()
    {
        QTest::addColumn<QByteArray>("focus");
        QTest::addColumn<bool>("mnemonic");
        QTest::newRow("Alt+P") << QByteArray("lstAvail") << true;
        for (const char* focus : {"lstAvail", "lstRpt", "cboLocation", "chkDesc"}) {
            QTest::addRow("Enter in %s", focus) << QByteArray(focus) << false;
        }
    }

    void preview_byKeyboard()
    {
        QFETCH(QByteArray, focus);
        QFETCH(bool, mnemonic);
        ProgramWithTrips program;
        ShowBuilder(program, [&](QDialog& builder) {
            Find<QWidget>(builder, focus.constData()).setFocus();
            const Shown shown = PreviewBy(program, builder, [&] {
                if (mnemonic) {
                    PressMnemonic(builder, Qt::Key_P, "cmdPreview");
                } else {
                    Press(builder, Qt::Key_Return);
                }
            });
            QCOMPARE(shown.headings, "From|Start|Where");
            QVERIFY(builder.isVisible());
        });
    }

    void preview_again_isANewReport()
    {
        ProgramWithTrips program;
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {3});
            QCOMPARE(Preview(program, builder).rows, (Rows{"06:00", "07:00", "09:00", "10:00"}));
            program.AddEntry(Trip("2003-05-01", "08:00", "1", "0"));
            program.clock.shortTime = "10:00 PM";
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.rows, (Rows{"06:00", "07:00", "08:00", "09:00", "10:00"}));
            QCOMPARE(shown.headings, "Start");
            QStringList header;
            for (const RtfRow& row : shown.all.header) {
                header << row.cells;
            }
            QVERIFY(header.contains(QStringLiteral("Printed on 5/02/2003 at 10:00 PM")));
        });
    }

    void preview_leavesTheBuilderAsItWas()
    {
        ProgramWithTrips program({{"1", "Tides", "TideStart,StartDate", "6,1"}});
        const std::string log = program.folder.Read("tarno.xml");
        const std::string fields = program.folder.Read("field.xml");
        ShowBuilder(program, [&](QDialog& builder) {
            ChooseSaved(builder, 0);
            ClickItem(builder, "lstRpt", 0);
            Click(builder, "cmdDn");
            Click(builder, "chkDesc");
            Choose(builder, "cboLocation", 1);
            Preview(program, builder);
            QCOMPARE(Items(builder, "lstRpt"), "Date|Tide");
            QVERIFY(IsTicked(builder, "chkDesc"));
            QVERIFY(IsTicked(builder, "chkSaved"));
            QCOMPARE(Chosen(builder, "cboSaved"), "Tides");
            QCOMPARE(Chosen(builder, "cboLocation"), "Zeehan");
            QCOMPARE(Disabled(builder), "");
        });
        QCOMPARE(program.folder.Read("tarno.xml"), log);
        QCOMPARE(program.folder.Read("field.xml"), fields);
    }

    void preview_oddTexts_areShownAsTheyAre()
    {
        TestProgram program;
        WriteFields(program, {{"1", "StartDate", "Day", "R&D <1>", "80", "8", "0", "1"},
                              {"2", "EndDate", "End", "Größe 🐟", "80", "8", "0", "1"}});
        program.Start();
        program.AddEntry({{EntryField::StartDate, "{\\b} & <x> \"y\""}, {EntryField::EndDate, "釣り 🐟"}});
        ShowBuilder(program, [&](QDialog& builder) {
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.headings, "R&D <1>|Größe 🐟");
            QCOMPARE(shown.rows, Rows{"{\\b} & <x> \"y\"|釣り 🐟"});
            QCOMPARE(shown.all.fault, QString());
        });
    }

    void preview_storedLineBreaks_areLineBreaks()
    {
        ProgramWithSixFields program;
        program.AddLocation("Granite~CL~Island");
        program.AddEntry(Trip("2003-03-01", "a~CL~b", "1", "0"));
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {5, 1});
            QCOMPARE(Preview(program, builder).rows, Rows{"Granite\nIsland|2003-03-01"});
            Show(builder, {3}); // holds no lines
            QCOMPARE(Preview(program, builder).rows, Rows{"a~CL~b"});
        });
    }

    void rows_areSortedByTheFirstField()
    {
        ProgramWithTrips program;
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {3, 1});
            QCOMPARE(Preview(program, builder).rows,
                     (Rows{"06:00|2003-03-01", "07:00|2003-02-01", "09:00|2003-04-01", "10:00|2003-01-01"}));
        });
    }

    void rows_descending()
    {
        ProgramWithTrips program;
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {3});
            Click(builder, "chkDesc");
            QCOMPARE(Preview(program, builder).rows, (Rows{"10:00", "09:00", "07:00", "06:00"}));
            Click(builder, "chkDesc");
            QCOMPARE(Preview(program, builder).rows, (Rows{"06:00", "07:00", "09:00", "10:00"}));
        });
    }

    void rows_sortAsTexts()
    {
        ProgramWithSixFields program;
        for (const char* time : {"9", "b", "10", "a", "B", ""}) {
            program.AddEntry(Trip("2003-01-01", time, "1", "0"));
        }
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {3});
            QCOMPARE(Preview(program, builder).rows, (Rows{"", "10", "9", "B", "a", "b"}));
        });
    }

    void rows_many_areSorted()
    {
        constexpr int count = 200;
        TestProgram program;
        WriteFields(program, sixFields);
        std::vector<Line> entries;
        for (int number = 0; number < count; ++number) {
            Line entry(EntryField::Count);
            entry[EntryField::TarnoNo] = std::to_string(number + 1);
            entry[EntryField::StartTime] = std::to_string(1000 + number * 77 % count); // each number once
            entries.push_back(entry);
        }
        WriteRecords(program, "tarno.xml", std::vector<const char*>(EntryField::Count + 1, "tarno"), entries);
        program.Start();
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {3});
            Click(builder, "chkDesc");
            const Rows rows = Preview(program, builder).rows;
            QCOMPARE(rows.size(), std::size_t(count));
            for (int number = 0; number < count; ++number) {
                QCOMPARE(rows[std::size_t(number)], std::to_string(1000 + count - 1 - number));
            }
        });
    }

    void row_single_isShownWhateverTheOrder()
    {
        ProgramWithSixFields program;
        program.AddLocation("Zeehan");
        program.AddEntry(Trip("2003-03-01", "06:00", "1", "3"));
        ShowBuilder(program, [&](QDialog& builder) {
            const Rows expected{"2003-03-01|06:00|Zeehan"};
            QCOMPARE(Preview(program, builder).rows, expected);
            Click(builder, "chkDesc");
            QCOMPARE(Preview(program, builder).rows, expected);
        });
    }

    void codes_inTheFirstColumn_sortByNumber()
    {
        ProgramWithTrips program;
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {6, 3});
            QCOMPARE(Preview(program, builder).rows,
                     (Rows{"0-Top|10:00", "1-Run Out|07:00", "2-Bottom|09:00", "3-Run In|06:00"}));
            Show(builder, {3, 6});
            QCOMPARE(Preview(program, builder).rows,
                     (Rows{"06:00|Run In", "07:00|Run Out", "09:00|Bottom", "10:00|Top"}));
        });
    }

    void noEntries_giveOneEmptyRow()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [&](QDialog& builder) {
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.headings, "From|Start|Where");
            QCOMPARE(shown.rows, Rows{"||"});
        });
    }

    void location_filtersItsEntries()
    {
        ProgramWithTrips program;
        ShowBuilder(program, [&](QDialog& builder) {
            Choose(builder, "cboLocation", 1);
            QCOMPARE(Preview(program, builder).rows,
                     (Rows{"2003-02-01|07:00|Zeehan", "2003-03-01|06:00|Zeehan"}));
            Choose(builder, "cboLocation", 0);
            QCOMPARE(Preview(program, builder).rows.size(), 4U);
        });
    }

    void location_withoutTheFirstEntry_hasAnEmptyRow_data()
    {
        QTest::addColumn<bool>("descending");
        QTest::newRow("at the top") << false;
        QTest::newRow("at the bottom") << true;
    }

    void location_withoutTheFirstEntry_hasAnEmptyRow()
    {
        QFETCH(bool, descending);
        ProgramWithTrips program;
        ShowBuilder(program, [&](QDialog& builder) {
            Choose(builder, "cboLocation", 2);
            if (descending) {
                Click(builder, "chkDesc");
            }
            Rows expected{"||", "2003-01-01|10:00|Albany", "2003-04-01|09:00|Albany"};
            if (descending) {
                std::reverse(expected.begin(), expected.end());
            }
            QCOMPARE(Preview(program, builder).rows, expected);
        });
    }

    void location_withoutEntries_givesOneEmptyRow()
    {
        ProgramWithTrips program;
        program.AddLocation("Nowhere");
        ShowBuilder(program, [&](QDialog& builder) {
            Choose(builder, "cboLocation", 3);
            QCOMPARE(Preview(program, builder).rows, Rows{"||"});
        });
    }

    void location_isMeantByItsPosition()
    {
        ProgramWithTrips program;
        program.AddLocation("Third");
        program.sql.LocationDelete(1);
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {3});
            QCOMPARE(Choices(builder, "cboLocation"), "All Locations|Albany|Third");
            Choose(builder, "cboLocation", 1); // number 2, whose position is 1
            QCOMPARE(Preview(program, builder).rows, (Rows{"06:00", "07:00"}));
            Choose(builder, "cboLocation", 2); // number 3
            QCOMPARE(Preview(program, builder).rows, (Rows{"", "09:00", "10:00"}));
        });
    }

    void location_notListed_showsAllEntries()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        program.folder.Write("location.xml", "no XML");
        program.Start();
        program.AddEntry(Trip("2003-01-01", "10:00", "2", "0"));
        program.AddEntry(Trip("2003-01-01", "09:00", "1", "0"));
        program.reports.Expect("cSQL", "LocationList", ErrorNumber::ObjectNotSet);
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {3});
            QCOMPARE(Preview(program, builder).rows, (Rows{"09:00", "10:00"}));
        });
    }

    void location_vanished_isReportedOnceAndShown()
    {
        ProgramWithTrips program;
        program.sql.LocationDelete(2);
        ShowBuilder(program, [&](QDialog& builder) {
            program.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
            QCOMPARE(Preview(program, builder).rows, (Rows{"2003-01-01|10:00|1", "2003-02-01|07:00|Zeehan",
                                                           "2003-03-01|06:00|Zeehan", "2003-04-01|09:00|1"}));
        });
    }

    void entryLocation_thatIsNoNumber_failsWithAFilterOnly()
    {
        ProgramWithTrips program;
        program.AddEntry(Trip("2003-05-01", "08:00", "by the sea", "0"));
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {3});
            QCOMPARE(Preview(program, builder).rows, (Rows{"06:00", "07:00", "08:00", "09:00", "10:00"}));
            Choose(builder, "cboLocation", 1);
            PreviewFails(program, builder, "cSQL", "ReportLogData", ErrorNumber::TypeMismatch);
            Choose(builder, "cboLocation", 0);
            QCOMPARE(Preview(program, builder).rows.size(), 5U);
        });
    }

    void entryWithTooFewValues_isReported()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        program.folder.Write("tarno.xml",
                             "<data><tarno><TarnoNo>1</TarnoNo><StartDate>x</StartDate></tarno></data>");
        program.Start();
        ShowBuilder(program, [&](QDialog& builder) {
            PreviewFails(program, builder, "cSQL", "ReportLogData", ErrorNumber::ObjectNotSet);
            Show(builder, {1});
            QCOMPARE(Preview(program, builder).rows, Rows{"x"});
        });
    }

    void fieldBeyondTheEntry_isReported()
    {
        std::vector<Line> fields;
        for (int number = 1; number <= 40; ++number) {
            const std::string text = std::to_string(number);
            fields.push_back({text, "Name" + text, "Field " + text, "H" + text, "10", "8", "0", "0"});
        }
        TestProgram program;
        WriteFields(program, fields);
        program.Start();
        program.AddEntry({{36, "the last"}});
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {36});
            QCOMPARE(Preview(program, builder).rows, Rows{"the last"});
            Show(builder, {37});
            PreviewFails(program, builder, "cSQL", "ReportLogData", ErrorNumber::ObjectNotSet);
        });
    }

    void savedReport_isShown()
    {
        ProgramWithTrips program({{"1", "Tides", "TideStart,StartTime", "6,3"}});
        ShowBuilder(program, [&](QDialog& builder) {
            ChooseSaved(builder, 0);
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.headings, "Water|Start");
            QCOMPARE(shown.rows,
                     (Rows{"0-Top|10:00", "1-Run Out|07:00", "2-Bottom|09:00", "3-Run In|06:00"}));
        });
    }

    void savedReport_ticked_isUsedInSpiteOfLaterMoves()
    {
        ProgramWithTrips program({{"1", "Tides", "TideStart,StartTime", "6,3"}});
        ShowBuilder(program, [&](QDialog& builder) {
            ChooseSaved(builder, 0);
            ClickItem(builder, "lstRpt", 0);
            Click(builder, "cmdDn");
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.headings, "Start|Water"); // of the list; the values are those stored
            QCOMPARE(shown.rows,
                     (Rows{"0-Top|10:00", "1-Run Out|07:00", "2-Bottom|09:00", "3-Run In|06:00"}));
            Show(builder, {1, 2});
            QCOMPARE(Preview(program, builder).headings, "From|To");
            QCOMPARE(Preview(program, builder).rows, shown.rows);
        });
    }

    void savedReport_notTicked_showsTheList()
    {
        ProgramWithTrips program({{"1", "Tides", "TideStart,StartTime", "6,3"}});
        ShowBuilder(program, [&](QDialog& builder) {
            ChooseSaved(builder, 0, false);
            ClickItem(builder, "lstRpt", 0);
            Click(builder, "cmdDn");
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.headings, "Start|Water");
            QCOMPARE(shown.rows, (Rows{"06:00|Run In", "07:00|Run Out", "09:00|Bottom", "10:00|Top"}));
        });
    }

    void savedReport_tickedWithoutChoice_showsTheList()
    {
        ProgramWithTrips program({{"1", "Tides", "TideStart,StartTime", "6,3"}});
        ShowBuilder(program, [&](QDialog& builder) {
            Click(builder, "chkSaved");
            Show(builder, {3});
            QCOMPARE(Preview(program, builder).rows, (Rows{"06:00", "07:00", "09:00", "10:00"}));
        });
    }

    void savedReport_withMoreColumns_showsTheFirstOnes()
    {
        ProgramWithTrips program({{"1", "Tides", "StartTime,TideStart,StartDate", "3,6,1"}});
        ShowBuilder(program, [&](QDialog& builder) {
            ChooseSaved(builder, 0);
            ClickItem(builder, "lstRpt", 0);
            Click(builder, "cmdBack");
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.headings, "Water|From");
            QCOMPARE(shown.rows, (Rows{"06:00|Run In", "07:00|Run Out", "09:00|Bottom", "10:00|Top"}));
        });
    }

    void savedReport_withFewerColumns_isReported()
    {
        ProgramWithTrips program({{"1", "Tides", "TideStart,StartTime", "6,3"}});
        ShowBuilder(program, [&](QDialog& builder) {
            ChooseSaved(builder, 0);
            Click(builder, "cmdMoveAll");
            PreviewFails(program, builder, ErrorNumber::SubscriptOutOfRange);
            Choose(builder, "cboSaved", 0); // loads it anew
            QCOMPARE(Preview(program, builder).headings, "Water|Start");
        });
    }

    void savedReport_numberBehindTheList_isReported()
    {
        ProgramWithTrips program({{"2", "Tides", "TideStart,StartTime", "6,3"}});
        ShowBuilder(program, [&](QDialog& builder) {
            ChooseSaved(builder, 0);
            QCOMPARE(Numbers(builder, "lstRpt"), "6,3");
            PreviewFails(program, builder, ErrorNumber::SubscriptOutOfRange);
            Click(builder, "chkSaved");
            QCOMPARE(Preview(program, builder).headings, "From|Start|Where");
        });
    }

    void savedReport_ofAnotherPosition_isUsed()
    {
        ProgramWithTrips program(
            {{"2", "Tides", "TideStart,StartTime", "6,3"}, {"3", "Dates", "StartDate,StartTime", "1,3"}});
        ShowBuilder(program, [&](QDialog& builder) {
            ChooseSaved(builder, 0); // number 2: the second of the file
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.headings, "Water|Start");
            QCOMPARE(shown.rows,
                     (Rows{"2003-01-01|10:00", "2003-02-01|07:00", "2003-03-01|06:00", "2003-04-01|09:00"}));
        });
    }

    void savedReport_withAnEmptyList_showsNothing_data()
    {
        QTest::addColumn<QByteArray>("names");
        QTest::addColumn<QByteArray>("numbers");
        QTest::newRow("both") << QByteArray() << QByteArray();
        QTest::newRow("names") << QByteArray() << QByteArray("3");
        QTest::newRow("numbers") << QByteArray("StartTime") << QByteArray();
    }

    void savedReport_withAnEmptyList_showsNothing()
    {
        QFETCH(QByteArray, names);
        QFETCH(QByteArray, numbers);
        ProgramWithTrips program({{"1", "Nothing", names.toStdString(), numbers.toStdString()}});
        ShowBuilder(program, [&](QDialog& builder) {
            ChooseSaved(builder, 0);
            Click(builder, "cmdMoveAll");
            PreviewNothing(program, builder);
        });
    }

    void savedReport_withFewerNamesThanNumbers_isReported()
    {
        ProgramWithTrips program({{"1", "Odd", "TideStart", "6,3"}});
        ShowBuilder(program, [&](QDialog& builder) {
            ChooseSaved(builder, 0);
            PreviewFails(program, builder, "cSQL", "ReportLogData", ErrorNumber::SubscriptOutOfRange);
        });
    }

    void savedReport_withVanishedField_losesItsColumnOnly()
    {
        ProgramWithTrips program({{"1", "Old", "StartTime,Gone,StartDate", "3,7,1"}});
        ShowBuilder(program, [&](QDialog& builder) {
            ChooseSaved(builder, 0, false);
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.headings, "Start|From");
            QCOMPARE(shown.rows,
                     (Rows{"06:00|2003-03-01", "07:00|2003-02-01", "09:00|2003-04-01", "10:00|2003-01-01"}));
        });
    }

    void gap_fieldBehindTheEnd_isReported()
    {
        TestProgram program;
        WriteFields(program, {sixFields[0], sixFields[2]}); // numbers 1, 3
        program.Start();
        ShowBuilder(program, [&](QDialog& builder) {
            PreviewFails(program, builder, ErrorNumber::SubscriptOutOfRange);
            Show(builder, {1});
            QCOMPARE(Preview(program, builder).headings, "From");
        });
    }

    void gap_showsTheFieldAtThePosition()
    {
        TestProgram program;
        WriteFields(program, {sixFields[0], sixFields[2], sixFields[3]}); // numbers 1, 3, 4
        program.Start();
        program.AddEntry(Trip("2003-03-01", "06:00", "1", "3"));
        ShowBuilder(program, [&](QDialog& builder) {
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.headings, "From|Stop"); // field 3 is the third of the file
            QCOMPARE(shown.rows, Rows{"2003-03-01|06:00"});
        });
    }

    void definition_thatIsNoNumber_isReported_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<int>("number");
        const auto row = [](const char* name, FieldField::Position position, const char* value,
                            ErrorNumber number) {
            QTest::newRow(name) << int(position) << QByteArray(value) << int(number);
        };
        row("empty grow flag", FieldField::Grow, "", ErrorNumber::TypeMismatch);
        row("grow flag in words", FieldField::Grow, "yes", ErrorNumber::TypeMismatch);
        row("width in words", FieldField::Width, "wide", ErrorNumber::TypeMismatch);
        row("empty width", FieldField::Width, "", ErrorNumber::TypeMismatch);
        row("width of 575", FieldField::Width, "575", ErrorNumber::Overflow);
        row("width beyond 16 bits", FieldField::Width, "40000", ErrorNumber::Overflow);
        row("font size in words", FieldField::Font, "big", ErrorNumber::TypeMismatch);
        row("empty font size", FieldField::Font, "", ErrorNumber::TypeMismatch);
    }

    void definition_thatIsNoNumber_isReported()
    {
        QFETCH(int, position);
        QFETCH(QByteArray, value);
        QFETCH(int, number);
        TestProgram program;
        std::vector<Line> fields = sixFields;
        fields[2][std::size_t(position)] = value.toStdString();
        WriteFields(program, fields);
        program.Start();
        program.AddEntry(Trip("2003-03-01", "06:00", "1", "3"));
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {1, 3});
            PreviewFails(program, builder, static_cast<ErrorNumber>(number));
        });
    }

    void definition_ofAFieldThatIsNotShown_isNotLookedAt()
    {
        TestProgram program;
        std::vector<Line> fields = sixFields;
        fields[2] = {"3", "StartTime", "Time", "Start", "wide", "big", "", "1"};
        WriteFields(program, fields);
        program.Start();
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {1, 2});
            QCOMPARE(Preview(program, builder).headings, "From|To");
        });
    }

    void widestColumn_isShown()
    {
        TestProgram program;
        std::vector<Line> fields = sixFields;
        fields[0][FieldField::Width] = "574";
        WriteFields(program, fields);
        program.Start();
        program.AddEntry(Trip("2003-03-01", "06:00", "1", "3"));
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {1});
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.headings, "From");
            QCOMPARE(shown.rows, Rows{"2003-03-01"});
        });
    }

    void failed_withoutTheBadField_isShown()
    {
        TestProgram program;
        std::vector<Line> fields = sixFields;
        fields[2][FieldField::Grow] = "";
        WriteFields(program, fields);
        program.Start();
        program.AddEntry(Trip("2003-03-01", "06:00", "1", "3"));
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {1, 3});
            PreviewFails(program, builder, ErrorNumber::TypeMismatch);
            PreviewFails(program, builder, ErrorNumber::TypeMismatch);
            DoubleClickItem(builder, "lstRpt", 1);
            const Shown shown = Preview(program, builder);
            QCOMPARE(shown.headings, "From");
            QCOMPARE(shown.rows, Rows{"2003-03-01"});
        });
    }

    void customisedBadly_isReported()
    {
        ProgramWithTrips program;
        ShowBuilder(program, [&](QDialog& builder) {
            const auto customise = [&](const std::string& width, const std::string& heading) {
                WhileOpen(
                    "fCustom", [&] { Click(builder, "cmdCustom"); },
                    [&](QDialog& custom) {
                        Retype(custom, "txtWidth", width);
                        Retype(custom, "txtLabel", heading);
                        Click(custom, "cmdOK");
                    });
            };
            customise("rather wide", "Day");
            PreviewFails(program, builder, ErrorNumber::TypeMismatch);
            customise("25", "Day");
            QCOMPARE(Preview(program, builder).headings, "Day|Start|Where");
        });
    }
};

TEST_CLASS(tst_fRptLogPreview)
#include "tst_fRptLogPreview.moc"
