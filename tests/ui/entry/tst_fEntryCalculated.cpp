#include "EntryTest.h"
#include "core/Conversions.h"
#include "support/TestClass.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QRegularExpression>

using namespace Tarno;

using namespace std::chrono_literals;

namespace
{

/// Returns `count` reference days with independently calculated values, by column name.
std::vector<QHash<QString, QString>> ReferenceRows(int count)
{
    // the tests of astro check all rows of this file
    QFile file(QDir::cleanPath(QStringLiteral(TARNO_TEST_DATA "/../../../astro/data/forecast.tsv")));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qFatal("cannot read %s", qPrintable(file.fileName()));
    }
    const auto cells = [&file] {
        return QString::fromUtf8(file.readLine()).remove(QLatin1Char('\n')).split(QLatin1Char('\t'));
    };
    const QStringList names = cells();
    std::vector<QHash<QString, QString>> rows;
    while (!file.atEnd() && static_cast<int>(rows.size()) < count) {
        const QStringList values = cells();
        rows.emplace_back();
        for (int column = 0; column < names.size(); ++column) {
            rows.back()[names[column]] = values.value(column);
        }
    }
    return rows;
}

using ReferenceRow = QHash<QString, QString>;

constexpr std::array calculatedBoxes{
    std::pair("txtSunRise", EntryField::SunRise),   std::pair("txtSunSet", EntryField::SunSet),
    std::pair("txtMoonRise", EntryField::MoonRise), std::pair("txtMoonSet", EntryField::MoonSet),
    std::pair("txtMajor1", EntryField::Major1),     std::pair("txtMajor2", EntryField::Major2),
    std::pair("txtMinor1", EntryField::Minor1),     std::pair("txtMinor2", EntryField::Minor2)};

std::string Cell(const ReferenceRow& row, const char* column)
{
    return ToUtf8(row.value(QLatin1String(column), QStringLiteral("(unknown column)")));
}

void AddPlaceOf(TestProgram& program, const ReferenceRow& row)
{
    program.AddLocation("Place of the row", {{LocationField::LocLatt, Cell(row, "lat")},
                                             {LocationField::LocLong, Cell(row, "lon")},
                                             {LocationField::LocGMT, Cell(row, "gmt")},
                                             {LocationField::LocDST, Cell(row, "dst")}});
}

void CompareShown(const QDialog& editor, const ReferenceRow& row)
{
    for (const auto& [box, position] : calculatedBoxes) {
        QCOMPARE(BoxText(editor, box), Cell(row, box));
    }
    QCOMPARE(BoxText(editor, "txtMoon"), Cell(row, "txtMoon"));
    QCOMPARE(IsChecked(editor, "chkMoon") ? "1" : "0", Cell(row, "chkMoon"));
    QCOMPARE(std::to_string(Chosen(editor, "optPrediction")), Cell(row, "optPrediction"));
}

void CompareStored(const std::vector<std::string>& entry, const ReferenceRow& row, const char* phase)
{
    for (const auto& [box, position] : calculatedBoxes) {
        QCOMPARE(entry.at(position), Cell(row, box));
    }
    QCOMPARE(entry.at(EntryField::MoonPhase), Cell(row, phase));
    QCOMPARE(entry.at(EntryField::Prediction), Cell(row, "optPrediction"));
}

void AddReferenceRows()
{
    QTest::addColumn<ReferenceRow>("row");
    for (const ReferenceRow& row : ReferenceRows(20)) {
        QTest::addRow("%s at %s, %s", Cell(row, "date").c_str(), Cell(row, "lat").c_str(),
                      Cell(row, "lon").c_str())
            << row;
    }
}

/// The texts of the calculated boxes.
std::vector<std::string> Shown(const QDialog& editor)
{
    std::vector<std::string> texts;
    texts.reserve(calculatedBoxes.size());
    for (const auto& [box, position] : calculatedBoxes) {
        texts.push_back(BoxText(editor, box));
    }
    return texts;
}

const std::vector<std::string> completeTexts{"06:11", "19:58", "10:21", "21:43",
                                             "04:01", "16:26", "10:13", "22:37"};

Values WithoutPeaks(const Values& others = {})
{
    Values entry{{EntryField::Major1, ""},
                 {EntryField::Major2, ""},
                 {EntryField::Minor1, ""},
                 {EntryField::Minor2, ""}};
    for (const auto& [position, text] : others) {
        entry[position] = text;
    }
    return entry;
}

/// Chooses the next location and leaves the list.
void ChooseNextLocation(QDialog& editor)
{
    Find<QWidget>(editor, "cboLocation").setFocus();
    Press(editor, Qt::Key_Down);
    Press(editor, Qt::Key_Tab);
}

} // namespace

class tst_fEntryCalculated : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void newEntry_showsTheForecast_data() { AddReferenceRows(); }

    void newEntry_showsTheForecast()
    {
        QFETCH(ReferenceRow, row);
        TestProgram program;
        program.Start();
        program.clock.today = ToDate(Cell(row, "date"));
        AddPlaceOf(program, row);
        Edit(program, 0, [&](QDialog& editor) {
            CompareShown(editor, row);
            Enter(editor, "txtAirTemp", "20");
            SaveAndClose(editor);
        });
        CompareStored(program.StoredEntry(1), row, "MoonPhaseNew");
    }

    void startDateChanged_showsAndStoresTheForecast_data() { AddReferenceRows(); }

    void startDateChanged_showsAndStoresTheForecast()
    {
        QFETCH(ReferenceRow, row);
        TestProgram program;
        program.Start();
        AddPlaceOf(program, row);
        const int key = program.AddEntry(CompleteEntry());
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtStart", Cell(row, "date").c_str());
            Press(editor, Qt::Key_Tab);
            CompareShown(editor, row);
            SaveAndClose(editor);
        });
        CompareStored(program.StoredEntry(key), row, "MoonPhaseStart");
    }

    void moon_showsPercentWaxingAndPrediction_data()
    {
        QTest::addColumn<int>("day");
        QTest::addColumn<QString>("percent");
        QTest::addColumn<bool>("waxing");
        QTest::addColumn<int>("prediction");
        QTest::newRow("18 January 2003") << 18 << "98" << false << 2;
        QTest::newRow("2 January 2003") << 2 << "6" << false << 1;
        QTest::newRow("5 January 2003") << 5 << "14" << true << 3;
        QTest::newRow("10 January 2003") << 10 << "48" << true << 0;
    }

    void moon_showsPercentWaxingAndPrediction()
    {
        QFETCH(int, day);
        QFETCH(QString, percent);
        QFETCH(bool, waxing);
        QFETCH(int, prediction);
        ProgramWithPlace program;
        program.clock.today = 2003y / 1 / day;
        Edit(program, 0, [&](QDialog& editor) {
            QCOMPARE(BoxText(editor, "txtMoon"), percent.toStdString());
            QCOMPARE(IsChecked(editor, "chkMoon"), waxing);
            QCOMPARE(Chosen(editor, "optPrediction"), prediction);
            Close(editor);
        });
    }

    void existingEntry_completeValues_areNotRecalculated()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [](QDialog& editor) {
            QCOMPARE(Shown(editor), completeTexts);
            QCOMPARE(BoxText(editor, "txtMoon"), "45");
            QCOMPARE(Chosen(editor, "optPrediction"), 2);
            Close(editor);
        });
    }

    void existingEntry_anyPeakEmpty_isRecalculatedWithoutAPendingChange_data()
    {
        QTest::addColumn<int>("position");
        QTest::newRow("all") << -1;
        QTest::newRow("major 1") << int(EntryField::Major1);
        QTest::newRow("major 2") << int(EntryField::Major2);
        QTest::newRow("minor 1") << int(EntryField::Minor1);
        QTest::newRow("minor 2") << int(EntryField::Minor2);
    }

    void existingEntry_anyPeakEmpty_isRecalculatedWithoutAPendingChange()
    {
        QFETCH(int, position);
        ProgramWithPlace program;
        program.clock.today = 2003y / 2 / 5;
        std::vector<std::string> forecast;
        Edit(program, 0, [&](QDialog& editor) {
            forecast = Shown(editor);
            Close(editor);
        });
        const int key =
            program.AddCompleteEntry(position < 0 ? WithoutPeaks() : Values{{std::size_t(position), ""}});
        const std::string before = program.folder.Read("tarno.xml");
        Edit(program, key, [&](QDialog& editor) {
            QCOMPARE(Shown(editor), forecast);
            QCOMPARE(BoxText(editor, "txtMoon"), "45"); // the phase is calculated separately
            Press(editor, Qt::Key_Tab);
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor);
        });
        QCOMPARE(program.folder.Read("tarno.xml"), before);
    }

    void existingEntry_recalculatedPeaks_areSavedWithTheNextChange()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry(WithoutPeaks());
        std::vector<std::string> forecast;
        Edit(program, key, [&](QDialog& editor) {
            forecast = Shown(editor);
            Enter(editor, "txtAirTemp", "1");
            SaveAndClose(editor);
        });
        std::size_t next = 0;
        for (const auto& [box, position] : calculatedBoxes) {
            QCOMPARE(program.StoredEntry(key, position), forecast.at(next++));
        }
        QVERIFY(!program.StoredEntry(key, EntryField::Major1).empty());
    }

    void existingEntry_phaseEmpty_isCalculatedWithoutAPendingChange()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::StartDate, "2003-01-18"},
                                                  {EntryField::MoonPhase, ""},
                                                  {EntryField::Prediction, "0"}});
        const std::string before = program.folder.Read("tarno.xml");
        Edit(program, key, [](QDialog& editor) {
            QCOMPARE(BoxText(editor, "txtMoon"), "98");
            QVERIFY(!IsChecked(editor, "chkMoon"));
            QCOMPARE(Chosen(editor, "optPrediction"), 2);
            QCOMPARE(Shown(editor), completeTexts);
            Press(editor, Qt::Key_Tab);
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor);
        });
        QCOMPARE(program.folder.Read("tarno.xml"), before);
    }

    void existingEntry_calculatedPhase_isSavedSigned()
    {
        ProgramWithPlace program;
        const int key =
            program.AddCompleteEntry({{EntryField::StartDate, "2003-01-18"}, {EntryField::MoonPhase, ""}});
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtAirTemp", "1");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::MoonPhase), "-98");
        QCOMPARE(program.StoredEntry(key, EntryField::Prediction), "2");
    }

    void existingEntry_peaksEmptyAndNoLocation_keepsItsValues()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(WithoutPeaks({{EntryField::LocNo, "7"}})),
             [](QDialog& editor) {
                 QCOMPARE(BoxText(editor, "txtSunRise"), "06:11");
                 QCOMPARE(BoxText(editor, "txtMajor1"), "");
                 Close(editor);
             });
    }

    void existingEntry_somePeaksEmptyAndNoLocation_showsNone_data()
    {
        QTest::addColumn<Values>("empty");
        QTest::newRow("first") << Values{{EntryField::Major1, ""}};
        QTest::newRow("last") << Values{{EntryField::Minor2, ""}};
        QTest::newRow("minor periods") << Values{{EntryField::Minor1, ""}, {EntryField::Minor2, ""}};
        QTest::newRow("all but one") << Values{
            {EntryField::Major1, ""}, {EntryField::Minor1, ""}, {EntryField::Minor2, ""}};
    }

    void existingEntry_somePeaksEmptyAndNoLocation_showsNone()
    {
        QFETCH(Values, empty);
        empty[EntryField::LocNo] = "7"; // does not exist
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry(empty);
        const std::vector<std::string> before = program.StoredEntry(key);
        Edit(program, key, [](QDialog& editor) {
            for (const char* box : {"txtMajor1", "txtMajor2", "txtMinor1", "txtMinor2"}) {
                QCOMPARE(BoxText(editor, box), "");
            }
            QCOMPARE(BoxText(editor, "txtSunRise"), "06:11");
            Enter(editor, "txtTideLowHt", "0.5");
            SaveAndClose(editor);
        });
        std::vector<std::string> after = program.StoredEntry(key);
        QCOMPARE(std::exchange(after.at(EntryField::LowTideHt), before.at(EntryField::LowTideHt)), "0.5");
        QCOMPARE(after, before);
    }

    void existingEntry_peaksEmptyAndNoDate_isReportedAndOpens()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry(WithoutPeaks({{EntryField::StartDate, "last summer"}}));
        program.reports.Expect("fEntry", "DoRiseSet", ErrorNumber::TypeMismatch);
        Edit(program, key, [](QDialog& editor) {
            QCOMPARE(BoxText(editor, "txtStart"), "last summer");
            QCOMPARE(BoxText(editor, "txtSunRise"), "06:11");
            Close(editor);
        });
    }

    void existingEntry_phaseEmptyAndNoDate_isReportedAndOpens()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::StartDate, ""}, {EntryField::MoonPhase, ""}});
        program.reports.Expect("fEntry", "DoMoonPhase", ErrorNumber::TypeMismatch);
        Edit(program, key, [](QDialog& editor) {
            QCOMPARE(BoxText(editor, "txtMoon"), "");
            Press(editor, Qt::Key_Tab); // an unchanged text is not checked
            Close(editor);
        });
    }

    void existingEntry_firstAndLastYear_areCalculated_data()
    {
        QTest::addColumn<QString>("date");
        QTest::newRow("first day") << "0001-01-01";
        QTest::newRow("last day") << "9999-12-31";
    }

    void existingEntry_firstAndLastYear_areCalculated()
    {
        QFETCH(QString, date);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry(WithoutPeaks({{EntryField::StartDate, date.toStdString()},
                                                               {EntryField::MoonPhase, ""},
                                                               {EntryField::SunRise, ""}}));
        Edit(program, key, [](QDialog& editor) {
            const QRegularExpression time(QStringLiteral("^[0-2][0-9]:[0-5][0-9]$"));
            QVERIFY(time.match(FromUtf8(BoxText(editor, "txtSunRise"))).hasMatch());
            QVERIFY(!BoxText(editor, "txtMajor1").empty());
            QVERIFY(!BoxText(editor, "txtMoon").empty());
            Close(editor);
        });
    }

    void locationChanged_isRecalculatedAndStored()
    {
        ProgramWithPlace program;
        program.AddLocation("North Cape", {{LocationField::LocLatt, "80"}});
        const int key = program.AddCompleteEntry({{EntryField::StartDate, "2003-06-21"},
                                                  {EntryField::MoonPhase, "3"},
                                                  {EntryField::Prediction, "0"}});
        std::string percent;
        Edit(program, key, [&](QDialog& editor) {
            ChooseNextLocation(editor);
            QCOMPARE(BoxText(editor, "txtSunRise"), "never");
            QCOMPARE(BoxText(editor, "txtSunSet"), "sets");
            percent = BoxText(editor, "txtMoon");
            QVERIFY(!IsChecked(editor, "chkMoon"));
            QVERIFY(IsSaveEnabled(editor));
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::SunRise), "never");
        QCOMPARE(program.StoredEntry(key, EntryField::SunSet), "sets");
        QCOMPARE(program.StoredEntry(key, EntryField::MoonPhase), "-" + percent);
        QVERIFY(percent != "3");
    }

    void timesOfAnotherPlace_areNoted()
    {
        ProgramWithPlace program;
        program.AddLocation("Unknown", {{LocationField::LocLatt, ""}});
        program.AddLocation("Old Pier");
        program.messages.ExpectInformation(dataMissingText, dataMissingTitle);
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            const auto notes = [&] {
                return QStringList{Find<QLabel>(editor, "lblOldSunMoon").text(),
                                   Find<QLabel>(editor, "lblOldPeakTimes").text(),
                                   Find<QWidget>(editor, "frSunMoon").accessibleDescription(),
                                   Find<QWidget>(editor, "frPeakTimes").accessibleDescription()};
            };
            const QString note = QStringLiteral("For another place or date");
            QCOMPARE(notes(), QStringList(4, QString()));
            ChooseNextLocation(editor);
            QCOMPARE(notes(), QStringList(4, note));
            QVERIFY(Find<QWidget>(editor, "lblOldSunMoon").isVisible());
            ChooseNextLocation(editor);
            QCOMPARE(notes(), QStringList(4, QString()));
            QVERIFY(!Find<QWidget>(editor, "lblOldSunMoon").isVisible());
            SaveAndClose(editor);
        });
    }

    void timesOfAPlaceThatIsGone_areNoted()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::LocNo, "77"}});
        Edit(program, key, [](QDialog& editor) {
            QVERIFY(Find<QWidget>(editor, "lblOldSunMoon").isVisible());
            QVERIFY(Find<QWidget>(editor, "lblOldPeakTimes").isVisible());
            Close(editor);
        });
    }

    void emptyTimes_haveNoNote()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Unknown", {{LocationField::LocLatt, ""}});
        program.messages.ExpectInformation(dataMissingText, dataMissingTitle);
        Edit(program, 0, [](QDialog& editor) {
            QVERIFY(!Find<QWidget>(editor, "lblOldSunMoon").isVisible());
            Close(editor);
        });
    }

    void locationChanged_dataMissing_showsAMessageAndKeepsTheBoxes_data()
    {
        QTest::addColumn<int>("position");
        QTest::newRow("latitude") << int(LocationField::LocLatt);
        QTest::newRow("longitude") << int(LocationField::LocLong);
        QTest::newRow("hours from GMT") << int(LocationField::LocGMT);
    }

    void locationChanged_dataMissing_showsAMessageAndKeepsTheBoxes()
    {
        QFETCH(int, position);
        ProgramWithPlace program;
        program.AddLocation("Somewhere", {{static_cast<std::size_t>(position), ""}});
        const int key = program.AddCompleteEntry({{EntryField::StartDate, "2003-01-18"}});
        program.messages.ExpectInformation(dataMissingText, dataMissingTitle);
        Edit(program, key, [](QDialog& editor) {
            ChooseNextLocation(editor);
            QCOMPARE(Shown(editor), completeTexts);
            QCOMPARE(BoxText(editor, "txtMoon"), "98"); // the moon phase does not depend on the location
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LocNo), "2");
        QCOMPARE(program.StoredEntry(key, EntryField::SunRise), "06:11");
        QCOMPARE(program.StoredEntry(key, EntryField::MoonPhase), "-98");
    }

    void locationChanged_dataNotANumber_isReportedAndKeepsTheBoxes_data()
    {
        locationChanged_dataMissing_showsAMessageAndKeepsTheBoxes_data();
    }

    void locationChanged_dataNotANumber_isReportedAndKeepsTheBoxes()
    {
        QFETCH(int, position);
        ProgramWithPlace program;
        program.AddLocation("Somewhere", {{static_cast<std::size_t>(position), "33 S"}});
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            program.reports.Expect("fEntry", "DoRiseSet", ErrorNumber::TypeMismatch);
            ChooseNextLocation(editor);
            QCOMPARE(Shown(editor), completeTexts);
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LocNo), "2");
    }

    void locationChanged_numberBeyond16Bits_isReported()
    {
        ProgramWithPlace program;
        program.AddLocation("Far away");
        std::string bytes = program.folder.Read("location.xml");
        bytes.replace(bytes.find("<LocNo>2<"), 9, "<LocNo>40000<");
        program.folder.Write("location.xml", bytes);
        program.Start();
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            program.reports.Expect("fEntry", "DoRiseSet", ErrorNumber::Overflow);
            ChooseNextLocation(editor);
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LocNo), "40000");
    }

    void startDateChanged_replacesWhatTheUserOverwrote()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtSunRise", "0101");
            GoTo(editor, "optPrediction_0");
            Enter(editor, "txtStart", "2003-01-05");
            Press(editor, Qt::Key_Tab);
            QVERIFY(BoxText(editor, "txtSunRise") != "01:01");
            QCOMPARE(Chosen(editor, "optPrediction"), 3);
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Prediction), "3");
        QCOMPARE(program.StoredEntry(key, EntryField::MoonPhase), "14");
    }

    void endDateChanged_doesNotRecalculate()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtEnd", "2003-03-01");
            Press(editor, Qt::Key_Tab);
            QCOMPARE(Shown(editor), completeTexts);
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::MoonPhase), "-45");
    }

    void overwrittenValues_areStored()
    {
        ProgramWithPlace program;
        Edit(program, 0, [](QDialog& editor) {
            Enter(editor, "txtMoonSet", "0101");
            Enter(editor, "txtMinor2", "at dusk");
            GoTo(editor, "optPrediction_1");
            Enter(editor, "txtMoon", "33");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(1, EntryField::MoonSet), "01:01");
        QCOMPARE(program.StoredEntry(1, EntryField::Minor2), "at dusk");
        QCOMPARE(program.StoredEntry(1, EntryField::Prediction), "1");
        QVERIFY(program.StoredEntry(1, EntryField::MoonPhase).ends_with("33"));
    }

    void moonThatDoesNotSet_showsNone()
    {
        ProgramWithPlace program;
        bool seen = false;
        // the moon sets 50 minutes later every day, so on one day of each month it does not set
        for (int day = 1; day <= 30 && !seen; ++day) {
            program.clock.today = 2003y / 6 / day;
            Edit(program, 0, [&](QDialog& editor) {
                seen = BoxText(editor, "txtMoonSet") == ":";
                if (seen) {
                    Enter(editor, "txtAirTemp", "1");
                    Save(editor);
                }
                Close(editor);
            });
        }
        QVERIFY(seen);
        QCOMPARE(program.StoredEntry(1, EntryField::MoonSet), ":");
    }
};

TEST_CLASS(tst_fEntryCalculated)
#include "tst_fEntryCalculated.moc"
