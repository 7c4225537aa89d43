// The window that shows what the rows of a table become, and imports them.

#include "TransferTest.h"
#include "support/TestClass.h"
#include "ui/transfer/fImport.h"

#include <QApplication>
#include <QComboBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

using namespace Tarno;
using namespace std::string_literals;

namespace
{

/// The window on the screen, with the contents of a file.
class ShownImport : public fImport
{
public:
    ShownImport(const TestProgram& program, const std::string& contents)
        : fImport(program.program, ReadCsv(contents), QStringLiteral("/home/angler/trips.csv"), nullptr)
    {
        Plan();
        show();
        AwaitActive(*this);
    }
};

const std::string threeRows = "StartDate,EndDate,StartTime,EndTime,Location,FishCaught\n"
                              "2026-11-02,2026-11-02,06:00,08:30,Pittwater,Squid\n"
                              "2026-11-20,2026-11-20,05:15,09:00,pittwater,Kingfish\n"
                              "tomorrow,2026-11-20,05:15,09:00,Pittwater,Kingfish\n";

const std::string newPlace = "Date,Location\n2026-11-20,Palm Beach\n";

void ExpectImported(TestProgram& program, const char* trips)
{
    program.messages.ExpectInformation(QLatin1String(trips) +
                                           QStringLiteral(" imported. Edit > Undo takes the import back."),
                                       QStringLiteral("Tarno"));
}

} // namespace

class tst_fImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void opening_saysWhatWasRecognised()
    {
        ProgramWithTrips program;
        const ShownImport window(program, threeRows);
        QCOMPARE(LabelText(window, "lblFile"),
                 "trips.csv: 3 rows below the headings, separated by commas, in UTF-8"s);
        QCOMPARE(window.focusWidget(), &Find<QWidget>(window, "lvwTrips"));
    }

    void rows_areNewThereOrRefused()
    {
        ProgramWithTrips program;
        const ShownImport window(program, threeRows);
        const Texts rows = Rows(window, "lvwTrips");
        QCOMPARE(rows.size(), std::size_t{3});
        QVERIFY2(rows[0].starts_with("1 | Already there | 2026-11-02 | Pittwater | Trip number 1"),
                 rows[0].c_str());
        QVERIFY2(rows[1].starts_with("2 | New | 2026-11-20 | pittwater | "), rows[1].c_str());
        QVERIFY2(rows[2].starts_with("3 | Refused | "), rows[2].c_str());
        QVERIFY2(rows[2].find("tomorrow") != std::string::npos, rows[2].c_str());
        QCOMPARE(LabelText(window, "lblSummary"), "1 trip new, 1 already there, 1 refused"s);
        QCOMPARE(ToUtf8(Find<QPushButton>(window, "cmdImport").text()), "&Import 1 Trip"s);
        QVERIFY(!Find<QWidget>(window, "lblPlaces").isVisible());
    }

    void import_addsTheNewRowsAsOneStep()
    {
        ProgramWithTrips program;
        ShownImport window(program, threeRows);
        ExpectImported(program, "1 trip");
        Click(window, "cmdImport");
        QVERIFY(!window.isVisible());
        QCOMPARE(window.SavedKeys(), Texts{"4"});
        QCOMPARE(program.StoredEntry(4, EntryField::FishCaught), "Kingfish"s);
        QCOMPARE(program.StoredEntry(4, EntryField::LocNo), "1"s);
        QCOMPARE(program.sql.Undo().status, UndoStatus::Done);
        QCOMPARE(program.Stored("tarno.xml").size(), std::size_t{3});
    }

    void newPlace_withoutCoordinates_isAskedFor_data()
    {
        QTest::addColumn<bool>("isAgreed");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }

    void newPlace_withoutCoordinates_isAskedFor()
    {
        QFETCH(bool, isAgreed);
        ProgramWithTrips program;
        ShownImport window(program, newPlace);
        QCOMPARE(LabelText(window, "lblPlaces"), "New locations: Palm Beach"s);
        program.messages.Expect(
            {.text = QStringLiteral("The table has no coordinates for these locations:\r\n\r\nPalm "
                                    "Beach\r\n\r\nAdd them without coordinates? Sun and moon times need "
                                    "coordinates. You can enter them later."),
             .title = QStringLiteral("New Locations"),
             .icon = Icon::Question,
             .buttons = Buttons::YesNo,
             .byDefault = Button::Yes},
            isAgreed ? Button::Yes : Button::No);
        if (isAgreed) {
            ExpectImported(program, "1 trip");
        }
        Click(window, "cmdImport");
        QCOMPARE(window.isVisible(), !isAgreed);
        QCOMPARE(program.Stored("location.xml").size(), std::size_t(isAgreed ? 3 : 2));
        QCOMPARE(program.Stored("tarno.xml").size(), std::size_t(isAgreed ? 4 : 3));
    }

    void column_becomesWhatTheUserChooses()
    {
        ProgramWithTrips program;
        const ShownImport window(program, "Tag,Location\n2026-11-20,Pittwater\n");
        Find<QTabWidget>(window, "tabImport").setCurrentIndex(1);
        QCOMPARE(Rows(window, "lvwColumns"),
                 (Texts{"Tag | 2026-11-20 | (ignored) | ", "Location | Pittwater | Location | Pittwater"}));
        auto& box = Find<QComboBox>(window, "cboField");
        QCOMPARE(ToUtf8(box.currentText()), "(ignored)"s);
        box.setCurrentIndex(box.findText(QStringLiteral("Start date")));
        Q_EMIT box.activated(box.currentIndex());
        QCOMPARE(Rows(window, "lvwColumns")[0], "Tag | 2026-11-20 | Start date | 2026-11-20"s);
        QCOMPARE(LabelText(window, "lblSummary"), "1 trip new, 0 already there, 0 refused"s);
    }

    void field_isTakenFromOneColumnOnly()
    {
        ProgramWithTrips program;
        const ShownImport window(program, "StartDate,Tag\n2026-11-20,2026-11-21\n");
        Find<QTabWidget>(window, "tabImport").setCurrentIndex(1);
        Press(window, Qt::Key_Tab); // to the list
        Find<SortableList>(window, "lvwColumns").SelectKey(QStringLiteral("1"));
        auto& box = Find<QComboBox>(window, "cboField");
        box.setCurrentIndex(box.findText(QStringLiteral("Start date")));
        Q_EMIT box.activated(box.currentIndex());
        QCOMPARE(Rows(window, "lvwColumns"), (Texts{"StartDate | 2026-11-20 | (ignored) | ",
                                                    "Tag | 2026-11-21 | Start date | 2026-11-21"}));
    }

    void dates_areReadInTheOrderThatTheUserChooses()
    {
        ProgramWithTrips program;
        const ShownImport window(program, "StartDate,Location\n03/04/2026,Pittwater\n");
        auto& box = Find<QComboBox>(window, "cboDates");
        box.setCurrentIndex(box.findText(QStringLiteral("day, month, year")));
        QVERIFY(Rows(window, "lvwTrips")[0].starts_with("1 | New | 2026-04-03"));
        box.setCurrentIndex(box.findText(QStringLiteral("month, day, year")));
        QVERIFY(Rows(window, "lvwTrips")[0].starts_with("1 | New | 2026-03-04"));
    }

    void columns_showTheSelectedRow_andHowItIsRead()
    {
        ProgramWithTrips program;
        const ShownImport window(program,
                                 "StartDate,StartTime,Bait\n2026-11-20,06:00,007\n2026-11-21,0.25,7\n");
        QCOMPARE(Rows(window, "lvwColumns")[1], "StartTime | 06:00 | Start time | 06:00"s);
        Find<SortableList>(window, "lvwTrips").SelectKey(QStringLiteral("1"));
        QCOMPARE(LabelText(window, "lblRow"),
                 "The values are those of row 2, which is selected on the page Trips."s);
        QCOMPARE(Rows(window, "lvwColumns")[0], "StartDate | 2026-11-21 | Start date | 2026-11-21"s);
        QCOMPARE(Rows(window, "lvwColumns")[1],
                 "StartTime | 0.25 | Start time | The start time \"0.25\" is not a time."s);
    }

    void missingFields_areNamed_data()
    {
        QTest::addColumn<QString>("headings");
        QTest::addColumn<QString>("missing");
        QTest::newRow("both") << "Bait"
                              << "the start date";
        QTest::newRow("date") << "Location"
                              << "the start date";
        QTest::newRow("location") << "StartDate"
                                  << "the location";
        QTest::newRow("none") << "StartDate,Location"
                              << "";
    }

    void missingFields_areNamed()
    {
        QFETCH(QString, headings);
        QFETCH(QString, missing);
        ProgramWithTrips program;
        const ShownImport window(program, ToUtf8(headings) + "\n");
        QCOMPARE(Find<QWidget>(window, "lblMissing").isVisible(), !missing.isEmpty());
        if (!missing.isEmpty()) {
            QCOMPARE(LabelText(window, "lblMissing"),
                     "No column becomes " + ToUtf8(missing) + ". Choose it on the page Columns.");
        }
    }

    void tooManyTrips_areRefusedTogether()
    {
        ProgramWithTrips program;
        std::string table = "StartDate,Location\n";
        for (int row = 0; row < 32765; ++row) { // the log has three trips
            table += "2026-11-20,Lake Eucumbene\n";
        }
        const ShownImport window(program, table);
        QCOMPARE(LabelText(window, "lblMissing"),
                 "Your log has too few numbers left for so many trips or locations. "
                 "The highest number is 32767."s);
        QVERIFY(Find<QWidget>(window, "lblMissing").isVisible());
        QVERIFY(!Find<QPushButton>(window, "cmdImport").isEnabled());
    }

    void longTable_showsProgress_andCanBeCancelled()
    {
        ProgramWithTrips program;
        std::string table = "StartDate,Location\n";
        for (int row = 0; row < 10000; ++row) {
            table += "2026-11-20,Pittwater\n";
        }
        fImport window(program.program, ReadCsv(table), QStringLiteral("/home/angler/trips.csv"), nullptr);
        QVERIFY(window.Plan());
        QCOMPARE(LabelText(window, "lblSummary"), "10000 trips new, 0 already there, 0 refused"s);
        program.clock.step = std::chrono::milliseconds(10);
        int shown = 0;
        QTimer::singleShot(0, &window, [&shown] {
            auto* const dialog = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog != nullptr);
            QCOMPARE(dialog->maximum(), 10001);
            shown = dialog->value();
            dialog->cancel();
        });
        QVERIFY(!window.Plan());
        QVERIFY(shown > 0 && shown < 10000);
    }

    void emptyFile_canOnlyBeClosed()
    {
        ProgramWithTrips program;
        ShownImport window(program, "");
        QCOMPARE(Rows(window, "lvwTrips"), Texts());
        QVERIFY(!Find<QPushButton>(window, "cmdImport").isEnabled());
        QCOMPARE(ToUtf8(Find<QWidget>(window, "lvwTrips").accessibleDescription()),
                 "The file has no rows below the headings."s);
        Click(window, "cmdClose");
        QVERIFY(!window.isVisible());
    }
};

TEST_CLASS(tst_fImport)
#include "tst_fImport.moc"
