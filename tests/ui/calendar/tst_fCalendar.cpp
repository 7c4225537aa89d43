// The calendar: its places, days and buttons.

#include "CalendarTest.h"
#include "support/TestClass.h"

#include <QPushButton>

using namespace Tarno;

using std::chrono::year_month_day;

namespace
{

const std::string noTimes = "The times of sun and moon need a location with coordinates and a time zone.";

bool IsEnabled(const QWidget& window, const char* button)
{
    return Find<QPushButton>(window, button).isEnabled();
}

} // namespace

class tst_fCalendar : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void opening_showsTodayAtThePlaceOfTheLastTrip()
    {
        ProgramWithPlaces program;
        program.AddTrip("2026-11-20", "1");
        program.AddTrip("2026-11-10", "2"); // the last in the log
        const ShownCalendar window(program);
        QCOMPARE(ToUtf8(Places(window).currentText()), "Lake Eucumbene");
        QCOMPARE(ShownDate(window), "2026-11-22");
        QCOMPARE(LabelText(window, "lblMonth"), "November 2026");
        QCOMPARE(window.focusWidget(), &Grid(window));
        QVERIFY(Grid(window).Selected().isToday);
    }

    void opening_withoutTrips_showsTheFirstPlace()
    {
        ProgramWithPlaces program;
        const ShownCalendar window(program);
        QCOMPARE(ToUtf8(Places(window).currentText()), "Pittwater");
    }

    void opening_lastTripAtADeletedPlace_showsTheFirstPlace()
    {
        ProgramWithPlaces program;
        program.AddTrip("2026-11-10", "9");
        const ShownCalendar window(program);
        QCOMPARE(ToUtf8(Places(window).currentText()), "Pittwater");
    }

    void opening_showsThePlaceThatWasChosenLast()
    {
        ProgramWithPlaces program;
        program.AddTrip("2026-11-10", "2");
        {
            const ShownCalendar window(program);
            Places(window).setCurrentIndex(0);
        }
        const ShownCalendar window(program);
        QCOMPARE(ToUtf8(Places(window).currentText()), "Pittwater");
    }

    /// Only a choice of the user counts.
    void opening_again_followsTheLastTrip()
    {
        ProgramWithPlaces program;
        program.AddTrip("2026-11-10", "2");
        {
            const ShownCalendar window(program);
        }
        program.AddTrip("2026-11-12", "1");
        const ShownCalendar window(program);
        QCOMPARE(ToUtf8(Places(window).currentText()), "Pittwater");
    }

    void day_hasItsForecast()
    {
        ProgramWithPlaces program;
        const ShownCalendar window(program);
        for (const year_month_day date : {Date(2026, 11, 22), Date(2027, 2, 10), Date(2026, 7, 31)}) {
            while (Grid(window).Date() != date) {
                Q_EMIT Grid(window).DateWanted(date);
            }
            const RiseSetForecast times = ForecastRiseSet(pittwater, date);
            QCOMPARE(DayText(window).substr(0, DayText(window).find("Major")),
                     "\nDay\n" + LongDate(date) + "\nRating\n" + ReasonOfRating(date) + "\nMoon\n" +
                         std::to_string(ForecastMoon(date).percent) + " % lit, " +
                         (ForecastMoon(date).waxing ? "waxing" : "waning") + "\nSun\nrises " + times.sunRise +
                         ", sets " + times.sunSet + "\nMoon up\nrises " + times.moonRise + ", sets " +
                         times.moonSet + "\n");
        }
        Press(window, Qt::Key_Home);
        QVERIFY2(DayText(window).ends_with("\nMajor times\n09:50, 22:16\nMinor times\n03:37, 16:03\n"),
                 DayText(window).c_str());
        QVERIFY(DayText(window).find("Fair: the moon is waxing and 74.59 to 88.14 % lit") !=
                std::string::npos);
    }

    /// Days without one of the times show the others and say what is missing.
    void day_withoutAllTimes_saysWhy()
    {
        ProgramWithPlaces program;
        const ShownCalendar window(program);
        int missing = 0;
        for (unsigned day = 1; day <= 31; ++day) {
            const year_month_day date = Date(2026, 12, day);
            Q_EMIT Grid(window).DateWanted(date);
            const RiseSetForecast times = ForecastRiseSet(pittwater, date);
            const std::string text = DayText(window);
            for (const auto& [name, time] :
                 {std::pair("rise", &times.moonRise), std::pair("set", &times.moonSet)}) {
                const std::string warning = std::string("The moon does not ") + name + " on this day.";
                QCOMPARE(text.find(warning) != std::string::npos, !MinutesOf(*time));
                QVERIFY(!MinutesOf(*time) || text.find(std::string(name) + "s " + *time) != text.npos);
                missing += MinutesOf(*time) ? 0 : 1;
            }
            QVERIFY2(text.find("s :") == std::string::npos, text.c_str());
            QVERIFY2(text.find("s \n") == std::string::npos, text.c_str());
        }
        QVERIFY(missing > 1);
    }

    void day_inTheFarNorth_saysThatTheSunDoesNotSet()
    {
        ProgramWithPlaces program;
        program.AddLocation("Tromso", {{LocationField::LocLatt, "69.65"},
                                       {LocationField::LocLong, "18.96"},
                                       {LocationField::LocGMT, "1"},
                                       {LocationField::LocDST, "1"}});
        const ShownCalendar window(program);
        Places(window).setCurrentIndex(3);
        Q_EMIT Grid(window).DateWanted(Date(2026, 6, 21));
        const std::string text = DayText(window);
        QVERIFY2(text.find("\nSun\nnever sets\n") != std::string::npos, text.c_str());
        QVERIFY2(text.find("The sun does not set.") != std::string::npos, text.c_str());
    }

    void place_changesTheTimesAndKeepsTheDay()
    {
        ProgramWithPlaces program;
        const ShownCalendar window(program);
        Press(window, Qt::Key_PageDown);
        const std::string before = DayText(window);
        Places(window).setCurrentIndex(1);
        QCOMPARE(ShownDate(window), "2026-12-22");
        QVERIFY(DayText(window) != before);
    }

    void placeWithoutCoordinates_hasMoonAndRatingOnly()
    {
        ProgramWithPlaces program;
        const ShownCalendar window(program);
        Places(window).setCurrentIndex(2);
        const std::string text = DayText(window);
        QVERIFY(text.find("85 % lit, waxing") != std::string::npos);
        QVERIFY(text.find(noTimes) != std::string::npos);
        QVERIFY(text.find("Major") == std::string::npos);
        QVERIFY(!IsEnabled(window, "cmdExport"));
        Places(window).setCurrentIndex(0);
        QVERIFY(IsEnabled(window, "cmdExport"));
    }

    /// Hand-edited coordinates cannot be exported either.
    void placeWithUnreadableCoordinates_hasMoonAndRatingOnly()
    {
        ProgramWithPlaces program;
        program.AddLocation("South", {{LocationField::LocLatt, "south"}});
        const ShownCalendar window(program);
        Places(window).setCurrentIndex(3);
        QVERIFY(DayText(window).find(noTimes) != std::string::npos);
        QVERIFY(!IsEnabled(window, "cmdExport"));
    }

    void noLocations_showsRatingsOnly()
    {
        TestProgram program;
        program.Start();
        const ShownCalendar window(program);
        QCOMPARE(Places(window).count(), 0);
        QVERIFY(DayText(window).find("Wednesday 5 February 2003") != std::string::npos);
        QVERIFY(!IsEnabled(window, "cmdNewTrip"));
        QVERIFY(!IsEnabled(window, "cmdExport"));
        QCOMPARE(Rows(window, "lvwTrips"), Texts());
        QCOMPARE(LabelText(window, "lblFew"), "");
    }

    void unreadableFile_isNotReportedAgain_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("places");
        QTest::newRow("log") << "tarno.xml" << 3;
        QTest::newRow("locations") << "location.xml" << 0;
    }

    void unreadableFile_isNotReportedAgain()
    {
        QFETCH(QString, file);
        QFETCH(int, places);
        ProgramWithPlaces program;
        program.AddTrip("2026-11-22", "2");
        program.windows.SetPlace(FromUtf8(program.programFolder.GetAppPath()), QStringLiteral("2"));
        program.folder.Write(file.toStdString(), "<data>");
        program.Start();
        {
            const ShownCalendar window(program);
            QCOMPARE(Places(window).count(), places);
            QVERIFY(!IsEnabled(window, "cmdNewTrip"));
            Press(window, Qt::Key_PageDown);
            QCOMPARE(ShownDate(window), "2026-12-22");
        }
        // the place is not forgotten
        QCOMPARE(ToUtf8(program.windows.Place(FromUtf8(program.programFolder.GetAppPath()))), "2");
    }

    void buttons_goToOtherMonths()
    {
        ProgramWithPlaces program;
        const ShownCalendar window(program);
        Click(window, "cmdPrevious");
        QCOMPARE(LabelText(window, "lblMonth"), "October 2026");
        Click(window, "cmdNext");
        Click(window, "cmdNext");
        Click(window, "cmdNext");
        QCOMPARE(LabelText(window, "lblMonth"), "January 2027");
        QCOMPARE(ShownDate(window), "2027-01-22");
        Click(window, "cmdToday");
        QCOMPARE(ShownDate(window), "2026-11-22");
    }

    void mnemonics_areUniqueOnEachPage()
    {
        ProgramWithPlaces program;
        const ShownCalendar window(program);
        for (const int page : {0, 1}) {
            auto& tabs = Find<QTabWidget>(window, "tabDay");
            tabs.setCurrentIndex(page);
            QStringList captions{tabs.tabText(0), tabs.tabText(1)};
            for (const auto* label : window.findChildren<QLabel*>()) {
                if (label->isVisible() && label->buddy() != nullptr) {
                    captions << label->text();
                }
            }
            for (const auto* button : window.findChildren<QPushButton*>()) {
                captions << button->text();
            }
            QMap<QString, QString> captionOf;
            for (const QString& caption : captions) {
                const QString key = QKeySequence::mnemonic(caption).toString();
                QVERIFY2(!captionOf.contains(key),
                         qPrintable(caption + QLatin1String(" / ") + captionOf.value(key)));
                if (!key.isEmpty()) {
                    captionOf.insert(key, caption);
                }
            }
            QCOMPARE(captionOf.size(), page == 0 ? 9 : 13);
        }
    }

    void closing_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("Esc") << true;
        QTest::newRow("Close") << false;
    }

    void closing()
    {
        QFETCH(bool, byKey);
        ProgramWithPlaces program;
        ShownCalendar window(program);
        byKey ? Press(window, Qt::Key_Escape) : Click(window, "cmdClose");
        QVERIFY(!window.isVisible());
    }

    void objectName_isThePageOfTheManual()
    {
        ProgramWithPlaces program;
        QCOMPARE(ShownCalendar(program).objectName(), QStringLiteral("fCalendar"));
    }

    void export_proposesTheDayAndThePlace()
    {
        ProgramWithPlaces program;
        ShownCalendar window(program);
        Press(window, Qt::Key_Right);
        WhileOpen(
            "dlgPeaks", [&] { Click(window, "cmdExport"); },
            [](QDialog& dialog) {
                QCOMPARE(LabelText(dialog, "lblPlaceName"), "Pittwater");
                QCOMPARE(ToUtf8(Find<QLineEdit>(dialog, "txtFrom").text()), "2026-11-23");
                Press(dialog, Qt::Key_Escape);
            });
    }

    void monthSheet_isPreviewed()
    {
        ProgramWithPlaces program;
        program.AddTrip("2026-11-03", "1");
        ShownCalendar window(program);
        WhileOpen(
            "fPreview", [&] { Click(window, "cmdMonthSheet"); },
            [](QDialog& preview) {
                QCOMPARE(ToUtf8(preview.windowTitle()), "Tarno Fishing Calendar");
                preview.reject();
            });
    }

    void everyMonth_canBeShown_data()
    {
        QTest::addColumn<QString>("date");
        QTest::newRow("first") << "0001-01-01";
        QTest::newRow("last") << "9999-12-31";
    }

    /// The empty cells around the first and the last month are harmless.
    void everyMonth_canBeShown()
    {
        QFETCH(QString, date);
        ProgramWithPlaces program;
        program.AddTrip(qPrintable(date), "1");
        ShownCalendar window(program);
        Q_EMIT Grid(window).DateWanted(ToDate(ToUtf8(date)));
        QCOMPARE(ShownDate(window), ToUtf8(date));
        QCOMPARE(Rows(window, "lvwTrips").size(), std::size_t{1});
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_PageUp, Qt::Key_PageDown}) {
            Press(window, key);
        }
        WhileOpen(
            "fPreview", [&] { Click(window, "cmdMonthSheet"); }, [](QDialog& preview) { preview.reject(); });
    }
};

TEST_CLASS(tst_fCalendar)
#include "tst_fCalendar.moc"
