#include "EveryOperation.h"
#include "safety/Form.h"
#include "support/TestClass.h"
#include "ui/entry/EntryTest.h"
#include "ui/locations/dlgLocMaint.h"
#include "ui/locations/fLocs.h"
#include "ui/main/fTarno.h"
#include "ui/reports/fRptLog.h"

#include <QListWidget>

#include <optional>

using namespace Tarno;

// The windows on a log with one damaged file: each window opens or reports why not, and nothing done in them
// changes the damaged file.

using namespace std::string_literals;

namespace
{

/// Answers every question with the default button.
class Answers final : public MessageBoxes
{
public:
    Button Ask(QWidget* /*parent*/, const Question& question) override { return question.byDefault; }
};

/// The sample log in a folder of its own. Messages are recorded and closed.
class DamagedProgram : public TestProgram
{
public:
    DamagedProgram()
    {
        UseSample();
        ErrorReporter::Instance().SetShowMessage(
            [this](const std::string& text, const std::string& /*title*/) {
                shownMessages.push_back(text);
                ErrorReporter::Instance().AllowRepetition();
            });
    }

    Answers answers;
    std::vector<std::string> shownMessages;
    const Program autoAnswered{programFolder, sql,      descs,    settings,   clock,   answers,
                               files,         programs, printers, operations, windows, drafts};
};

/// Runs `open`. In each modal window that it opens, runs `steps` and closes the window.
template <typename Open, typename Steps>
void RunInDialogs(Open&& open, Steps&& steps)
{
    QTimer driver;
    QObject::connect(&driver, &QTimer::timeout, &driver, [&] {
        auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (window != nullptr) {
            driver.stop();
            AwaitActive(*window);
            steps(*window);
            window->done(QDialog::Rejected);
            driver.start(0);
        }
    });
    driver.start(0);
    open();
}

void TypeAndSave(QWidget& window, const char* box)
{
    if (auto* lines = window.findChild<QPlainTextEdit*>(QLatin1String(box)); lines != nullptr) {
        lines->setPlainText(QStringLiteral("typed"));
    } else {
        Find<QLineEdit>(window, box).setText(QStringLiteral("typed"));
    }
    Find<QAbstractButton>(window, "cmdOK").click();
}

/// Opens all windows and types and saves in each of them.
void UseEveryWindow(const DamagedProgram& log)
{
    fTarno mainWindow(log.autoAnswered);
    mainWindow.show();
    AwaitActive(mainWindow);
    for (const std::int16_t key : {0, 1}) {
        RunInDialogs([&] { fEntry(log.autoAnswered, &mainWindow).SetData(key, false); },
                     [](QWidget& window) { TypeAndSave(window, "txtAirTemp"); });
        RunInDialogs([&] { dlgLocMaint(log.autoAnswered, &mainWindow).SetData(key, false); },
                     [](QWidget& window) { TypeAndSave(window, "txtLocName"); });
    }
    fEntry(log.autoAnswered, &mainWindow).SetData(2, true);
    dlgLocMaint(log.autoAnswered, &mainWindow).SetData(2, true);
    RunInDialogs([&] { fLocs(log.autoAnswered, &mainWindow).exec(); }, [](QWidget&) {});
    RunInDialogs([&] { fRptLog(log.autoAnswered, &mainWindow).exec(); },
                 [](QWidget& window) {
                     for (const char* button : {"cmdMoveAll", "cmdBack", "cmdUp", "cmdSave", "cmdSavedOK"}) {
                         window.findChild<QAbstractButton*>(QLatin1String(button))->click();
                         if (auto* name = window.findChild<QLineEdit*>(QStringLiteral("txtSaved"))) {
                             name->setText(QStringLiteral("typed"));
                         }
                     }
                 });
}

/// The bytes of a damaged file, or none for a folder in its place.
struct Damage {
    const char* name;
    std::optional<std::string> bytes;
};

const std::vector<Damage>& Damages()
{
    static const std::vector<Damage> all{
        {"zeros", std::string(4096, '\0')},
        {"empty", ""s},
        {"cut off", "<data>\n\t<tarno>\n\t\t<TarnoNo>1</Tar"s},
        {"another root", "<settings2 />\n"s},
        {"no UTF-8", "<data>\xE9\xFF</data>\n"s},
        {"one line", std::string(static_cast<std::size_t>(Times(100'000, 10'000'000)), 'x')},
        {"a folder", std::nullopt},
    };
    return all;
}

void Put(const TemporaryFolder& folder, const std::string& file, const Damage& damage)
{
    std::filesystem::remove(ToPath(folder.PathOf(file)));
    if (damage.bytes) {
        folder.Write(file, *damage.bytes);
    } else {
        folder.MakeFolder(file);
    }
}

/// Returns whether the damaged file is unchanged.
bool IsUntouched(const TemporaryFolder& folder, const std::string& file, const Damage& damage)
{
    return damage.bytes ? folder.Read(file) == *damage.bytes
                        : std::filesystem::is_empty(ToPath(folder.PathOf(file)));
}

/// Adds a row for each damage to each file; in the short form, only for every `stride`-th combination.
void AddDamages(const std::vector<std::string>& files, int stride = 1)
{
    QTest::addColumn<std::string>("file");
    QTest::addColumn<int>("index");
    int turn = 0;
    for (const std::string& file : files) {
        for (int index = 0; index < static_cast<int>(Damages().size()); ++index) {
            if (turn++ % Times(stride, 1) != 0) {
                continue;
            }
            QTest::newRow((file + ": " + Damages()[static_cast<std::size_t>(index)].name).c_str())
                << file << index;
        }
    }
}

} // namespace

class tst_DamagedStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void damagedDataFile_isReportedAndNeverOverwritten_data()
    {
        AddDamages({dataFiles.begin(), dataFiles.end()}, 3);
    }

    void damagedDataFile_isReportedAndNeverOverwritten()
    {
        QFETCH(std::string, file);
        QFETCH(int, index);
        const Damage& damage = Damages()[static_cast<std::size_t>(index)];
        DamagedProgram log;
        Put(log.folder, file, damage);
        const std::vector<std::string> names = log.folder.Names();
        log.Start();
        UseEveryWindow(log);
        QVERIFY(!log.shownMessages.empty());
        QVERIFY(IsUntouched(log.folder, file, damage));
        for (const std::string other : dataFiles) {
            if (other != file) {
                QCOMPARE(other + ": " + ReadXml(log.folder.Read(other)).fault, other + ": ");
            }
        }
        QCOMPARE(log.folder.Names(), names);
    }

    void damagedPickList_opensOrStaysClosed_data()
    {
        AddDamages({"Bait.txt", "Species.txt", "Methods.txt"}, 2);
    }

    void damagedPickList_opensOrStaysClosed()
    {
        QFETCH(std::string, file);
        QFETCH(int, index);
        const Damage& damage = Damages()[static_cast<std::size_t>(index)];
        DamagedProgram log;
        Put(log.folder, file, damage);
        log.Start();
        RunInDialogs(
            [&] { fEntry(log.autoAnswered, nullptr).SetData(1, false); },
            [&](QWidget& editor) {
                for (const char* label : {"lblDDBait", "lblDDTarget", "lblDDCaught", "lblDDMethods"}) {
                    GoTo(editor, label);
                    auto& list = Find<QListWidget>(editor, "lstList");
                    if (list.isVisible()) {
                        QVERIFY(list.count() > 0);
                        Press(editor, Qt::Key_Escape);
                    }
                    QVERIFY(!list.isVisible());
                }
                QVERIFY(editor.isVisible());
                TypeAndSave(editor, "txtAirTemp");
            });
        QCOMPARE(log.StoredEntry(1, EntryField::AirTemp), "typed"s);
        QCOMPARE(log.shownMessages, std::vector<std::string>());
        QVERIFY(IsUntouched(log.folder, file, damage));
    }

    void damagedSettings_countAsEmpty_data() { AddDamages({"settings.xml"}); }

    void damagedSettings_countAsEmpty()
    {
        QFETCH(std::string, file);
        QFETCH(int, index);
        const Damage& damage = Damages()[static_cast<std::size_t>(index)];
        DamagedProgram log;
        Put(log.folder, file, damage);
        log.Start();
        log.settings.SaveSetting("KOWRA", "XTidePath", log.folder.PathOf("Bait.txt"));
        QCOMPARE(log.settings.GetSetting("KOWRA", "XTidePath", "none"), "none"s);
        UseEveryWindow(log);
        QCOMPARE(log.shownMessages, std::vector<std::string>());
        QVERIFY(IsUntouched(log.folder, file, damage));
    }
};

TEST_CLASS(tst_DamagedStart)
#include "tst_DamagedStart.moc"
