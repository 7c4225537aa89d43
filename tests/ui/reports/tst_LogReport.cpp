// The preview of the log report: its page, its rows, their order and the location filter.

#include "support/TestClass.h"
#include "ui/reports/LogPreviewTest.h"
#include "ui/reports/LogReport.h"

#include <algorithm>

using namespace Tarno;

class tst_LogReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void report_withoutBuilder_isShown()
    {
        ProgramWithTrips program;
        RecordList fields;
        QCOMPARE(program.sql.FieldList(fields), succeeded);
        QWidget parent;
        Shown shown;
        WhileOpen(
            "fPreview",
            [&] {
                ShowLogReport(program.program,
                              {.selection = {.names = {"StartTime", "LocNo"}, .numbers = {"3", "5"}},
                               .columns = DefinitionsOf({3, 5}, fields),
                               .location = 1,
                               .descending = true},
                              &parent);
            },
            [&](QDialog& preview) {
                QCOMPARE(preview.parentWidget(), &parent);
                shown = ReadPreview(program, preview, 2);
                preview.close();
            });
        QCOMPARE(shown.headings, "Start|Where");
        QCOMPARE(shown.rows, (Rows{"07:00|Zeehan", "06:00|Zeehan"}));
    }

    void report_withAnEmptyList_isNotShown_data()
    {
        QTest::addColumn<Rows>("names");
        QTest::addColumn<Rows>("numbers");
        QTest::newRow("both") << Rows{} << Rows{};
        QTest::newRow("names") << Rows{} << Rows{"3"};
        QTest::newRow("an empty name") << Rows{""} << Rows{"3"};
        QTest::newRow("numbers") << Rows{"StartTime"} << Rows{};
    }

    void report_withAnEmptyList_isNotShown()
    {
        QFETCH(Rows, names);
        QFETCH(Rows, numbers);
        ProgramWithTrips program;
        RecordList fields;
        QCOMPARE(program.sql.FieldList(fields), succeeded);
        WithoutWindow([&] {
            ShowLogReport(
                program.program,
                {.selection = {.names = names, .numbers = numbers}, .columns = DefinitionsOf({3}, fields)},
                nullptr);
        });
        QVERIFY(program.sql.ReportGrid().empty());
    }

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
                                     "Page <PAGE> of <NUMPAGES>"}) {
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
            Show(builder, {3}); // a field without line breaks
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

    void location_isFilteredByItsPosition()
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

    void entryLocation_notANumber_failsOnlyWithAFilter()
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

    void entryWithTooFewValues_hasEmptyCells()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        program.folder.Write("tarno.xml",
                             "<data><tarno><TarnoNo>1</TarnoNo><StartDate>x</StartDate></tarno>"
                             "<tarno><TarnoNo>2</TarnoNo><StartDate>y</StartDate></tarno></data>");
        program.Start();
        ShowBuilder(program, [&](QDialog& builder) {
            Show(builder, {1, 2});
            QCOMPARE(Preview(program, builder).rows, (Rows{"x|", "y|"}));
        });
    }
};

TEST_CLASS(tst_LogReport)
#include "tst_LogReport.moc"
