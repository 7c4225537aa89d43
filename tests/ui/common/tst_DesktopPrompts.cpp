// The real message boxes, file dialogs, program starter and clock, which other tests replace with doubles.

#include "core/Error.h"
#include "support/Platform.h"
#include "support/RaisedNumber.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/common/DesktopPrompts.h"
#include "ui/common/SystemClock.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>

#include <map>
#include <optional>

using namespace Tarno;

namespace
{

QStringList Captions(const QMessageBox& box)
{
    QStringList captions;
    for (const QAbstractButton* button : box.buttons()) {
        captions << button->text().remove(QLatin1Char('&'));
    }
    captions.sort();
    return captions;
}

/// Asks `question`, runs `steps` in the box and returns the answer.
template <typename Steps>
Button Asked(const Question& question, Steps&& steps)
{
    Button answer = Button::Ok;
    WhileOpen(
        "QMessageBox", [&] { answer = DesktopMessageBoxes().Ask(nullptr, question); },
        [&](QDialog& dialog) {
            auto* box = qobject_cast<QMessageBox*>(&dialog);
            QVERIFY(box != nullptr);
            steps(*box);
        });
    return answer;
}

const std::map<Buttons, QStringList> captionsOf{
    {Buttons::Ok, {QStringLiteral("OK")}},
    {Buttons::YesNo, {QStringLiteral("No"), QStringLiteral("Yes")}},
    {Buttons::YesNoCancel, {QStringLiteral("Cancel"), QStringLiteral("No"), QStringLiteral("Yes")}},
    {Buttons::ContinueDiscardLater,
     {QStringLiteral("Continue"), QStringLiteral("Discard"), QStringLiteral("Later")}}};

} // namespace

Q_DECLARE_METATYPE(Icon)
Q_DECLARE_METATYPE(Button)
Q_DECLARE_METATYPE(Buttons)

class tst_DesktopPrompts : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    // native Windows dialogs have no controls that a test can find
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void box_showsTheQuestion_data()
    {
        QTest::addColumn<Icon>("icon");
        QTest::addColumn<int>("shown");
        QTest::addColumn<Buttons>("buttons");
        QTest::newRow("information") << Icon::Information << int(QMessageBox::Information) << Buttons::Ok;
        QTest::newRow("question, two answers")
            << Icon::Question << int(QMessageBox::Question) << Buttons::YesNo;
        QTest::newRow("question, three answers")
            << Icon::Question << int(QMessageBox::Question) << Buttons::YesNoCancel;
        QTest::newRow("question, own captions")
            << Icon::Question << int(QMessageBox::Question) << Buttons::ContinueDiscardLater;
        QTest::newRow("exclamation") << Icon::Exclamation << int(QMessageBox::Warning) << Buttons::Ok;
    }

    void box_showsTheQuestion()
    {
        QFETCH(Icon, icon);
        QFETCH(int, shown);
        QFETCH(Buttons, buttons);
        Asked({.text = QStringLiteral("<b>First</b>\r\nsecond line"),
               .title = QStringLiteral("Title"),
               .icon = icon,
               .buttons = buttons},
              [&](QMessageBox& box) {
                  QCOMPARE(box.windowTitle(), QStringLiteral("Title"));
                  QCOMPARE(box.text(), QStringLiteral("<b>First</b>\nsecond line"));
                  QCOMPARE(box.textFormat(), Qt::PlainText);
                  QCOMPARE(int(box.icon()), shown);
                  QCOMPARE(Captions(box), captionsOf.at(buttons));
                  box.reject();
              });
    }

    void box_enterReturnsTheDefault_data()
    {
        QTest::addColumn<Buttons>("buttons");
        QTest::addColumn<Button>("byDefault");
        QTest::newRow("ok") << Buttons::Ok << Button::Ok;
        QTest::newRow("yes") << Buttons::YesNo << Button::Yes;
        QTest::newRow("no") << Buttons::YesNoCancel << Button::No;
        QTest::newRow("cancel") << Buttons::YesNoCancel << Button::Cancel;
        QTest::newRow("continue") << Buttons::ContinueDiscardLater << Button::Continue;
        QTest::newRow("discard") << Buttons::ContinueDiscardLater << Button::Discard;
    }

    void box_enterReturnsTheDefault()
    {
        QFETCH(Buttons, buttons);
        QFETCH(Button, byDefault);
        QCOMPARE(Asked({.text = QStringLiteral("?"), .title = {}, .buttons = buttons, .byDefault = byDefault},
                       [](QMessageBox& box) { Press(box, Qt::Key_Return); }),
                 byDefault);
    }

    void box_escReturnsTheAnswerThatChangesNothing_data()
    {
        QTest::addColumn<Buttons>("buttons");
        QTest::addColumn<Button>("answer");
        QTest::newRow("ok") << Buttons::Ok << Button::Ok;
        QTest::newRow("yes and no") << Buttons::YesNo << Button::No;
        QTest::newRow("with cancel") << Buttons::YesNoCancel << Button::Cancel;
        QTest::newRow("with later") << Buttons::ContinueDiscardLater << Button::Later;
    }

    void box_escReturnsTheAnswerThatChangesNothing()
    {
        QFETCH(Buttons, buttons);
        QFETCH(Button, answer);
        QCOMPARE(
            Asked({.text = QStringLiteral("?"), .title = {}, .buttons = buttons, .byDefault = Button::Yes},
                  [](QMessageBox& box) { Press(box, Qt::Key_Escape); }),
            answer);
    }

    void ownButton_returnsItsAnswer_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<Button>("answer");
        QTest::newRow("continue") << QStringLiteral("Continue") << Button::Continue;
        QTest::newRow("discard") << QStringLiteral("Discard") << Button::Discard;
        QTest::newRow("later") << QStringLiteral("Later") << Button::Later;
    }

    void ownButton_returnsItsAnswer()
    {
        QFETCH(QString, caption);
        QFETCH(Button, answer);
        QCOMPARE(Asked({.text = QStringLiteral("?"),
                        .title = {},
                        .buttons = Buttons::ContinueDiscardLater,
                        .byDefault = Button::Continue},
                       [&](QMessageBox& box) {
                           for (QAbstractButton* button : box.buttons()) {
                               if (button->text().remove(QLatin1Char('&')) == caption) {
                                   Click(*button);
                               }
                           }
                       }),
                 answer);
    }

    void openDialog_returnsTheChosenFile()
    {
        const TemporaryFolder folder;
        folder.Write("catch.png", "x");
        const QString path = QString::fromStdString(folder.PathOf("catch.png"));
        std::optional<QString> chosen;
        WhileOpen(
            "QFileDialog",
            [&] {
                chosen = DesktopFileDialogs().Open(
                    nullptr, {.title = QStringLiteral("Select"),
                              .filter = QStringLiteral("Pictures (*.png);;All Files (*)"),
                              .folder = QString::fromStdString(folder.Path()),
                              .fileName = QStringLiteral("Image Files")});
            },
            [&](QDialog& dialog) {
                auto* files = qobject_cast<QFileDialog*>(&dialog);
                QVERIFY(files != nullptr);
                QCOMPARE(files->windowTitle(), QStringLiteral("Select"));
                QCOMPARE(files->nameFilters().size(), 2);
                QCOMPARE(files->directory(), QDir(QString::fromStdString(folder.Path())));
                auto& name = Find<QLineEdit>(dialog, "fileNameEdit");
                QCOMPARE(name.text(), QStringLiteral("Image Files"));
                name.setText(path);
                Press(dialog, Qt::Key_Return);
            });
        QCOMPARE(chosen, std::optional(path));
    }

    void saveDialog_existingFile_isAcceptedWithoutAQuestion()
    {
        const TemporaryFolder folder;
        folder.Write("log.rtf", "old");
        std::optional<QString> chosen;
        WhileOpen(
            "QFileDialog",
            [&] {
                chosen = DesktopFileDialogs().Save(nullptr, {.title = QStringLiteral("Save"),
                                                             .filter = QStringLiteral("Rich Text (*.rtf)"),
                                                             .folder = QString::fromStdString(folder.Path()),
                                                             .fileName = QStringLiteral("RTF Files"),
                                                             .suffix = QStringLiteral(".rtf")});
            },
            [&](QDialog& dialog) {
                auto& name = Find<QLineEdit>(dialog, "fileNameEdit");
                QVERIFY(name.text().startsWith(QLatin1String("RTF Files")));
                name.setText(QString::fromStdString(folder.PathOf("log")));
                Press(dialog, Qt::Key_Return);
            });
        QCOMPARE(chosen, std::optional(QString::fromStdString(folder.PathOf("log.rtf"))));
        QCOMPARE(folder.Read("log.rtf"), "old");
    }

    void folderDialog_returnsTheChosenFolder()
    {
        const TemporaryFolder folder;
        folder.MakeFolder("backups");
        const QString path = QDir::toNativeSeparators(QString::fromStdString(folder.PathOf("backups")));
        std::optional<QString> chosen;
        WhileOpen(
            "QFileDialog",
            [&] {
                chosen = DesktopFileDialogs().ChooseFolder(nullptr, QStringLiteral("Choose"),
                                                           QString::fromStdString(folder.Path()));
            },
            [&](QDialog& dialog) {
                auto* files = qobject_cast<QFileDialog*>(&dialog);
                QVERIFY(files != nullptr);
                QCOMPARE(files->windowTitle(), QStringLiteral("Choose"));
                QCOMPARE(files->fileMode(), QFileDialog::Directory);
                QCOMPARE(files->directory(), QDir(QString::fromStdString(folder.Path())));
                Find<QLineEdit>(dialog, "fileNameEdit").setText(path);
                Press(dialog, Qt::Key_Return);
            });
        QCOMPARE(chosen, std::optional(path));
    }

    void fileDialogs_cancelled_returnNothing()
    {
        const FileQuestion nothing{.title = {}, .filter = {}, .folder = {}, .fileName = {}};
        std::optional<QString> chosen = QStringLiteral("something");
        const auto escape = [](QDialog& dialog) { Press(dialog, Qt::Key_Escape); };
        WhileOpen(
            "QFileDialog", [&] { chosen = DesktopFileDialogs().Open(nullptr, nothing); }, escape);
        QVERIFY(!chosen);
        chosen = QStringLiteral("something");
        WhileOpen(
            "QFileDialog", [&] { chosen = DesktopFileDialogs().Save(nullptr, nothing); }, escape);
        QVERIFY(!chosen);
        chosen = QStringLiteral("something");
        WhileOpen(
            "QFileDialog", [&] { chosen = DesktopFileDialogs().ChooseFolder(nullptr, {}, {}); }, escape);
        QVERIFY(!chosen);
    }

    void program_isStartedInItsFolderWithoutWaiting()
    {
        NOT_ON_WINDOWS("shell scripts");
        const TemporaryFolder folder;
        folder.Write("tides", "#!/bin/sh\npwd > half; mv half started\n"
                              "until [ -e go ]; do sleep 0.02; done; touch ended\n");
        QFile::setPermissions(QString::fromStdString(folder.PathOf("tides")),
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        DesktopProgramStarter().Start(QString::fromStdString(folder.PathOf("tides")), {});
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(QString::fromStdString(folder.PathOf("started"))),
                                 awaitTimeout);
        QCOMPARE(folder.Read("started"), folder.Path() + "\n");
        folder.Write("go", ""); // lets it end
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(QString::fromStdString(folder.PathOf("ended"))), awaitTimeout);
    }

#ifdef Q_OS_WIN
    void windowsProgram_isStartedInItsFolderWithoutWaiting()
    {
        const TemporaryFolder folder;
        folder.MakeFolder("WX Tide");
        const QString path = QString::fromStdString(folder.PathOf("WX Tide/h\u0101 tides.exe"));
        QVERIFY(QFile::copy(QCoreApplication::applicationDirPath() + QStringLiteral("/notepad.exe"), path));
        DesktopProgramStarter().Start(path, {});
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(QString::fromStdString(folder.PathOf("WX Tide/started.txt"))),
                                 awaitTimeout);
        const auto record =
            QString::fromStdString(folder.Read("WX Tide/started.txt")).split(QLatin1Char('\n'));
        QCOMPARE(record[0].trimmed(), QLatin1Char('"') + QDir::toNativeSeparators(path) + QLatin1Char('"'));
        QCOMPARE(QDir(record[1]), QFileInfo(path).dir());
    }

    // Windows searches the folder of the test program first, so it finds this notepad.exe
    void notepad_getsThePathUnquoted()
    {
        const QString record = QCoreApplication::applicationDirPath() + QStringLiteral("/started.txt");
        QFile::remove(record);
        DesktopProgramStarter().EditText(QStringLiteral("C:\\My \"Log\"\\h\u0101puku & Co\\Bait.txt"));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(record), awaitTimeout);
        QFile file(record);
        QVERIFY(file.open(QFile::ReadOnly));
        QCOMPARE(QString::fromUtf8(file.readLine()),
                 QStringLiteral("notepad.exe C:\\My \"Log\"\\h\u0101puku & Co\\Bait.txt\n"));
    }
#endif

    void folder_isOpenedByTheFileManager()
    {
        NOT_ON_WINDOWS("shell scripts");
        const TemporaryFolder desktop;
        desktop.Write("xdg-open", "#!/bin/sh\nfor argument; do echo \"$argument\"; done > \"$0.half\"\n"
                                  "mv \"$0.half\" \"$0.opened\"\n");
        QFile::setPermissions(QString::fromStdString(desktop.PathOf("xdg-open")),
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        const QByteArray path = qgetenv("PATH");
        const auto restorePath = qScopeGuard([&path] { qputenv("PATH", path); });
        qputenv("PATH", QByteArray::fromStdString(desktop.Path()) + ':' + path);
        const TemporaryFolder folder;
        folder.MakeFolder("the reports; of 2003");
        DesktopProgramStarter().OpenFolder(QString::fromStdString(folder.PathOf("the reports; of 2003")));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(QString::fromStdString(desktop.PathOf("xdg-open.opened"))),
                                 awaitTimeout);
        QCOMPARE(desktop.Read("xdg-open.opened"), folder.PathOf("the reports; of 2003") + "\n");
    }

    void program_missing_isFileNotFound()
    {
        DesktopProgramStarter starter;
        QCOMPARE(RaisedNumber([&] { starter.Start(QStringLiteral("/no/such/program; touch /tmp/x"), {}); }),
                 53);
        QCOMPARE(RaisedNumber([&] { starter.OpenFolder(QStringLiteral("/no/such/folder")); }), 53);
        NOT_ON_WINDOWS("an editor that does not create a missing file");
        QCOMPARE(RaisedNumber([&] { starter.EditText(QStringLiteral("/no/such/Bait.txt")); }), 53);
    }

    void textFile_missing_isNamedWithItsFolder()
    {
        NOT_ON_WINDOWS("an editor that does not create a missing file");
        std::string message;
        try {
            DesktopProgramStarter().EditText(QStringLiteral("/no/such/Bait.txt"));
        } catch (const Error& error) {
            message = error.Description();
        }
        QVERIFY2(message.find("\"Bait.txt\"") != std::string::npos, message.c_str());
        QVERIFY2(message.find(" /no/such.") != std::string::npos, message.c_str());
    }

    void clock_returnsTheLocalDateInTheShortFormat()
    {
        const SystemClock clock;
        const QDate before = QDate::currentDate();
        const auto today = clock.Today();
        const std::string text = clock.ShortDate();
        if (QDate::currentDate() != before) {
            QSKIP("the date changed during the test");
        }
        QCOMPARE(QDate(int(today.year()), int(unsigned(today.month())), int(unsigned(today.day()))), before);
        QCOMPARE(text, QLocale::system().toString(before, QLocale::ShortFormat).toStdString());
    }

    void clock_returnsTheTimeWithoutSeconds()
    {
        const QLocale locale = QLocale::system();
        const QString format = WithoutSeconds(locale.timeFormat(QLocale::ShortFormat));
        const QTime before = QTime::currentTime();
        const QString text = QString::fromStdString(SystemClock().ShortTime());
        const QTime after = QTime::currentTime();
        QVERIFY(!text.isEmpty());
        QVERIFY(text == locale.toString(before, format) || text == locale.toString(after, format));
    }

    void seconds_areRemovedFromATimeFormat_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* format, const char* expected) {
            QTest::newRow(format) << QString::fromUtf8(format) << QString::fromUtf8(expected);
        };
        row("HH:mm", "HH:mm");
        row("HH:mm:ss", "HH:mm");
        row("h:mm:ss AP", "h:mm AP");
        row("HH.mm.ss.zzz t", "HH.mm t");
        row("HH 'h' mm 'min' ss 's'", "HH 'h' mm 'min'");
        row("H'h'mm'm'ss's'", "H'h'mm'm'");
        row("'kl. is' HH:mm", "'kl. is' HH:mm");
    }

    void seconds_areRemovedFromATimeFormat()
    {
        QFETCH(QString, format);
        QTEST(WithoutSeconds(format), "expected");
    }

    void seconds_areInNoLocalesTime()
    {
        for (const QLocale& locale :
             QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory)) {
            const QString format = WithoutSeconds(locale.timeFormat(QLocale::ShortFormat));
            QCOMPARE(locale.toString(QTime(9, 7, 5), format), locale.toString(QTime(9, 7, 48), format));
            QVERIFY(locale.toString(QTime(9, 7), format) != locale.toString(QTime(9, 8), format));
        }
    }
};

TEST_CLASS(tst_DesktopPrompts)
#include "tst_DesktopPrompts.moc"
