// The trips in the calendar: those of a day, new ones, and those on similar days.

#include "CalendarTest.h"
#include "support/TestClass.h"

using namespace Tarno;

namespace
{

const Question saveQuestion{.text = QStringLiteral("You have changed data in this screen.\r\n"
                                                   "Do you want to save the changes?"),
                            .title = QStringLiteral("Save Changes"),
                            .icon = Icon::Question,
                            .buttons = Buttons::YesNo,
                            .byDefault = Button::Yes};

std::string BoxText(const QWidget& window, const char* name)
{
    return ToUtf8(Find<QLineEdit>(window, name).text());
}

/// Replaces the first date of the trip in the editor and saves it.
void SaveOn(QDialog& editor, const char* date)
{
    Find<QWidget>(editor, "txtStart").setFocus();
    Press(editor, Qt::Key_A, Qt::ControlModifier);
    Press(editor, Qt::Key_Delete);
    Type(editor, date);
    Click(editor, "cmdOK");
    Click(editor, "cmdCancel");
}

/// Changes the tide's height and saves.
void SaveChanged(QDialog& editor)
{
    Find<QWidget>(editor, "txtTideLowHt").setFocus();
    Type(editor, "1");
    Click(editor, "cmdOK");
    Click(editor, "cmdCancel");
}

/// A log with trips on two days around today.
class ProgramWithTrips : public ProgramWithPlaces
{
public:
    ProgramWithTrips()
    {
        AddTrip("2026-11-20", "1", {{EntryField::EndDate, "2026-11-22"}});
        AddTrip("2026-11-22", "2", {{EntryField::FishCaught, "2 bream~CL~1 tailor"}});
        AddTrip("2026-11-10", "1", {{EntryField::FishAction, "3"}});
    }
};

} // namespace

class tst_CalendarTrips : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void day_listsItsTrips()
    {
        ProgramWithTrips program;
        const ShownCalendar window(program);
        QCOMPARE(Rows(window, "lvwTrips"),
                 (Texts{"2026-11-20 | Pittwater | Good", "2026-11-22 | Lake Eucumbene | Good"}));
        Press(window, Qt::Key_Left);
        QCOMPARE(Rows(window, "lvwTrips"), Texts{"2026-11-20 | Pittwater | Good"});
        Press(window, Qt::Key_Up);
        QCOMPARE(Rows(window, "lvwTrips"), Texts());
        QCOMPARE(Grid(window).Month().CellAt(Grid(window).Month().IndexOf(Date(2026, 11, 22)))->trips, 2);
    }

    void enterOnADayWithOneTrip_opensIt_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("Enter") << true;
        QTest::newRow("double click") << false;
    }

    void enterOnADayWithOneTrip_opensIt()
    {
        QFETCH(bool, byKey);
        ProgramWithTrips program;
        ShownCalendar window(program);
        Q_EMIT Grid(window).DateWanted(Date(2026, 11, 10));
        ShowSimilar(window);
        Grid(window).setFocus();
        WhileOpen(
            "fEntry",
            [&] {
                if (byKey) {
                    Press(window, Qt::Key_Return);
                } else {
                    QTest::mouseDClick(Grid(window).viewport(), Qt::LeftButton, {},
                                       Grid(window).visualRect(Grid(window).currentIndex()).center());
                }
            },
            [](QDialog& editor) {
                QCOMPARE(BoxText(editor, "txtStart"), "2026-11-10");
                Click(editor, "cmdCancel");
            });
        QVERIFY(window.SavedKeys().empty());
        QVERIFY(window.isVisible());
        QCOMPARE(Find<QTabWidget>(window, "tabDay").currentIndex(), 0);
    }

    void enterOnADayWithSeveralTrips_goesToTheirList()
    {
        ProgramWithTrips program;
        ShownCalendar window(program);
        WithoutWindow([&] { Press(window, Qt::Key_Return); });
        QCOMPARE(window.focusWidget(), &Find<QWidget>(window, "lvwTrips"));
    }

    void enterOnADayWithoutTrips_doesNothing()
    {
        ProgramWithTrips program;
        ShownCalendar window(program);
        Press(window, Qt::Key_Right);
        WithoutWindow([&] { Press(window, Qt::Key_Return); });
        QVERIFY(window.isVisible());
        QCOMPARE(window.focusWidget(), &Grid(window));
    }

    void rowOfTheDay_opensItsTrip_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("Enter") << true;
        QTest::newRow("double click") << false;
    }

    void rowOfTheDay_opensItsTrip()
    {
        QFETCH(bool, byKey);
        ProgramWithTrips program;
        ShownCalendar window(program);
        auto& list = Find<SortableList>(window, "lvwTrips");
        list.setFocus();
        QVERIFY(list.SelectKey(QStringLiteral("K2")));
        WhileOpen(
            "fEntry", [&] { byKey ? Press(window, Qt::Key_Return) : DoubleClickRow(window, "lvwTrips", 1); },
            [](QDialog& editor) {
                QCOMPARE(BoxText(editor, "txtStart"), "2026-11-22");
                Click(editor, "cmdCancel");
            });
    }

    void editedTrip_isReloaded()
    {
        ProgramWithTrips program;
        ShownCalendar window(program);
        Q_EMIT Grid(window).DateWanted(Date(2026, 11, 10));
        WhileOpen(
            "fEntry", [&] { Press(window, Qt::Key_Return); },
            [](QDialog& editor) { SaveOn(editor, "2026-11-09"); });
        QCOMPARE(window.SavedKeys(), Texts{"3"});
        QCOMPARE(program.StoredEntry(3, EntryField::StartDate), "2026-11-09");
        QCOMPARE(ShownDate(window), "2026-11-10");
        Press(window, Qt::Key_Left);
        QCOMPARE(Rows(window, "lvwTrips"), Texts{"2026-11-09 | Pittwater | Hot!"});
        QCOMPARE(Grid(window).Selected().trips, 1);
    }

    void tripWithAKeyBeyond16Bits_isReported()
    {
        ProgramWithTrips program;
        std::string bytes = program.folder.Read("tarno.xml");
        bytes.replace(bytes.find("<TarnoNo>3<"), 11, "<TarnoNo>32768<");
        program.folder.Write("tarno.xml", bytes);
        program.Start();
        ShownCalendar window(program);
        Q_EMIT Grid(window).DateWanted(Date(2026, 11, 10));
        program.reports.Expect("fCalendar", "ActivateDay", ErrorNumber::Overflow);
        WithoutWindow([&] { Press(window, Qt::Key_Return); });
        program.reports.Expect("fCalendar", "lvwTrips_DblClick", ErrorNumber::Overflow);
        WithoutWindow([&] { DoubleClickRow(window, "lvwTrips", 0); });
        QVERIFY(window.SavedKeys().empty());
    }

    void newTrip_hasTheDayAndThePlace()
    {
        ProgramWithTrips program;
        ShownCalendar window(program);
        Places(window).setCurrentIndex(1);
        Press(window, Qt::Key_Right);
        program.messages.Expect(saveQuestion, Button::Yes); // it counts as changed
        WhileOpen(
            "fEntry", [&] { Click(window, "cmdNewTrip"); },
            [](QDialog& editor) {
                QCOMPARE(BoxText(editor, "txtStart"), "2026-11-23");
                QCOMPARE(BoxText(editor, "txtEnd"), "2026-11-23");
                Click(editor, "cmdCancel");
            });
        QCOMPARE(window.SavedKeys(), Texts{"4"});
        QCOMPARE(program.StoredEntry(4, EntryField::LocNo), "2");
        QCOMPARE(program.StoredEntry(4, EntryField::StartDate), "2026-11-23");
        QCOMPARE(program.StoredEntry(4, EntryField::EndDate), "2026-11-23");
        QCOMPARE(Rows(window, "lvwTrips").size(), std::size_t{1});
        QCOMPARE(Grid(window).Selected().tripsHere, 1);
        QCOMPARE(ToUtf8(Places(window).currentText()), "Lake Eucumbene");
    }

    void newTrip_notSaved_changesNothing()
    {
        ProgramWithTrips program;
        const std::string before = program.folder.Read("tarno.xml");
        ShownCalendar window(program);
        program.messages.Expect(saveQuestion, Button::No);
        WhileOpen(
            "fEntry", [&] { Click(window, "cmdNewTrip"); },
            [](QDialog& editor) { Click(editor, "cmdCancel"); });
        QVERIFY(window.SavedKeys().empty());
        QCOMPARE(program.folder.Read("tarno.xml"), before);
    }

    void similar_hasTheBestTenTrips()
    {
        ProgramWithPlaces program;
        for (int trip = 0; trip < 12; ++trip) {
            program.AddTrip(qPrintable(QStringLiteral("2025-11-%1").arg(22 + trip % 3)),
                            trip == 11 ? "2" : "1", {{EntryField::FishCaught, "2 bream~CL~1 tailor"}});
        }
        const ShownCalendar window(program);
        Places(window).setCurrentIndex(0);
        const Texts rows = Rows(window, "lvwSimilar");
        QCOMPARE(rows.size(), std::size_t{10});
        QCOMPARE(rows.front(),
                 "2025-11-22 | Pittwater | Good | 2 bream (+1) | same place, same day of the year");
        QCOMPARE(LabelText(window, "lblFew"), "");
    }

    void similar_equalsTheRanking()
    {
        ProgramWithTrips program;
        program.AddTrip("2026-06-22", "3", {{EntryField::Prediction, "1"}, {EntryField::MoonPhase, "85"}});
        const ShownCalendar window(program);
        RecordList log;
        program.sql.EntryList(log);
        std::vector<Conditions> trips;
        for (const RecordView& trip : log) {
            trips.push_back(ConditionsOf(trip));
        }
        RecordList places;
        program.sql.LocationList(places);
        auto ranked =
            RankSimilar({.date = Date(2026, 11, 22), .moonAge = MoonAge(85, true), .rating = 1, .place = "3"},
                        trips, PositionsOf(places), 10);
        std::erase_if(ranked, [&](const SimilarTrip& trip) { // listed as a trip of the day
            return trips[trip.index].date == Date(2026, 11, 22);
        });
        const Texts rows = Rows(window, "lvwSimilar");
        QCOMPARE(rows.size(), ranked.size());
        for (std::size_t row = 0; row < rows.size(); ++row) {
            QVERIFY2(rows[row].starts_with(log[ranked[row].index].Text(EntryField::StartDate)),
                     rows[row].c_str());
        }
        QVERIFY2(rows.front().ends_with("same place, moon waxing 85 %, rated Fair"), rows.front().c_str());
        QCOMPARE(LabelText(window, "lblFew"), "Your log has only 4 trips.");
    }

    void similar_followsTheConditions()
    {
        ProgramWithPlaces program;
        program.AddTrip("2025-11-22", "1", {{EntryField::WindDir, "0"}, {EntryField::Weather, "0"}});
        program.AddTrip("2025-11-22", "1", {{EntryField::WindDir, "4"}, {EntryField::Weather, "0"}});
        const ShownCalendar window(program);
        auto& wind = Find<QComboBox>(window, "cboWindDir");
        QCOMPARE(ToUtf8(wind.itemText(0)), "Any");
        const std::string fifth = ToUtf8(wind.itemText(5));
        const auto firstKey = [&] {
            return ToUtf8(Find<SortableList>(window, "lvwSimilar")
                              .model()
                              ->index(0, 0)
                              .data(TextTableModel::keyRole)
                              .toString());
        };
        QCOMPARE(firstKey(), "K1");
        wind.setCurrentIndex(5); // the fifth word has the code 4
        QCOMPARE(firstKey(), "K2");
        QVERIFY(Rows(window, "lvwSimilar").front().ends_with(", " + fifth));
        wind.setCurrentIndex(0);
        QCOMPARE(firstKey(), "K1");
        for (const char* name : {"cboTide", "cboWindDir", "cboWindStr", "cboWeather", "cboClarity"}) {
            auto& box = Find<QComboBox>(window, name);
            for (int word = 0; word < box.count(); ++word) {
                box.setCurrentIndex(word);
                QCOMPARE(Rows(window, "lvwSimilar").size(), std::size_t{2});
            }
        }
    }

    void similar_countsFewTrips()
    {
        ProgramWithPlaces program;
        {
            const ShownCalendar window(program);
            QCOMPARE(LabelText(window, "lblFew"), "");
            QCOMPARE(Rows(window, "lvwSimilar"), Texts());
        }
        program.AddTrip("2025-11-22", "1");
        const ShownCalendar window(program);
        QCOMPARE(LabelText(window, "lblFew"), "Your log has only 1 trip.");
    }

    void similarRow_opensItsTrip()
    {
        ProgramWithTrips program;
        ShownCalendar window(program);
        ShowSimilar(window);
        const std::string date = Rows(window, "lvwSimilar").at(1).substr(0, 10);
        WhileOpen(
            "fEntry",
            [&] {
                QTest::mouseClick(
                    Find<SortableList>(window, "lvwSimilar").viewport(), Qt::LeftButton, {},
                    Find<SortableList>(window, "lvwSimilar")
                        .visualRect(Find<SortableList>(window, "lvwSimilar").model()->index(1, 0))
                        .center());
                DoubleClickRow(window, "lvwSimilar", 1);
            },
            [&](QDialog& editor) {
                QCOMPARE(BoxText(editor, "txtStart"), date);
                SaveChanged(editor);
            });
        QCOMPARE(window.SavedKeys().size(), std::size_t{1});
        QCOMPARE(Find<QTabWidget>(window, "tabDay").currentIndex(), 1);
    }
};

TEST_CLASS(tst_CalendarTrips)
#include "tst_CalendarTrips.moc"
