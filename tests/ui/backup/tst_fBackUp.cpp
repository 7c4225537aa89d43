// The window that shows the back-ups and makes new ones.

#include "BackUpTest.h"
#include "support/TestClass.h"
#include "ui/backup/fBackUp.h"

#include <QPushButton>

using namespace Tarno;
using namespace std::chrono_literals;
using namespace std::string_literals;

namespace
{

/// The window on the screen.
class ShownBackUps : public fBackUp
{
public:
    explicit ShownBackUps(const TestProgram& program) : fBackUp(program.program, nullptr)
    {
        show();
        AwaitActive(*this);
    }
};

/// Returns the rows without their sizes.
Texts Made(const QWidget& window)
{
    Texts rows = Rows(window, "lvwBackUps");
    for (std::string& row : rows) {
        row.erase(row.rfind(" | "));
    }
    return rows;
}

const std::string name = "tarno-2003-02-05-2107.zip"; // by the clock of the test

/// Chooses the folder for back-ups, and expects that it is missing when one is made.
void ExpectMissing(ProgramWithPicture& program, const std::string& folder)
{
    program.windows.SetBackUpFolder(program.Log(), FromUtf8(folder));
    program.ExpectProblem("The back-up could not be made: " + FromPath(ToPath(folder) / name) +
                              "\r\nThe folder does not exist. Its drive may not be connected.",
                          "Back-up Error");
}

} // namespace

class tst_fBackUp : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void window_showsTheBackUpsThatAreThere()
    {
        ProgramWithPicture program;
        program.folder.MakeFolder("backups");
        program.folder.Write("backups/tarno-2026-11-20-1905.zip", std::string(2'100'000, 'x'));
        program.folder.Write("backups/tarno-2026-11-22-1830-before-restore.zip", "x");
        program.folder.Write("backups/tarno-2026-11-21-0712-automatic.zip", std::string(1500, 'x'));
        program.folder.Write("backups/notes.txt", "x");
        const ShownBackUps window(program);
        QCOMPARE(LabelText(window, "lblFolder"),
                 "Folder: " + ToUtf8(program.windows.BackUpFolder(program.Log())));
        QCOMPARE(Rows(window, "lvwBackUps"),
                 (Texts{"2026-11-22 18:30 | Before a restore | 1 bytes",
                        "2026-11-21 07:12 | Automatic | 1.5 kB", "2026-11-20 19:05 | By hand | 2.1 MB"}));
        QCOMPARE(window.focusWidget(), &Find<QWidget>(window, "cmdBackUp"));
    }

    void sizes_areSortedAsNumbers()
    {
        ProgramWithPicture program;
        program.folder.MakeFolder("backups");
        program.folder.Write("backups/tarno-2026-11-20-1905.zip", std::string(2'100'000, 'x'));
        program.folder.Write("backups/tarno-2026-11-21-0712-automatic.zip", std::string(900'000, 'x'));
        const ShownBackUps window(program);
        Find<SortableList>(window, "lvwBackUps").model()->sort(2);
        QCOMPARE(Made(window), (Texts{"2026-11-21 07:12 | Automatic", "2026-11-20 19:05 | By hand"}));
    }

    void noBackUps_areExplained()
    {
        ProgramWithPicture program;
        const ShownBackUps window(program);
        QCOMPARE(ToUtf8(Find<QWidget>(window, "lvwBackUps").accessibleDescription()),
                 "There is no back-up in this folder yet."s);
    }

    void backUp_createsTheFolderOfTheLog_andPacksThePictures()
    {
        ProgramWithPicture program;
        const std::string path =
            program.folder.PathOf("backups") + program.programFolder.PathOf("").back() + name;
        program.ExpectInformation("Your log was backed up with 1 picture:\r\n" + path);
        const ShownBackUps window(program);
        Click(window, "cmdBackUp");
        QCOMPARE(Made(window), Texts{"2003-02-05 21:07 | By hand"});
        const BackUpArchive made(path);
        QCOMPARE(made.Trips().size(), std::size_t{2});
        QCOMPARE(made.PictureCount(), std::size_t{1});
        QCOMPARE(made.Time(), "2003-02-05 21:07"s);
    }

    void secondOne_isAddedAndSelected()
    {
        ProgramWithPicture program;
        program.folder.MakeFolder("backups");
        program.folder.Write("backups/" + name, "x");
        const std::string path =
            FromPath(ToPath(program.folder.PathOf("backups")) / "tarno-2003-02-05-2107-2.zip");
        program.ExpectInformation("Your log was backed up without its pictures:\r\n" + path);
        const ShownBackUps window(program);
        Click(window, "chkPictures");
        Click(window, "cmdBackUp");
        QCOMPARE(Made(window), (Texts{"2003-02-05 21:07 | By hand", "2003-02-05 21:07 | By hand"}));
        QCOMPARE(Find<SortableList>(window, "lvwBackUps").SelectedKey(),
                 std::optional(QStringLiteral("tarno-2003-02-05-2107-2.zip")));
        QCOMPARE(program.folder.Read("backups/" + name), "x"s);
        QCOMPARE(BackUpArchive(path).PictureCount(), std::size_t{0});
    }

    void missingPictures_areNamed()
    {
        ProgramWithPicture program;
        program.AddTrip("2026-11-04", "pictures/gone.jpg");
        const std::string path = FromPath(ToPath(program.folder.PathOf("backups")) / name);
        program.ExpectInformation("Your log was backed up with 1 picture:\r\n" + path +
                                  "\r\n\r\nThese pictures do not exist or cannot be read, so they are not in "
                                  "the back-up:\r\npictures/gone.jpg");
        const ShownBackUps window(program);
        Click(window, "cmdBackUp");
    }

    void unsavedChanges_areMentioned()
    {
        ProgramWithPicture program;
        program.folder.MakeFolder("backups");
        program.operations.Fail("create", ErrorNumber::DiskFull);
        program.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::DiskFull);
        program.AddTrip("2026-11-05", "");
        const std::string path = FromPath(ToPath(program.folder.PathOf("backups")) / name);
        program.ExpectInformation("Your log was backed up with 1 picture:\r\n" + path +
                                  "\r\n\r\nChanges that could not be saved yet are not in the back-up.");
        const ShownBackUps window(program);
        Click(window, "cmdBackUp");
    }

    void otherFolder_isRemembered()
    {
        ProgramWithPicture program;
        const TemporaryFolder stick;
        stick.Write("tarno-2026-11-20-1905.zip", "x");
        const QString chosen = FromUtf8(stick.Path());
        program.files.ExpectChooseFolder(QStringLiteral("Folder for Back-ups"),
                                         program.windows.BackUpFolder(program.Log()), chosen);
        program.ExpectInformation("Your log was backed up with 1 picture:\r\n" +
                                  FromPath(ToPath(stick.Path()) / name));
        const ShownBackUps window(program);
        Click(window, "cmdFolder");
        QCOMPARE(LabelText(window, "lblFolder"), "Folder: " + ToUtf8(chosen));
        QCOMPARE(Made(window), Texts{"2026-11-20 19:05 | By hand"});
        QCOMPARE(program.windows.BackUpFolder(program.Log()), chosen);
        Click(window, "cmdBackUp");
        QCOMPARE(static_cast<int>(Made(window).size()), 2);
    }

    void folderQuestion_cancelled_changesNothing()
    {
        ProgramWithPicture program;
        const QString usual = program.windows.BackUpFolder(program.Log());
        program.files.ExpectChooseFolder(QStringLiteral("Folder for Back-ups"), usual, std::nullopt);
        const ShownBackUps window(program);
        Click(window, "cmdFolder");
        QCOMPARE(program.windows.BackUpFolder(program.Log()), usual);
    }

    void missingFolder_isNotCreatedElsewhere()
    {
        ProgramWithPicture program;
        const TemporaryFolder drive;
        const std::string stick = drive.PathOf("stick");
        ExpectMissing(program, stick);
        const ShownBackUps window(program);
        Click(window, "cmdBackUp");
        QVERIFY(!std::filesystem::exists(ToPath(stick)));
    }

    void disappearedFolder_leavesAnEmptyList()
    {
        ProgramWithPicture program;
        const TemporaryFolder drive;
        drive.MakeFolder("stick");
        drive.Write("stick/tarno-2026-11-20-1905.zip", "x");
        const std::string stick = drive.PathOf("stick");
        ExpectMissing(program, stick);
        const ShownBackUps window(program);
        QCOMPARE(Made(window), Texts{"2026-11-20 19:05 | By hand"});
        std::filesystem::remove_all(ToPath(stick));
        Click(window, "cmdBackUp");
        QCOMPARE(Made(window), Texts());
    }

    void choiceThatCannotBeStored_isTold()
    {
        ProgramWithPicture program;
        program.stateFolder.MakeFolder("windows.ini"); // nothing can be stored there
        const QString usual = program.windows.BackUpFolder(program.Log());
        const TemporaryFolder stick;
        program.files.ExpectChooseFolder(QStringLiteral("Folder for Back-ups"), usual,
                                         FromUtf8(stick.Path()));
        program.ExpectProblem(
            "Your choice could not be stored among your settings. Back-ups still go to this "
            "folder:\r\n" +
                ToUtf8(usual),
            "Back-up Error");
        const ShownBackUps window(program);
        Click(window, "cmdFolder");
        QCOMPARE(LabelText(window, "lblFolder"), "Folder: " + ToUtf8(usual));
    }

    void enter_makesABackUp()
    {
        ProgramWithPicture program;
        program.ExpectInformation("Your log was backed up with 1 picture:\r\n" +
                                  FromPath(ToPath(program.folder.PathOf("backups")) / name));
        ShownBackUps window(program);
        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
        QCOMPARE(Made(window), Texts{"2003-02-05 21:07 | By hand"});
    }

    void failure_isExplained_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<std::string>("reason");
        QTest::newRow("full") << int(ErrorNumber::DiskFull) << "The disk is full."s;
        QTest::newRow("read-only") << int(ErrorNumber::PathFileAccess)
                                   << "You may not read or write there, or the disk is read-only."s;
        QTest::newRow("broken") << int(ErrorNumber::DeviceInputOutput)
                                << "The disk could not be read or written."s;
    }

    void failure_isExplained()
    {
        QFETCH(int, number);
        QFETCH(std::string, reason);
        ProgramWithPicture program;
        program.folder.MakeFolder("backups");
        program.operations.Fail("sync file", ErrorNumber(number));
        program.ExpectProblem("The back-up could not be made: " +
                                  FromPath(ToPath(program.folder.PathOf("backups")) / name) + "\r\n" + reason,
                              "Back-up Error");
        const ShownBackUps window(program);
        Click(window, "cmdBackUp");
        QCOMPARE(Made(window), Texts());
        QVERIFY(NamesIn(program.folder.PathOf("backups")).empty());
    }

    void damagedLog_isExplained()
    {
        ProgramWithPicture program;
        program.folder.MakeFolder("backups");
        program.folder.Write("location.xml", "<data>");
        program.ExpectProblem(
            "The back-up could not be made: " + FromPath(ToPath(program.folder.PathOf("backups")) / name) +
                "\r\nlocation.xml cannot be read: Line 1, column 6: Start-end tags "
                "mismatch.\nNothing was backed up.",
            "Back-up Error");
        const ShownBackUps window(program);
        Click(window, "cmdBackUp");
        QCOMPARE(Made(window), Texts());
    }

    void cancel_makesNoBackUp()
    {
        ProgramWithPicture program;
        program.folder.MakeFolder("backups");
        const ShownBackUps window(program);
        program.clock.step = 1s; // the progress appears at once
        WhileOpen(
            "dlgWait", [&] { Click(window, "cmdBackUp"); },
            [](QDialog& wait) { Press(wait, Qt::Key_Escape); });
        QCOMPARE(Made(window), Texts());
        QVERIFY(NamesIn(program.folder.PathOf("backups")).empty());
    }
};

TEST_CLASS(tst_fBackUp)
#include "tst_fBackUp.moc"
