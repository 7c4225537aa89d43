#include "MainTest.h"
#include "support/TestClass.h"

#include <QPushButton>
#include <QSignalSpy>

// What the main window's commands do: the toolbar, the pop-up menu, the mouse and keys in the list, Exit.

namespace
{

using Texts = std::vector<std::string>;

enum class Way { Toolbar, Menu, Key, DoubleClick, Enter };
enum class ExitWay { Button, Mnemonic, CloseBox, Escape };

/// A log with one location and two trips there.
class TwoTrips : public TestProgram
{
public:
    TwoTrips()
    {
        Start();
        AddLocation("Pittwater");
        for (const char* date : {"2003-02-05", "2003-02-06"}) {
            AddEntry({{EntryField::StartDate, date},
                      {EntryField::EndDate, date},
                      {EntryField::LocNo, "1"},
                      {EntryField::MoonPhase, "45"},
                      {EntryField::Major1, "04:01"},
                      {EntryField::Major2, "16:26"},
                      {EntryField::Minor1, "10:13"},
                      {EntryField::Minor2, "22:37"}});
        }
    }
};

void CloseWindow(QDialog& window)
{
    window.close();
}

/// Runs a command by its button, its menu item or its key.
void Run(QWidget& window, Way way, const char* button, int menuIndex, Qt::Key key,
         Qt::KeyboardModifiers modifiers = {})
{
    switch (way) {
    case Way::Toolbar:
        ClickCommand(window, button);
        break;
    case Way::Menu:
        MenuItem(window, menuIndex).trigger();
        break;
    case Way::Key:
        Press(window, key, modifiers);
        break;
    case Way::DoubleClick:
        QTest::mouseDClick(List(window).viewport(), Qt::LeftButton, {}, PointInRow(window, 1));
        break;
    case Way::Enter:
        Press(window, Qt::Key_Return);
        break;
    }
}

void AddWays(std::initializer_list<Way> ways)
{
    static const std::map<Way, const char*> names{{Way::Toolbar, "toolbar"},
                                                  {Way::Menu, "menu"},
                                                  {Way::Key, "key"},
                                                  {Way::DoubleClick, "double click"},
                                                  {Way::Enter, "Enter"}};
    QTest::addColumn<Way>("way");
    for (const Way way : ways) {
        QTest::newRow(names.at(way)) << way;
    }
}

void ExitBy(QWidget& window, ExitWay way)
{
    switch (way) {
    case ExitWay::Button:
        Click(window, "cmdExit");
        break;
    case ExitWay::Mnemonic:
        PressMnemonic(window, Qt::Key_X, "cmdExit");
        break;
    case ExitWay::CloseBox:
        window.close();
        break;
    case ExitWay::Escape:
        Press(window, Qt::Key_Escape);
        break;
    }
}

void AddExitWays()
{
    QTest::addColumn<ExitWay>("way");
    QTest::newRow("button") << ExitWay::Button;
    QTest::newRow("mnemonic") << ExitWay::Mnemonic;
    QTest::newRow("close box") << ExitWay::CloseBox;
    QTest::newRow("Esc") << ExitWay::Escape;
}

/// The keys of the enabled buttons, which have to be those of the enabled menu items.
Texts EnabledCommands(const QWidget& window)
{
    const std::initializer_list<std::pair<const char*, int>> commands{
        {"icoAdd", 0},     {"icoEdit", 1},  {"icoDelete", 2}, {"Earth", 3},
        {"icoReports", 4}, {"icoAbout", 5}, {"icoTides", 7}};
    Texts enabled;
    for (const auto& [button, menuIndex] : commands) {
        if (Command(window, button).isEnabled()) {
            enabled.emplace_back(button);
        }
        if (Command(window, button).isEnabled() != MenuItem(window, menuIndex).isEnabled()) {
            enabled.emplace_back("(differs in the menu)");
        }
    }
    return enabled;
}

const Texts allCommands{"icoAdd", "icoEdit", "icoDelete", "Earth", "icoReports", "icoAbout", "icoTides"};

/// The question for the tide program, which knows other programs than the one for Windows elsewhere.
FileQuestion TideQuestion()
{
    QString filter = QStringLiteral("WXTide32 Progam File (WXTide32.exe)");
#ifndef Q_OS_WIN
    filter += QStringLiteral(";;All Files (*)");
#endif
    return {.title = QStringLiteral("Specify WXTide32 Program Location"),
            .filter = filter,
            .folder = {},
            .fileName = QStringLiteral("WXTide32.exe")};
}

std::string StoredTidePath(TestProgram& program)
{
    return program.settings.GetSetting("KOWRA", "XTidePath", "(none)");
}

} // namespace

Q_DECLARE_METATYPE(Way)
Q_DECLARE_METATYPE(ExitWay)

class tst_fTarnoCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void enabled_byWhatTheFilesHold_data()
    {
        QTest::addColumn<bool>("location");
        QTest::addColumn<bool>("entry");
        QTest::addColumn<QStringList>("disabled");
        const QStringList needEntry{QStringLiteral("icoEdit"), QStringLiteral("icoDelete"),
                                    QStringLiteral("icoReports")};
        QTest::newRow("nothing") << false << false << (needEntry + QStringList(QStringLiteral("icoAdd")));
        QTest::newRow("a location") << true << false << needEntry;
        QTest::newRow("both") << true << true << QStringList();
    }

    void enabled_byWhatTheFilesHold()
    {
        QFETCH(bool, location);
        QFETCH(bool, entry);
        QFETCH(QStringList, disabled);
        TestProgram program;
        program.Start();
        if (location) {
            program.AddLocation("Pittwater");
        }
        if (entry) {
            program.AddEntry({{EntryField::LocNo, "1"}});
        }
        ShownLog window(program);
        Texts expected;
        for (const std::string& command : allCommands) {
            if (!disabled.contains(FromUtf8(command))) {
                expected.push_back(command);
            }
        }
        QCOMPARE(EnabledCommands(window), expected);
    }

    void enabled_followsADeletion()
    {
        TwoTrips program;
        ShownLog window(program);
        for (int entry = 0; entry < 2; ++entry) {
            QCOMPARE(EnabledCommands(window), allCommands);
            program.messages.Expect(deleteQuestion, Button::Yes);
            window.Delete();
        }
        QCOMPARE(EnabledCommands(window), (Texts{"icoAdd", "Earth", "icoAbout", "icoTides"}));
    }

    void enabled_followsAnAddition()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        ShownLog window(program);
        QCOMPARE(EnabledCommands(window), (Texts{"icoAdd", "Earth", "icoAbout", "icoTides"}));
        WhileOpen(
            "fEntry", [&] { window.Add(); },
            [](QDialog& editor) {
                Find<QWidget>(editor, "txtTideLowHt").setFocus();
                Type(editor, "1");
                Click(editor, "cmdOK");
                Click(editor, "cmdCancel");
            });
        QCOMPARE(EnabledCommands(window), allCommands);
    }

    void enabled_followsTheLocations()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        QVERIFY(!Command(window, "icoAdd").isEnabled());
        WhileOpen(
            "fLocs", [&] { window.Locations(); },
            [&](QDialog& listing) {
                program.AddLocation("Pittwater");
                listing.close();
            });
        QVERIFY(Command(window, "icoAdd").isEnabled());
    }

    void add_opensANewEntry_data() { AddWays({Way::Toolbar, Way::Menu, Way::Key}); }

    void add_opensANewEntry()
    {
        QFETCH(Way, way);
        TwoTrips program;
        ShownLog window(program);
        WhileOpen(
            "fEntry", [&] { Run(window, way, "icoAdd", 0, Qt::Key_N, Qt::ControlModifier); },
            [](QDialog& editor) {
                QCOMPARE(ToUtf8(Find<QLineEdit>(editor, "txtTStart").text()), "06:00");
                Click(editor, "cmdCancel");
            });
        QCOMPARE(Keys(window), (Texts{"K1", "K2"}));
    }

    void edit_opensTheSelectedEntry_data()
    {
        AddWays({Way::Toolbar, Way::Menu, Way::Key, Way::DoubleClick, Way::Enter});
    }

    void edit_opensTheSelectedEntry()
    {
        QFETCH(Way, way);
        TwoTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        WhileOpen(
            "fEntry", [&] { Run(window, way, "icoEdit", 1, Qt::Key_F2); },
            [](QDialog& editor) {
                QCOMPARE(ToUtf8(Find<QLineEdit>(editor, "txtStart").text()), "2003-02-06");
                Click(editor, "cmdCancel");
            });
        QCOMPARE(Selected(window), "K2");
        QCOMPARE(window.focusWidget(), &List(window)); // ready for the next arrow key
    }

    void edit_changedEntry_isShownInTheList()
    {
        TwoTrips program;
        ShownLog window(program);
        WhileOpen(
            "fEntry", [&] { window.Edit(); },
            [](QDialog& editor) {
                Find<QLineEdit>(editor, "txtTStart").setFocus();
                Type(editor, "0515");
                Click(editor, "cmdOK");
                Click(editor, "cmdCancel");
            });
        QCOMPARE(ColumnTexts(window, Column::Start), (Texts{"05:15", ""}));
    }

    void edit_nothingSelected_doesNothing()
    {
        TwoTrips program;
        ShownLog window(program);
        List(window).selectionModel()->clear();
        WithoutWindow([&] {
            window.Edit();
            window.Delete();
            Press(window, Qt::Key_Return);
            QTest::mouseDClick(List(window).viewport(), Qt::LeftButton, {}, EmptySpace(window));
        });
        QVERIFY(List(window).isEnabled());
    }

    void doubleClick_onEmptySpace_editsTheSelectedEntry()
    {
        TwoTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        WhileOpen(
            "fEntry",
            [&] { QTest::mouseDClick(List(window).viewport(), Qt::LeftButton, {}, EmptySpace(window)); },
            [](QDialog& editor) {
                QCOMPARE(ToUtf8(Find<QLineEdit>(editor, "txtStart").text()), "2003-02-06");
                Click(editor, "cmdCancel");
            });
    }

    void doubleClick_inAnEmptyList_doesNothing()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        ShownLog window(program);
        WithoutWindow([&] {
            QTest::mouseDClick(List(window).viewport(), Qt::LeftButton, {}, EmptySpace(window));
            QApplication::processEvents();
        });
        QVERIFY(List(window).isEnabled());
    }

    void enter_inAnEmptyList_doesNothing()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        ShownLog window(program);
        WithoutWindow([&] {
            Press(window, Qt::Key_Return);
            Press(window, Qt::Key_F2);
            Press(window, Qt::Key_Delete);
        });
        QVERIFY(List(window).isEnabled());
    }

    void add_savedEntry_isShownAndTheSelectionStays()
    {
        TwoTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        WhileOpen(
            "fEntry", [&] { window.Add(); },
            [](QDialog& editor) {
                Find<QWidget>(editor, "txtTideLowHt").setFocus();
                Type(editor, "1");
                Click(editor, "cmdOK");
                Click(editor, "cmdCancel");
            });
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3"}));
        QCOMPARE(Selected(window), "K2");
    }

    void delete_asksWithoutAWindowAndRemoves_data() { AddWays({Way::Toolbar, Way::Menu, Way::Key}); }

    void delete_asksWithoutAWindowAndRemoves()
    {
        QFETCH(Way, way);
        TwoTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        bool greyed = false;
        program.messages.Expect(deleteQuestion, Button::Yes, [&] { greyed = !List(window).isEnabled(); });
        WithoutWindow([&] { Run(window, way, "icoDelete", 2, Qt::Key_Delete); });
        QVERIFY(greyed);
        QVERIFY(List(window).isEnabled());
        QCOMPARE(Keys(window), Texts{"K1"});
        QCOMPARE(Selected(window), "K1");
        QVERIFY(program.StoredEntry(2).empty());
    }

    void delete_no_leavesTheRow()
    {
        TwoTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        program.messages.Expect(deleteQuestion, Button::No);
        window.Delete();
        QCOMPARE(Keys(window), (Texts{"K1", "K2"}));
        QCOMPARE(Selected(window), "K2");
    }

    void delete_last_leavesAnEmptyList()
    {
        TwoTrips program;
        ShownLog window(program);
        for (int entry = 0; entry < 2; ++entry) {
            program.messages.Expect(deleteQuestion, Button::Yes);
            window.Delete();
        }
        QCOMPARE(List(window).RowCount(), 0);
        QCOMPARE(Selected(window), "");
    }

    void locations_opensTheListing_data() { AddWays({Way::Toolbar, Way::Menu}); }

    void locations_opensTheListing()
    {
        QFETCH(Way, way);
        TestProgram program;
        program.Start();
        ShownLog window(program);
        WhileOpen(
            "fLocs", [&] { Run(window, way, "Earth", 3, Qt::Key_unknown); },
            [](QDialog& listing) { CloseWindow(listing); });
        QVERIFY(List(window).isEnabled());
    }

    void reports_opensTheReportBuilder_data() { AddWays({Way::Toolbar, Way::Menu, Way::Key}); }

    void reports_opensTheReportBuilder()
    {
        QFETCH(Way, way);
        TwoTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        WhileOpen(
            "fRptLog", [&] { Run(window, way, "icoReports", 4, Qt::Key_P, Qt::ControlModifier); },
            [&](QDialog& builder) {
                QVERIFY(builder.isModal());
                QVERIFY(!List(window).isEnabled());
                CloseWindow(builder);
            });
        QVERIFY(List(window).isEnabled());
        QCOMPARE(Selected(window), "K2");
    }

    void about_opensTheAboutBox_data() { AddWays({Way::Toolbar, Way::Menu}); }

    void about_opensTheAboutBox()
    {
        QFETCH(Way, way);
        TestProgram program;
        program.Start();
        ShownLog window(program);
        WhileOpen(
            "fSplash", [&] { Run(window, way, "icoAbout", 5, Qt::Key_unknown); },
            [](QDialog& about) {
                QCOMPARE(ToUtf8(about.windowTitle()), "About Tarno Fishing Log");
                Click(about, "cmdOK");
            });
        QVERIFY(List(window).isEnabled());
    }

    void list_isGreyedWhileAWindowIsOpen()
    {
        TwoTrips program;
        ShownLog window(program);
        const auto background = [&] { return List(window).palette().color(QPalette::Base); };
        const QColor usual = background();
        const auto isGreyed = [&] {
            return !List(window).isEnabled() && background() == window.palette().color(QPalette::Window);
        };
        QVERIFY(usual != window.palette().color(QPalette::Window));
        const std::vector<std::pair<void (fTarno::*)(), const char*>> commands{{&fTarno::Add, "fEntry"},
                                                                               {&fTarno::Edit, "fEntry"},
                                                                               {&fTarno::Locations, "fLocs"},
                                                                               {&fTarno::Reports, "fRptLog"},
                                                                               {&fTarno::About, "fSplash"}};
        for (const auto& [command, opened] : commands) {
            WhileOpen(
                opened, [&, run = command] { (window.*run)(); },
                [&](QDialog& dialog) {
                    QVERIFY(isGreyed());
                    CloseWindow(dialog);
                });
            QVERIFY(List(window).isEnabled());
            QCOMPARE(background(), usual);
        }
    }

    void list_isUsableAfterAnError()
    {
        TwoTrips program;
        ShownLog window(program);
        program.sql.EntryDelete(1); // the list does not know
        program.reports.Expect("cSQL", "EntryGet", ErrorNumber::ObjectNotSet);
        WithoutWindow([&] { window.Edit(); });
        QVERIFY(List(window).isEnabled());
        QCOMPARE(Keys(window), Texts{"K2"}); // now it does
        WhileOpen(
            "fEntry", [&] { window.Edit(); }, CloseWindow);
    }

    void keyBeyond16Bits_isReportedAsEdit_data()
    {
        QTest::addColumn<bool>("remove");
        QTest::newRow("Edit") << false;
        QTest::newRow("Delete") << true;
    }

    void keyBeyond16Bits_isReportedAsEdit()
    {
        QFETCH(bool, remove);
        TwoTrips program;
        std::string bytes = program.folder.Read("tarno.xml");
        bytes.replace(bytes.find("<TarnoNo>1<"), 11, "<TarnoNo>32768<");
        program.folder.Write("tarno.xml", bytes);
        program.Start();
        ShownLog window(program);
        QCOMPARE(Selected(window), "K32768");
        program.reports.Expect("fTarno", "Edit", ErrorNumber::Overflow);
        WithoutWindow([&] { remove ? window.Delete() : window.Edit(); });
        QVERIFY(List(window).isEnabled());
        QCOMPARE(EnabledCommands(window), allCommands);
        QCOMPARE(program.folder.Read("tarno.xml"), bytes);
    }

    void rightClick_onARow_selectsItAndShowsTheMenu()
    {
        TwoTrips program;
        ShownLog window(program);
        auto& menu = Find<QMenu>(window, "popPopup");
        QCOMPARE(Selected(window), "K1");
        QTest::mouseClick(List(window).viewport(), Qt::RightButton, {}, PointInRow(window, 1));
        QCOMPARE(Selected(window), "K2");
        QVERIFY(menu.isVisible());
        menu.close();
    }

    void rightClick_onEmptySpace_keepsTheSelectionAndShowsTheMenu()
    {
        TwoTrips program;
        ShownLog window(program);
        auto& menu = Find<QMenu>(window, "popPopup");
        ClickRow(window, 1);
        QTest::mouseClick(List(window).viewport(), Qt::RightButton, {}, EmptySpace(window));
        QCOMPARE(Selected(window), "K2");
        QVERIFY(menu.isVisible());
        menu.close();
    }

    void rightClick_menuItems_followTheRule()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        program.AddLocation("Pittwater"); // behind the window's back
        QVERIFY(!MenuItem(window, 0).isEnabled());
        QTest::mouseClick(List(window).viewport(), Qt::RightButton, {}, EmptySpace(window));
        QCOMPARE(EnabledCommands(window), (Texts{"icoAdd", "Earth", "icoAbout", "icoTides"}));
        Find<QMenu>(window, "popPopup").close();
    }

    void leftClick_showsNoMenu()
    {
        TwoTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        QTest::mouseClick(List(window).viewport(), Qt::LeftButton, {}, EmptySpace(window));
        QCOMPARE(Selected(window), "K2");
        QVERIFY(!Find<QMenu>(window, "popPopup").isVisible());
    }

    void tides_storedPath_isStarted()
    {
        TestProgram program;
        program.Start();
        program.folder.Write("tides.exe", "");
        const std::string path = program.folder.PathOf("tides.exe");
        program.settings.SaveSetting("KOWRA", "XTidePath", path);
        ShownLog window(program);
        program.programs.ExpectStart(FromUtf8(path));
        ClickCommand(window, "icoTides");
        program.programs.ExpectStart(FromUtf8(path));
        MenuItem(window, 7).trigger();
        QVERIFY(List(window).isEnabled());
    }

    void tides_noPath_asksAndStoresTheChosenOne_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::newRow("never stored") << "(none)";
        QTest::newRow("empty") << "";
        QTest::newRow("no longer there") << "/no/such/WXTide32.exe";
        QTest::newRow("a folder") << "/tmp";
    }

    void tides_noPath_asksAndStoresTheChosenOne()
    {
        QFETCH(QString, stored);
        TestProgram program;
        program.Start();
        if (stored != QLatin1String("(none)")) {
            program.settings.SaveSetting("KOWRA", "XTidePath", stored.toStdString());
        }
        ShownLog window(program);
        const QString path = QStringLiteral("/opt/tides & more/t\u00EFdes.exe");
        program.files.ExpectOpen(TideQuestion(), path);
        program.programs.ExpectStart(path);
        window.Tides();
        QCOMPARE(StoredTidePath(program), ToUtf8(path));
    }

    void tides_cancelled_startsAndStoresNothing_data() { tides_noPath_asksAndStoresTheChosenOne_data(); }

    void tides_cancelled_startsAndStoresNothing()
    {
        QFETCH(QString, stored);
        TestProgram program;
        program.Start();
        if (stored != QLatin1String("(none)")) {
            program.settings.SaveSetting("KOWRA", "XTidePath", stored.toStdString());
        }
        ShownLog window(program);
        program.files.ExpectOpen(TideQuestion(), std::nullopt);
        window.Tides();
        QCOMPARE(StoredTidePath(program), stored.toStdString());
    }

    void tides_cannotBeStarted_isReported()
    {
        TestProgram program;
        program.Start();
        program.folder.Write("tides.exe", "");
        const std::string path = program.folder.PathOf("tides.exe");
        program.settings.SaveSetting("KOWRA", "XTidePath", path);
        ShownLog window(program);
        program.programs.ExpectStart(FromUtf8(path), {}, false);
        program.reports.Expect("fTarno", "Tides", ErrorNumber::FileNotFound);
        window.Tides();
        QVERIFY(List(window).isEnabled());
    }

    void exit_yes_endsTheProgram_data() { AddExitWays(); }

    void exit_yes_endsTheProgram()
    {
        QFETCH(ExitWay, way);
        TwoTrips program;
        ShownLog window(program);
        const QSignalSpy exits(&window, &fTarno::ExitConfirmed);
        program.messages.Expect(exitQuestion, Button::Yes);
        ExitBy(window, way);
        QCOMPARE(exits.size(), 1);
        // the data access has been released
        program.reports.Expect("cSQL", "EntryList", ErrorNumber::ObjectNotSet);
        RecordList entries;
        QCOMPARE(program.sql.EntryList(entries), failed);
        // nothing is asked a second time when the program closes its windows
        window.close();
        QVERIFY(!window.isVisible());
    }

    void exit_noOrCancel_leavesTheProgramRunning_data()
    {
        QTest::addColumn<ExitWay>("way");
        QTest::addColumn<bool>("no");
        QTest::newRow("button, no") << ExitWay::Button << true;
        QTest::newRow("button, cancel") << ExitWay::Button << false;
        QTest::newRow("close box, no") << ExitWay::CloseBox << true;
        QTest::newRow("close box, cancel") << ExitWay::CloseBox << false;
        QTest::newRow("Esc, no") << ExitWay::Escape << true;
        QTest::newRow("Esc, cancel") << ExitWay::Escape << false;
    }

    void exit_noOrCancel_leavesTheProgramRunning()
    {
        QFETCH(ExitWay, way);
        QFETCH(bool, no);
        TwoTrips program;
        ShownLog window(program);
        const QSignalSpy exits(&window, &fTarno::ExitConfirmed);
        for (int time = 0; time < 2; ++time) {
            program.messages.Expect(exitQuestion, no ? Button::No : Button::Cancel);
            ExitBy(window, way);
            QCOMPARE(exits.size(), 0);
            QVERIFY(window.isVisible());
        }
        WhileOpen(
            "fEntry", [&] { window.Edit(); }, CloseWindow);
    }

    void exit_unsavedChanges_areSaid_data()
    {
        QTest::addColumn<bool>("exitAllTheSame");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }

    void exit_unsavedChanges_areSaid()
    {
        QFETCH(bool, exitAllTheSame);
        TwoTrips program;
        ShownLog window(program);
        const QSignalSpy exits(&window, &fTarno::ExitConfirmed);
        program.operations.Fail("write", ErrorNumber::DiskFull);
        program.reports.Expect("cSQL", "EntryDelete", ErrorNumber::DiskFull);
        program.messages.Expect(deleteQuestion, Button::Yes);
        window.Delete();

        program.messages.Expect(exitQuestion, Button::Yes);
        program.messages.Expect(
            {.text = QStringLiteral("The last changes could not be saved to: tarno.xml\r\n"
                                    "They are lost when Tarno ends now. Exit all the same?"),
             .title = QStringLiteral("Changes Not Saved"),
             .icon = Icon::Exclamation,
             .buttons = Buttons::YesNo,
             .byDefault = Button::No},
            exitAllTheSame ? Button::Yes : Button::No);
        Click(window, "cmdExit");
        QCOMPARE(exits.size(), exitAllTheSame ? 1 : 0);

        if (!exitAllTheSame) { // the next save takes the change along, and then there is nothing to say
            program.AddEntry({{EntryField::LocNo, "1"}});
            QVERIFY(program.StoredEntry(1).empty());
            program.messages.Expect(exitQuestion, Button::Yes);
            Click(window, "cmdExit");
            QCOMPARE(exits.size(), 1);
        }
    }
};

TEST_CLASS(tst_fTarnoCommands)
#include "tst_fTarnoCommands.moc"
