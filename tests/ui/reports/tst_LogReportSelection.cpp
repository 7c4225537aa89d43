// The fields of the log report: fields of a saved report, and definitions that make the report fail.

#include "support/TestClass.h"
#include "ui/reports/LogPreviewTest.h"

using namespace Tarno;

class tst_LogReportSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:

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
            QCOMPARE(shown.headings, "Start|Water"); // headings from the list, values from the saved report
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
            Choose(builder, "cboSaved", 0); // loads it again
            QCOMPARE(Preview(program, builder).headings, "Water|Start");
        });
    }

    void savedReport_numberBeyondTheList_isReported()
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

    void gapInFieldNumbers_fieldBeyondTheEnd_isReported()
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

    void gapInFieldNumbers_showsTheFieldAtThePosition()
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

    void definition_notANumber_isReported_data()
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

    void definition_notANumber_isReported()
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

    void definition_ofAFieldThatIsNotShown_isIgnored()
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

    void preview_afterRemovingTheInvalidField_isShown()
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

    void invalidCustomisation_isReported()
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

TEST_CLASS(tst_LogReportSelection)
#include "tst_LogReportSelection.moc"
