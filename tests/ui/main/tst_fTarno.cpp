#include "MainTest.h"
#include "qt/Icons.h"
#include "support/TestClass.h"

#include <QAbstractItemModelTester>
#include <QLabel>
#include <QPushButton>

using namespace Tarno;

// The main window: its controls, its list and sorting.

namespace
{

Values Trip(const std::string& date, const Values& others = {})
{
    Values entry{{EntryField::StartDate, date}, {EntryField::LocNo, "1"}};
    for (const auto& [position, text] : others) {
        entry[position] = text;
    }
    return entry;
}

/// A log of three trips that are not in the order of their ratings.
class RatedTrips : public TestProgram
{
public:
    RatedTrips()
    {
        Start();
        AddLocation("Pittwater");
        AddEntry(Trip("2003-02-05", {{EntryField::Prediction, "2"}, {EntryField::FishAction, "0"}}));
        AddEntry(Trip("2003-02-06", {{EntryField::Prediction, "0"}, {EntryField::FishAction, "1"}}));
        AddEntry(Trip("2003-02-07", {{EntryField::Prediction, "3"}, {EntryField::FishAction, "0"}}));
    }
};

QImage Picture(const QIcon& icon)
{
    return icon.pixmap(32).toImage();
}

/// Returns "ascending", "descending" or "" for the icon in the heading.
std::string SortIcon(const QWidget& window, int column)
{
    const QVariant icon = List(window).model()->headerData(column, Qt::Horizontal, Qt::DecorationRole);
    if (!icon.isValid() || icon.value<QIcon>().isNull()) {
        return "";
    }
    for (const char* order : {"ascending", "descending"}) {
        const std::string name = std::string("sort-") + order;
        if (Picture(icon.value<QIcon>()) == Picture(DrawnIcon(QLatin1String(name.c_str())))) {
            return order;
        }
    }
    return "another picture";
}

using Texts = std::vector<std::string>;

} // namespace

class tst_fTarno : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void toolbar_hasItsButtonsInOrder()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        Texts found;
        for (const QAction* action : Find<QToolBar>(window, "tlbTarno").actions()) {
            if (!action->isSeparator()) {
                found.push_back(ToUtf8(action->objectName() + QLatin1String(", ") + action->iconText() +
                                       QLatin1String(", ") + action->toolTip()));
            }
        }
        QCOMPARE(found, (Texts{"icoAdd, Add, Add Log Entry", "icoEdit, Edit, Edit Log Entry",
                               "icoDelete, Delete, Delete Log Entry", "Earth, Locations, Locations",
                               "icoReports, Reporting, Reporting", "icoTides, Tides, Tides",
                               "icoAbout, About, About Tarno"}));
    }

    void toolbar_everyButtonHasItsOwnPicture()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        std::vector<QImage> pictures;
        for (const QAction* action : Find<QToolBar>(window, "tlbTarno").actions()) {
            if (!action->isSeparator()) {
                const QImage picture = Picture(action->icon());
                QVERIFY(!picture.isNull());
                QVERIFY(std::find(pictures.begin(), pictures.end(), picture) == pictures.end());
                pictures.push_back(picture);
            }
        }
    }

    void popUp_hasItsItemsByIndex()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        const QList<QAction*> items = Find<QMenu>(window, "popPopup").actions();
        Texts found;
        for (int index = 0; index < items.size(); ++index) {
            found.push_back(items[index]->isSeparator() ? "-" : ToUtf8(items[index]->text()));
            if (!items[index]->isSeparator()) {
                QCOMPARE(items[index], &MenuItem(window, index));
            }
        }
        QCOMPARE(found, (Texts{"Add", "Edit", "Delete", "Locations", "Reports", "About...", "-", "Tides"}));
    }

    void label_explainsTheList()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        QCOMPARE(ToUtf8(Find<QLabel>(window, "Label1").text()),
                 "(right click list for options, click on a column header to sort the data)");
    }

    void exit_hasItsCaption()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        QCOMPARE(ToUtf8(Find<QPushButton>(window, "cmdExit").text().remove(QLatin1Char('&'))), "Exit");
    }

    void list_hasItsToolTip()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        QCOMPARE(ToUtf8(List(window).toolTip()), "Right-click in the list area for options");
    }

    void list_hasNineColumns()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        const QAbstractItemModel* model = List(window).model();
        Texts headings;
        for (int column = 0; column < model->columnCount(); ++column) {
            headings.push_back(ToUtf8(model->headerData(column, Qt::Horizontal).toString()));
        }
        QCOMPARE(headings, (Texts{"From", "To", "Location", "Start", "End", "Tide-Start", "Tide-End",
                                  "Rating", "Action"}));
    }

    void row_showsTheEntry()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        program.AddLocation("Lake Eucumbene");
        program.AddEntry({{EntryField::StartDate, "2003-02-05"},
                          {EntryField::EndDate, "2003-02-06"},
                          {EntryField::StartTime, "06:30"},
                          {EntryField::EndTime, "11:45"},
                          {EntryField::LocNo, "2"},
                          {EntryField::TideStart, "3"},
                          {EntryField::TideEnd, "0"},
                          {EntryField::Prediction, "2"},
                          {EntryField::FishAction, "3"}});
        ShownLog window(program);
        QCOMPARE(List(window).RowCount(), 1);
        QCOMPARE(RowText(window, 0),
                 "2003-02-05 | 2003-02-06 | Lake Eucumbene | 06:30 | 11:45 | Run In | Top | "
                 "2 - Good | 3 - Hot!");
    }

    void row_codesNotSet_showTheStoredText_data()
    {
        QTest::addColumn<QString>("code");
        QTest::newRow("empty") << "";
        QTest::newRow("unknown") << "9";
        QTest::newRow("leading zero") << "01";
        QTest::newRow("word") << "Good";
    }

    void row_codesNotSet_showTheStoredText()
    {
        QFETCH(QString, code);
        const std::string text = code.toStdString();
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        program.AddEntry({{EntryField::LocNo, "1"},
                          {EntryField::TideStart, text},
                          {EntryField::TideEnd, text},
                          {EntryField::Prediction, text},
                          {EntryField::FishAction, text}});
        ShownLog window(program);
        QCOMPARE(RowText(window, 0), " |  | Pittwater |  |  | Not Set | Not Set | " + text + " - Not Set | " +
                                         text + " - Not Set");
    }

    void row_locationNameOfSeveralLines_showsInOneLine()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Victor Harbor~CL~Granite Island");
        program.AddEntry(Trip("2003-02-05"));
        ShownLog window(program);
        QCOMPARE(ColumnTexts(window, Column::Location), Texts{"Victor Harbor Granite Island"});
    }

    void rows_haveTheEntryNumbersAsKeys()
    {
        RatedTrips program;
        program.sql.EntryDelete(2);
        ShownLog window(program);
        QCOMPARE(Keys(window), (Texts{"K1", "K3"}));
    }

    void rows_areInFileOrder()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        for (const char* date : {"2003-05-01", "2001-01-01", "2002-12-31"}) {
            program.AddEntry(Trip(date));
        }
        ShownLog window(program);
        QCOMPARE(ColumnTexts(window, Column::From), (Texts{"2003-05-01", "2001-01-01", "2002-12-31"}));
        for (int column = Column::From; column <= Column::Action; ++column) {
            QCOMPARE(SortIcon(window, column), "");
        }
    }

    void rows_doNotIncludeComments()
    {
        RatedTrips program;
        std::string bytes = program.folder.Read("tarno.xml");
        bytes.replace(bytes.find("<data>"), 6, "<data><!-- mine --><?note x?>");
        program.folder.Write("tarno.xml", bytes);
        program.Start();
        ShownLog window(program);
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3"}));
    }

    void deletedLocation_isReportedOncePerLocation()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        for (const char* location : {"7", "1", "7", "8", "7", "8", "1"}) {
            program.AddEntry(Trip("2003-02-05", {{EntryField::LocNo, location}}));
        }
        program.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
        ShownLog window(program);
        QCOMPARE(ColumnTexts(window, Column::Location),
                 (Texts{"1", "Pittwater", "1", "1", "1", "1", "Pittwater"}));
    }

    void recordWithFewerChildren_isListedWithTheRowsBehindIt()
    {
        RatedTrips program;
        std::string bytes = program.folder.Read("tarno.xml");
        const auto end = bytes.find("</data>");
        bytes.insert(end, "<tarno><TarnoNo>4</TarnoNo><StartDate>2003-03-01</StartDate></tarno>"
                          "<tarno><TarnoNo>5</TarnoNo><a/><b/><c/><d/><LocNo>1</LocNo></tarno>");
        program.folder.Write("tarno.xml", bytes);
        program.Start();
        ShownLog window(program);
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3", "K4", "K5"}));
        QCOMPARE(RowText(window, 3), "2003-03-01 |  |  |  |  | Not Set | Not Set |  - Not Set |  - Not Set");
        QVERIFY(List(window).isEnabled());
        QVERIFY(Command(window, "icoAdd").isEnabled());
    }

    void entries_tenThousand_areAllListed()
    {
        constexpr int count = 10000;
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        program.AddEntry(Trip("2003-02-05"));
        const std::string bytes = program.folder.Read("tarno.xml");
        const auto begin = bytes.find("\t<tarno>");
        const auto end = bytes.find("</data>");
        std::string record = bytes.substr(begin, end - begin);
        record.replace(record.find("<TarnoNo>1<"), 11, "<TarnoNo>%<");
        std::string many = bytes.substr(0, begin);
        for (int key = 1; key <= count; ++key) {
            many += record;
            many.replace(many.rfind('%'), 1, std::to_string(key));
        }
        program.folder.Write("tarno.xml", many + bytes.substr(end));
        program.Start();
        ShownLog window(program);
        QCOMPARE(List(window).RowCount(), count);
        const Texts keys = Keys(window);
        QCOMPARE(keys.front(), "K1");
        QCOMPARE(keys.back(), "K10000");
        ClickHeading(window, Column::Rating);
        ClickHeading(window, Column::Rating);
        QCOMPARE(Keys(window), keys); // all are equal
    }

    void sampleLog_isShown()
    {
        TestProgram program;
        program.UseSample();
        program.Start();
        ShownLog window(program);
        const QAbstractItemModelTester tester(List(window).model(),
                                              QAbstractItemModelTester::FailureReportingMode::QtTest);
        QVERIFY(List(window).RowCount() >= 60);
        QCOMPARE(RowText(window, 0),
                 "2024-10-05 | 2024-10-05 | Pittwater, Barrenjoey | 05:30 | 10:30 | Run In | "
                 "Run Out | 3 - Best | 2 - Good");
    }

    void firstRow_isSelected()
    {
        RatedTrips program;
        ShownLog window(program);
        QCOMPARE(Selected(window), "K1");
    }

    void damagedLog_isReportedAndNeverOverwritten_data()
    {
        QTest::addColumn<QString>("bytes");
        QTest::newRow("cut off") << "<data><tarno><TarnoNo>1</TarnoNo>";
        QTest::newRow("empty") << "";
        QTest::newRow("another document") << "<html/>";
        QTest::newRow("two roots") << "<data/><data/>";
    }

    void damagedLog_isReportedAndNeverOverwritten()
    {
        QFETCH(QString, bytes);
        RatedTrips program;
        program.folder.Write("tarno.xml", bytes.toStdString());
        program.Start();
        program.reports.Expect("cSQL", "EntryList", ErrorNumber::ObjectNotSet);
        ShownLog window(program);
        QCOMPARE(List(window).RowCount(), 0);
        QVERIFY(List(window).accessibleDescription().startsWith(
            QStringLiteral("Your log could not be read. Nothing is written over tarno.xml.")));
        WithoutWindow([&] {
            ClickCommand(window, "icoAdd");
            Press(window, Qt::Key_N, Qt::ControlModifier);
        });
        Click(*List(window).viewport(), Qt::RightButton);
        Find<QMenu>(window, "popPopup").close();
        QVERIFY(!Command(window, "icoAdd").isEnabled());
        QVERIFY(!MenuItem(window, 0).isEnabled());
        QVERIFY(!Command(window, "icoEdit").isEnabled());
        QCOMPARE(program.folder.Read("tarno.xml"), bytes.toStdString());
    }

    void damagedLocations_areReportedAndNeverOverwritten()
    {
        const std::string damaged = "<data><location><LocNo>1</LocNo>";
        RatedTrips program;
        program.folder.Write("location.xml", damaged);
        program.Start();
        program.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
        program.reports.Expect("cSQL", "LocationList", ErrorNumber::ObjectNotSet);
        ShownLog window(program);
        QCOMPARE(List(window).RowCount(), 3);
        QVERIFY(!Command(window, "icoAdd").isEnabled());
        QVERIFY(Command(window, "icoEdit").isEnabled());
        ClickRow(window, 1); // reports nothing

        program.reports.Expect("cSQL", "LocationList", ErrorNumber::ObjectNotSet); // the editor's list
        program.messages.ExpectInformation(
            QStringLiteral("You need to add some locations prior to adding log entries!"),
            QStringLiteral("No Locations Entered!"));
        program.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
        WithoutWindow([&] { window.Edit(); });
        QVERIFY(List(window).isEnabled());
        QCOMPARE(program.folder.Read("location.xml"), damaged);
    }

    void sort_firstClickAscendingSecondDescending()
    {
        RatedTrips program;
        ShownLog window(program);
        ClickHeading(window, Column::Rating);
        QCOMPARE(ColumnTexts(window, Column::Rating), (Texts{"0 - Poor", "2 - Good", "3 - Best"}));
        ClickHeading(window, Column::Rating);
        QCOMPARE(ColumnTexts(window, Column::Rating), (Texts{"3 - Best", "2 - Good", "0 - Poor"}));
        ClickHeading(window, Column::Rating);
        QCOMPARE(ColumnTexts(window, Column::Rating), (Texts{"0 - Poor", "2 - Good", "3 - Best"}));
    }

    void sort_everyColumn_ordersByItsText_data()
    {
        QTest::addColumn<int>("column");
        for (int column = Column::From; column <= Column::Action; ++column) {
            QTest::addRow("column %d", column) << column;
        }
    }

    void sort_everyColumn_ordersByItsText()
    {
        QFETCH(int, column);
        TestProgram program;
        program.UseSample();
        program.Start();
        ShownLog window(program);
        Texts expected = ColumnTexts(window, column);
        // sorting is locale-aware, but case folding is sufficient for these names
        std::stable_sort(expected.begin(), expected.end(),
                         [](const std::string& left, const std::string& right) {
                             return FromUtf8(left).toCaseFolded() < FromUtf8(right).toCaseFolded();
                         });
        QVERIFY(expected != ColumnTexts(window, column) || column == Column::From || column == Column::To);
        ClickHeading(window, column);
        QCOMPARE(ColumnTexts(window, column), expected);
        ClickHeading(window, column);
        std::reverse(expected.begin(), expected.end());
        QCOMPARE(ColumnTexts(window, column), expected);
    }

    void sort_anotherColumn_startsAscending()
    {
        RatedTrips program;
        ShownLog window(program);
        ClickHeading(window, Column::Rating);
        ClickHeading(window, Column::Rating);
        ClickHeading(window, Column::From);
        QCOMPARE(ColumnTexts(window, Column::From), (Texts{"2003-02-05", "2003-02-06", "2003-02-07"}));
        ClickHeading(window, Column::Rating);
        QCOMPARE(ColumnTexts(window, Column::Rating), (Texts{"0 - Poor", "2 - Good", "3 - Best"}));
    }

    void sort_updatesTheIcon()
    {
        RatedTrips program;
        ShownLog window(program);
        const auto icons = [&window] {
            Texts found;
            for (int column = Column::From; column <= Column::Action; ++column) {
                found.push_back(SortIcon(window, column));
            }
            return found;
        };
        ClickHeading(window, Column::Rating);
        QCOMPARE(icons(), (Texts{"", "", "", "", "", "", "", "ascending", ""}));
        ClickHeading(window, Column::Rating);
        QCOMPARE(icons(), (Texts{"", "", "", "", "", "", "", "descending", ""}));
        ClickHeading(window, Column::Location);
        QCOMPARE(icons(), (Texts{"", "", "ascending", "", "", "", "", "", ""}));
    }

    void sort_isCaseInsensitive()
    {
        TestProgram program;
        program.Start();
        int number = 0;
        for (const char* name : {"b", "C", "a", "B", "A", "c"}) {
            program.AddLocation(name);
            program.AddEntry(Trip("2003-02-05", {{EntryField::LocNo, std::to_string(++number)}}));
        }
        ShownLog window(program);
        ClickHeading(window, Column::Location);
        QCOMPARE(ColumnTexts(window, Column::Location), (Texts{"a", "A", "b", "B", "C", "c"}));
        ClickHeading(window, Column::Location);
        QCOMPARE(ColumnTexts(window, Column::Location), (Texts{"C", "c", "b", "B", "a", "A"}));
    }

    void sort_comparesTexts()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        for (const char* time : {"9:00", "10:00", ""}) {
            program.AddEntry(Trip("2003-02-05", {{EntryField::StartTime, time}}));
        }
        ShownLog window(program);
        ClickHeading(window, Column::Start);
        QCOMPARE(ColumnTexts(window, Column::Start), (Texts{"", "10:00", "9:00"}));
    }

    void sort_equalRows_keepFileOrder()
    {
        RatedTrips program;
        ShownLog window(program);
        ClickHeading(window, Column::Rating);
        ClickHeading(window, Column::Action); // the file order is 0, 1, 0
        QCOMPARE(Keys(window), (Texts{"K1", "K3", "K2"}));
        ClickHeading(window, Column::Action);
        QCOMPARE(Keys(window), (Texts{"K2", "K1", "K3"}));
    }

    void sort_keepsTheSelectionAndScrollsToIt()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        program.AddEntry(Trip("2003-02-05"));
        for (int more = 0; more < 200; ++more) {
            program.AddEntry(Trip("2003-02-06"));
        }
        ShownLog window(program);
        ClickRow(window, 0);
        QCOMPARE(Selected(window), "K1");
        ClickHeading(window, Column::From);
        ClickHeading(window, Column::From);
        QCOMPARE(Keys(window).back(), "K1");
        QCOMPARE(Selected(window), "K1");
        const auto& list = List(window);
        QVERIFY(list.viewport()->rect().contains(list.visualRect(list.currentIndex()).center()));
    }

    void sort_isKeptAfterAReload()
    {
        RatedTrips program;
        ShownLog window(program);
        ClickHeading(window, Column::Rating);
        ClickHeading(window, Column::Rating);
        ClickRow(window, 1);
        QCOMPARE(Selected(window), "K1");
        WhileOpen(
            "fEntry", [&] { window.Edit(); }, [](QDialog& editor) { Click(editor, "cmdCancel"); });
        QCOMPARE(Keys(window), (Texts{"K3", "K1", "K2"}));
        QCOMPARE(Selected(window), "K1");
        QCOMPARE(SortIcon(window, Column::Rating), "descending");
        ClickHeading(window, Column::Rating); // the next click reverses the order
        QCOMPARE(Keys(window), (Texts{"K2", "K1", "K3"}));
    }
};

TEST_CLASS(tst_fTarno)
#include "tst_fTarno.moc"
