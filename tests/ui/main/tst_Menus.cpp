#include "FindTest.h"
#include "support/TestClass.h"
#include "ui/help/fHelp.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>

#include <memory>
#include <set>

using namespace Tarno;

// The menu bar of the main window: its items, their keys, and when they are enabled.

namespace
{

QString WithoutMnemonic(QString text)
{
    return text.remove(QLatin1Char('&'));
}

QList<QMenu*> Menus(const QWidget& window)
{
    QList<QMenu*> menus;
    for (const QAction* action : Find<QMenuBar>(window, "menuBar").actions()) {
        menus << action->menu();
    }
    return menus;
}

/// Returns for example "Exit (Ctrl+Q)".
QString Described(const QAction& item)
{
    QStringList keys;
    for (const QKeySequence& key : item.shortcuts()) {
        keys << key.toString();
    }
    return WithoutMnemonic(item.text()) + QLatin1String(" (") + keys.join(QLatin1String(", ")) +
           QLatin1Char(')');
}

Texts Described(const QMenu& menu)
{
    Texts texts;
    for (const QAction* item : menu.actions()) {
        texts.push_back(
            item->isSeparator() ? "-" : ToUtf8(item->objectName() + QLatin1String(": ") + Described(*item)));
    }
    return texts;
}

/// Returns the object names of the items of the menu bar that are enabled, without those that always are.
std::string Enabled(const QWidget& window)
{
    const std::set<QString> always{
        QStringLiteral("miBackUp"),  QStringLiteral("miRestore"),  QStringLiteral("miOpenFolder"),
        QStringLiteral("miExit"),    QStringLiteral("miCalendar"), QStringLiteral("miStatistics"),
        QStringLiteral("miDetails"), QStringLiteral("Earth"),      QStringLiteral("icoTides"),
        QStringLiteral("miManual"),  QStringLiteral("icoAbout")};
    QStringList names;
    for (const QMenu* menu : Menus(window)) {
        for (const QAction* item : menu->actions()) {
            if (always.contains(item->objectName())) {
                QTest::qVerify(item->isEnabled(), "an item is disabled", "", __FILE__, __LINE__);
            } else if (!item->isSeparator() && item->isEnabled()) {
                names << item->objectName();
            }
        }
    }
    return ToUtf8(names.join(QLatin1Char(' ')));
}

/// Makes every command available: trips, a query that restricts the list, and steps to undo and to redo.
void EnableAll(FourTrips& program, ShownLog& window)
{
    DeleteSelected(program, window);
    Press(window, Qt::Key_Z, Qt::ControlModifier);
    FindTrips(window, "-trout");
    Press(window, Qt::Key_Return);
}

void RightClick(const QWidget& window)
{
    QTest::mouseClick(List(window).viewport(), Qt::RightButton, {}, PointInRow(window, 0));
}

} // namespace

class tst_Menus : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void menus_haveTheirItemsInOrder_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<Texts>("items");
        QTest::newRow("mnuFile") << "&File"
                                 << Texts{"miExportTrips: Export Trips... (Ctrl+E)",
                                          "miImportTrips: Import Trips... (Ctrl+Shift+E)",
                                          "miExportLocations: Export Locations... (Ctrl+G)",
                                          "miImportLocations: Import Locations... (Ctrl+Shift+G)",
                                          "-",
                                          "miBackUp: Back Up... (Ctrl+B)",
                                          "miRestore: Restore... (Ctrl+Shift+B)",
                                          "miCollect: Collect Pictures... ()",
                                          "-",
                                          "miOpenFolder: Open Log Folder (Ctrl+Shift+O)",
                                          "-",
                                          "miExit: Exit (Ctrl+Q)"};
        QTest::newRow("mnuTrip") << "&Trip"
                                 << Texts{"icoAdd: Add (Ctrl+N)",
                                          "icoEdit: Edit (F2)",
                                          "miRepeat: Repeat (Ctrl+D)",
                                          "icoDelete: Delete (Del)",
                                          "-",
                                          "miFind: Find... (Ctrl+F)",
                                          "-",
                                          "miTripSheet: Trip Sheet... (Ctrl+Shift+P)",
                                          "miReportFound: Report of Trips Found... (Ctrl+Shift+R)"};
        QTest::newRow("mnuEdit") << "&Edit"
                                 << Texts{"miUndo: Undo (Ctrl+Z)", "miRedo: Redo (Ctrl+Y, Ctrl+Shift+Z)", "-",
                                          "miCopy: Copy (Ctrl+C)",
                                          "miCopyFound: Copy All Found (Ctrl+Shift+C)"};
        QTest::newRow("mnuView") << "&View" << Texts{"miDetails: Details (Ctrl+I)",
                                                     "-",
                                                     "miCalendar: Calendar (Ctrl+K)",
                                                     "miStatistics: Statistics (Ctrl+T)",
                                                     "Earth: Locations (Ctrl+L)",
                                                     "icoReports: Reports (Ctrl+R, Ctrl+P)",
                                                     "icoTides: Tides (Ctrl+Shift+T)"};
        QTest::newRow("mnuHelp") << "&Help"
                                 << Texts{"miManual: Manual (F1)", "-", "icoAbout: About (Shift+F1)"};
    }

    void menus_haveTheirItemsInOrder()
    {
        QFETCH(QString, title);
        QFETCH(Texts, items);
        TestProgram program;
        program.Start();
        ShownLog window(program);
        const auto& menu = Find<QMenu>(window, QTest::currentDataTag());
        QCOMPARE(menu.title(), title);
        QCOMPARE(Described(menu), items);
    }

    void menuBar_hasItsMenusInOrder()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        Texts names;
        for (const QMenu* menu : Menus(window)) {
            names.push_back(ToUtf8(menu->objectName()));
        }
        QCOMPARE(names, (Texts{"mnuFile", "mnuTrip", "mnuEdit", "mnuView", "mnuHelp"}));
    }

    void mnemonics_areUniqueWithinEachMenu()
    {
        FourTrips program;
        ShownLog window(program);
        EnableAll(program, window);
        std::set<QString> titles;
        for (const QMenu* menu : Menus(window)) {
            QVERIFY(titles.insert(QKeySequence::mnemonic(menu->title()).toString()).second);
            std::set<QString> letters;
            for (const QAction* item : menu->actions()) {
                if (!item->isSeparator()) {
                    QVERIFY2(item->isEnabled(), qPrintable(item->text()));
                    const QString letter = QKeySequence::mnemonic(item->text()).toString();
                    QVERIFY2(!letter.isEmpty(), qPrintable(item->text()));
                    QVERIFY2(letters.insert(letter).second, qPrintable(item->text()));
                }
            }
        }
        // the controls of the window
        QVERIFY(titles.insert(QKeySequence::mnemonic(Find<QPushButton>(window, "cmdExit").text()).toString())
                    .second);
        QVERIFY(
            titles
                .insert(QKeySequence::mnemonic(Find<QPushButton>(window, "cmdUndoDelete").text()).toString())
                .second);
        QVERIFY(
            titles.insert(QKeySequence::mnemonic(Find<QLabel>(window, "lblFind").text()).toString()).second);
    }

    void popUp_showsTheKeysOfItsButtons()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        const std::map<int, const char*> items{{0, "icoAdd"},  {1, "icoEdit"},    {2, "icoDelete"},
                                               {3, "Earth"},   {4, "icoReports"}, {5, "icoAbout"},
                                               {7, "icoTides"}};
        for (const auto& [index, button] : items) {
            QCOMPARE(MenuItem(window, index).shortcut(), Command(window, button).shortcut());
            QVERIFY(MenuItem(window, index).isShortcutVisibleInContextMenu());
        }
    }

    void everyKey_runsItsCommandOnce_data()
    {
        QTest::addColumn<bool>("popUpOpened");
        QTest::newRow("pop-up never opened") << false;
        QTest::newRow("pop-up opened before") << true;
    }

    void everyKey_runsItsCommandOnce()
    {
        QFETCH(bool, popUpOpened);
        FourTrips program;
        ShownLog window(program);
        EnableAll(program, window);
        if (popUpOpened) {
            RightClick(window);
            auto& menu = Find<QMenu>(window, "popPopup");
            Press(menu, Qt::Key_Escape);
            QVERIFY(!menu.isVisible());
            window.activateWindow(); // the offscreen platform does not activate it again
            AwaitActive(window);
        }
        Texts ran;
        for (auto* action : window.findChildren<QAction*>()) {
            disconnect(action, &QAction::triggered, nullptr, nullptr); // instead of the command
            connect(action, &QAction::triggered, &window,
                    [&ran, action] { ran.push_back(ToUtf8(action->objectName())); });
        }
        int keys = 0;
        for (const QMenu* menu : Menus(window)) {
            for (const QAction* item : menu->actions()) {
                for (const QKeySequence& key : item->shortcuts()) {
                    ran.clear();
                    QCOMPARE(window.focusWidget(), &List(window));
                    QTest::keySequence(window.windowHandle(), key);
                    QCOMPARE(ran, Texts{ToUtf8(item->objectName())});
                    ++keys;
                }
            }
        }
        QCOMPARE(keys, 29);
    }

    void key_opensItsWindow_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("Ctrl+N") << "fEntry";
        QTest::newRow("F2") << "fEntry";
        QTest::newRow("Ctrl+D") << "fEntry";
        QTest::newRow("Ctrl+Shift+P") << "fPreview";
        QTest::newRow("Ctrl+Shift+R") << "fRptLog";
        QTest::newRow("Ctrl+K") << "fCalendar";
        QTest::newRow("Ctrl+T") << "fStatistics";
        QTest::newRow("Ctrl+E") << "dlgExport";
        QTest::newRow("Ctrl+G") << "fWayPoints";
        QTest::newRow("Ctrl+B") << "fBackUp";
        QTest::newRow("Ctrl+L") << "fLocs";
        QTest::newRow("Ctrl+R") << "fRptLog";
        QTest::newRow("Ctrl+P") << "fRptLog";
        QTest::newRow("Shift+F1") << "fSplash";
    }

    void key_opensItsWindow()
    {
        QFETCH(QString, name);
        FourTrips program;
        ShownLog window(program);
        if (QTest::currentDataTag() == std::string_view("Ctrl+D")) {
            program.messages.Expect({.text = QStringLiteral("You have changed data in this screen.\r\n"
                                                            "Do you want to save the changes?"),
                                     .title = QStringLiteral("Save Changes"),
                                     .icon = Icon::Question,
                                     .buttons = Buttons::YesNo,
                                     .byDefault = Button::Yes},
                                    Button::No);
        }
        WhileOpen(
            qPrintable(name),
            [&] {
                QTest::keySequence(window.windowHandle(),
                                   QKeySequence(QLatin1String(QTest::currentDataTag())));
            },
            [&](QDialog& dialog) {
                QVERIFY(!List(window).isEnabled());
                CloseWindow(dialog);
            });
        QVERIFY(List(window).isEnabled());
        QCOMPARE(window.focusWidget(), &List(window));
    }

    void openLogFolder_opensTheDataFolder()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        program.programs.ExpectOpenFolder(FromUtf8(program.programFolder.GetAppPath()));
        QTest::keySequence(window.windowHandle(), QKeySequence(QStringLiteral("Ctrl+Shift+O")));
    }

    void openLogFolder_cannotBeOpened_isReported()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        program.programs.ExpectOpenFolder(FromUtf8(program.programFolder.GetAppPath()), false);
        program.reports.Expect("fTarno", "miOpenFolder_Click", ErrorNumber::FileNotFound);
        Command(window, "miOpenFolder").trigger();
    }

    void exit_byKey_asks()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        program.messages.Expect(exitQuestion, Button::No);
        Press(window, Qt::Key_Q, Qt::ControlModifier);
        QVERIFY(window.isVisible());
    }

    void manual_showsThePageOfTheWindow()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        Press(window, Qt::Key_F1);
        auto* help = window.findChild<fHelp*>();
        QVERIFY(help != nullptr);
        QVERIFY(help->isVisible());
        help->close();
    }

    /// What the window had before it had a menu bar.
    void describedTexts_areTheSame()
    {
        FourTrips program;
        ShownLog window(program);
        EnableAll(program, window);
        Texts texts{ToUtf8(window.windowTitle()), ToUtf8(List(window).toolTip()), LabelText(window, "Label1"),
                    ToUtf8(WithoutMnemonic(Find<QPushButton>(window, "cmdExit").text()))};
        for (const QAction* button : Find<QToolBar>(window, "tlbTarno").actions()) {
            texts.push_back(button->isSeparator()
                                ? "-"
                                : ToUtf8(button->objectName() + QLatin1Char('|') + button->iconText() +
                                         QLatin1Char('|') + button->toolTip()));
        }
        for (const QAction* item : Find<QMenu>(window, "popPopup").actions()) {
            texts.push_back(
                item->isSeparator() ? "-" : ToUtf8(item->objectName() + QLatin1Char('|') + item->text()));
        }
        for (int column = 0; column < List(window).model()->columnCount(); ++column) {
            texts.push_back(ToUtf8(List(window).model()->headerData(column, Qt::Horizontal).toString()));
        }
        QCOMPARE(texts, (Texts{"Tarno Fishing Log",
                               "Right-click in the list area for options",
                               "(right click list for options, click on a column header to sort the data)",
                               "Exit",
                               "icoAdd|Add|Add Log Entry",
                               "icoEdit|Edit|Edit Log Entry",
                               "icoDelete|Delete|Delete Log Entry",
                               "-",
                               "Earth|Locations|Locations",
                               "icoReports|Reporting|Reporting",
                               "icoTides|Tides|Tides",
                               "-",
                               "icoAbout|About|About Tarno",
                               "miPopUp_0|Add",
                               "miPopUp_1|Edit",
                               "miPopUp_2|Delete",
                               "miPopUp_3|Locations",
                               "miPopUp_4|Reports",
                               "miPopUp_5|About...",
                               "-",
                               "miPopUp_7|Tides",
                               "From",
                               "To",
                               "Location",
                               "Start",
                               "End",
                               "Tide-Start",
                               "Tide-End",
                               "Rating",
                               "Action"}));
    }

    void enabled_dependsOnTheLog_data()
    {
        QTest::addColumn<int>("locations");
        QTest::addColumn<int>("trips");
        QTest::addColumn<QString>("query");
        QTest::addColumn<std::string>("enabled");
        QTest::newRow("empty") << 0 << 0 << ""
                               << std::string("miImportTrips miExportLocations miImportLocations miCollect");
        QTest::newRow("a location")
            << 1 << 0 << ""
            << std::string("miImportTrips miExportLocations miImportLocations miCollect icoAdd");
        QTest::newRow("a trip")
            << 1 << 1 << ""
            << std::string("miExportTrips miImportTrips miExportLocations miImportLocations miCollect "
                           "icoAdd icoEdit miRepeat icoDelete miFind miTripSheet "
                           "miReportFound miCopy icoReports");
        QTest::newRow("a trip without a location")
            << 0 << 1 << ""
            << std::string("miExportTrips miImportTrips miExportLocations miImportLocations miCollect "
                           "icoEdit icoDelete miFind miTripSheet miReportFound miCopy icoReports");
        QTest::newRow("a trip, found")
            << 1 << 1 << "2003"
            << std::string("miExportTrips miImportTrips miExportLocations miImportLocations miCollect "
                           "icoAdd icoEdit miRepeat icoDelete miFind miTripSheet "
                           "miReportFound miCopy miCopyFound icoReports");
        QTest::newRow("a trip, not found")
            << 1 << 1 << "bream"
            << std::string("miExportTrips miImportTrips miExportLocations miImportLocations miCollect "
                           "icoAdd miFind icoReports");
        QTest::newRow("a trip, faulty query")
            << 1 << 1 << "foo:bar"
            << std::string("miExportTrips miImportTrips miExportLocations miImportLocations miCollect "
                           "icoAdd icoEdit miRepeat icoDelete miFind "
                           "miTripSheet miReportFound miCopy icoReports");
    }

    void enabled_dependsOnTheLog()
    {
        QFETCH(int, locations);
        QFETCH(int, trips);
        QFETCH(QString, query);
        QFETCH(std::string, enabled);
        TestProgram program;
        program.Start();
        if (locations > 0) {
            program.AddLocation("Pittwater");
        }
        if (trips > 0) {
            program.AddEntry({{EntryField::StartDate, "2003-02-05"}, {EntryField::LocNo, "1"}});
        }
        if (trips > 0 && locations == 0) {
            program.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
        }
        program.sql.Init(); // nothing to undo
        ShownLog window(program);
        if (!query.isEmpty()) {
            FindTrips(window, qPrintable(query));
        }
        QCOMPARE(Enabled(window), enabled);
    }

    void enabled_unreadableLog_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<std::string>("enabled");
        QTest::newRow("log") << "tarno.xml" << std::string();
        QTest::newRow("locations")
            << "location.xml"
            << std::string("miExportTrips icoEdit icoDelete miFind miTripSheet miReportFound miCopy "
                           "icoReports");
    }

    void enabled_unreadableLog()
    {
        QFETCH(QString, file);
        QFETCH(std::string, enabled);
        FourTrips program;
        program.folder.Write(file.toStdString(), "<data>");
        program.Start();
        if (file == QLatin1String("tarno.xml")) {
            program.reports.Expect("cSQL", "EntryList", ErrorNumber::ObjectNotSet);
        } else {
            program.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
            program.reports.Expect("cSQL", "LocationList", ErrorNumber::ObjectNotSet);
        }
        ShownLog window(program);
        QCOMPARE(Enabled(window), enabled);
    }

    void import_showsAndSelectsTheTrips_andIsUndoneAsOne()
    {
        FourTrips program;
        program.folder.Write("two.csv", "StartDate,Location\n2026-11-20,Pittwater\n2026-11-21,Pittwater\n");
        ShownLog window(program);
        program.files.ExpectOpen({.title = QStringLiteral("Import Trips"),
                                  .filter = QStringLiteral("Tables (*.csv *.txt *.tsv);;All files (*)"),
                                  .folder = FromUtf8(program.programFolder.GetAppPath() + '/'),
                                  .fileName = {}},
                                 FromUtf8(program.folder.PathOf("two.csv")));
        program.messages.ExpectInformation(
            QStringLiteral("2 trips imported. Edit > Undo takes the import back."), QStringLiteral("Tarno"));
        WhileOpen(
            "fImport", [&] { Press(window, Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier); },
            [](QDialog& import) { Click(import, "cmdImport"); });
        QCOMPARE(List(window).RowCount(), 6);
        QCOMPARE(ToUtf8(Command(window, "miUndo").text()), "&Undo Import of 2 trips");
        Press(window, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(List(window).RowCount(), 4);
        QCOMPARE(ToUtf8(Command(window, "miRedo").text()), "&Redo Import of 2 trips");
    }

    void export_opensFromTheFindBar()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "bream");
        auto& box = Find<QLineEdit>(window, "txtFind");
        box.setFocus();
        WhileOpen(
            "dlgExport", [&] { QTest::keyClick(&box, Qt::Key_E, Qt::ControlModifier); },
            [](QDialog& dialog) { Click(dialog, "cmdClose"); });
    }

    void statistics_narrowTheLogToAGroup()
    {
        FourTrips program;
        ShownLog window(program);
        Find<QLineEdit>(window, "txtFind").setText(QStringLiteral("date:2000.."));
        WhileOpen(
            "fStatistics", [&] { Press(window, Qt::Key_T, Qt::ControlModifier); },
            [](QDialog& statistics) {
                QCOMPARE(Find<QLineEdit>(statistics, "txtFind").text(), QStringLiteral("date:2000.."));
                auto& box = Find<QComboBox>(statistics, "cboGrouping");
                box.setCurrentIndex(box.findText(QStringLiteral("Year")));
                Press(statistics, Qt::Key_Return);
            });
        QVERIFY(Find<QWidget>(window, "queryBar").isVisible());
        QVERIFY(ToUtf8(Find<QLineEdit>(window, "txtFind").text()).starts_with("date:2000.. date:>="));
        QVERIFY(List(window).RowCount() > 0);
        QCOMPARE(window.focusWidget(), &List(window));
    }

    void statistics_closed_keepTheQueryOfTheLog()
    {
        FourTrips program;
        ShownLog window(program);
        WhileOpen(
            "fStatistics", [&] { Press(window, Qt::Key_T, Qt::ControlModifier); },
            [](QDialog& statistics) { Press(statistics, Qt::Key_Escape); });
        QVERIFY(!Find<QWidget>(window, "queryBar").isVisible());
    }

    void calendar_unreadableFile_isNotReportedAgain_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("log") << "tarno.xml";
        QTest::newRow("locations") << "location.xml";
    }

    void calendar_unreadableFile_isNotReportedAgain()
    {
        QFETCH(QString, file);
        FourTrips program;
        program.folder.Write(file.toStdString(), "<data>");
        program.Start();
        if (file == QLatin1String("tarno.xml")) {
            program.reports.Expect("cSQL", "EntryList", ErrorNumber::ObjectNotSet);
        } else {
            program.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
            program.reports.Expect("cSQL", "LocationList", ErrorNumber::ObjectNotSet);
        }
        ShownLog window(program);
        ErrorReporter::Instance().AllowRepetition(); // as after a while
        WhileOpen(
            "fCalendar", [&] { Press(window, Qt::Key_K, Qt::ControlModifier); },
            [](QDialog& calendar) { Click(calendar, "cmdClose"); });
        QVERIFY(List(window).isEnabled());
    }
};

TEST_CLASS(tst_Menus)
#include "tst_Menus.moc"
