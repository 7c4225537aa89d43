#include "CommandTest.h"
#include "support/TestClass.h"

#include <QSignalSpy>

#include <optional>

using namespace Tarno;

// The commands of the main window: when they are enabled, the windows and programs that they open, and
// "Exit".

namespace
{

enum class ExitWay { Button, Mnemonic, CloseBox, Escape };

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

/// Returns the expected file dialog for the tide program. On other systems than Windows it also offers all
/// files.
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

Q_DECLARE_METATYPE(ExitWay)

class tst_fTarnoCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void enabled_dependsOnTheFiles_data()
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

    void enabled_dependsOnTheFiles()
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

    void add_withoutTemplate_reportsOnlyThat()
    {
        TwoTrips program;
        program.folder.Write("tarnoblank.xml", "<data>");
        program.Start();
        ShownLog window(program);
        program.reports.Expect("cSQL", "EntryGet", ErrorNumber::ObjectNotSet);
        WithoutWindow([&] { window.Add(); });
        QVERIFY(List(window).isEnabled());
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
        QTest::newRow("deleted file") << "/no/such/WXTide32.exe";
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

    void tides_cannotBeStarted_nextClickAsksAgain()
    {
        TestProgram program;
        program.Start();
        program.folder.Write("notes.txt", "");
        const QString path = FromUtf8(program.folder.PathOf("notes.txt"));
        ShownLog window(program);
        program.files.ExpectOpen(TideQuestion(), path);
        program.programs.ExpectStart(path, {}, false);
        program.reports.Expect("fTarno", "Tides", ErrorNumber::FileNotFound);
        window.Tides();
        QCOMPARE(StoredTidePath(program), "(none)");
        program.files.ExpectOpen(TideQuestion(), std::nullopt);
        window.Tides();
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
        // the data access was released
        program.reports.Expect("cSQL", "EntryList", ErrorNumber::ObjectNotSet);
        RecordList entries;
        QCOMPARE(program.sql.EntryList(entries), failed);
        // closing the windows afterwards asks no second question
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

    void exit_unsavedChanges_asksAgain_data()
    {
        QTest::addColumn<bool>("exitsAnyway");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }

    void exit_unsavedChanges_asksAgain()
    {
        QFETCH(bool, exitsAnyway);
        TwoTrips program;
        ShownLog window(program);
        const QSignalSpy exits(&window, &fTarno::ExitConfirmed);
        program.operations.Fail("create", ErrorNumber::DiskFull);
        program.reports.Expect("cSQL", "EntryDelete", ErrorNumber::DiskFull);
        program.messages.Expect(deleteQuestion, Button::Yes);
        window.Delete();

        program.messages.Expect(exitQuestion, Button::Yes);
        program.messages.Expect(
            {.text = QStringLiteral("These changes could not be saved:\r\n\r\n"
                                    "the deletion of the trip of 2003-02-05 at Pittwater (tarno.xml)\r\n\r\n"
                                    "If you exit now, you will lose them. To keep them, click \"No\" and "
                                    "save another change.\r\n\r\nExit anyway?"),
             .title = QStringLiteral("Changes Not Saved"),
             .icon = Icon::Exclamation,
             .buttons = Buttons::YesNo,
             .byDefault = Button::No},
            exitsAnyway ? Button::Yes : Button::No);
        Click(window, "cmdExit");
        QCOMPARE(exits.size(), exitsAnyway ? 1 : 0);

        if (!exitsAnyway) { // the next save writes this change too, so no question is asked
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
