#include "app/mStart.h"
#include "support/DraftTest.h"
#include "support/Platform.h"
#include "support/TestClass.h"

#include <QDir>
#include <QMessageBox>
#include <QPushButton>

using namespace Tarno;

// The start of the program: after the splash screen, it asks about the drafts of this log.

namespace
{

/// The program starts with the log in `folder` and ends after its first message box. Returns the text of that
/// box, which is answered with the button `caption`, or "no message".
QString FirstMessage(const TemporaryFolder& folder, const QString& caption)
{
    QString text;
    QTimer driver;
    QObject::connect(&driver, &QTimer::timeout, &driver, [&] {
        QWidget* window = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(window); box != nullptr) {
            text = box->text();
            for (QAbstractButton* button : box->buttons()) {
                if (button->text().remove(QLatin1Char('&')) == caption) {
                    button->click();
                }
            }
        } else if (window != nullptr) {
            Find<QPushButton>(*window, "cmdOK").click(); // of the splash screen
        } else if (!text.isEmpty()) {
            QCoreApplication::exit(); // unlike quit, does not close the windows, which would ask
        }
    });
    driver.start(0);
    mStart::Main({FromUtf8(folder.Path())});
    return text;
}

} // namespace

class tst_mStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QApplication::setQuitOnLastWindowClosed(false);
    }

    void start_asksAboutADraft_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<bool>("isKept");
        QTest::newRow("later") << QStringLiteral("Later") << true;
        QTest::newRow("discard") << QStringLiteral("Discard") << false;
    }

    void start_asksAboutADraft()
    {
        NOT_ON_WINDOWS("the folder of the settings cannot be replaced");
        QFETCH(QString, caption);
        QFETCH(bool, isKept);
        TestProgram program;
        program.Start();
        qputenv("XDG_CONFIG_HOME", program.stateFolder.Path().c_str());
        program.stateFolder.MakeFolder("tarno-state");
        Drafts drafts(program.stateFolder.PathOf("tarno-state/drafts"), program.draftOperations);
        Record trip;
        program.sql.EntryGet(0, trip);
        Draft draft{RecordTitle::Kind::Trip,   "0", LogOfDrafts(program.program), "2003-02-05 21:00",
                    StoredTexts(trip.Count()), {}};
        draft.values[0] = "0";
        draft.values[EntryField::StartDate] = "2003-02-05";
        drafts.Write(draft);
        QCOMPARE(FirstMessage(program.folder, caption),
                 QStringLiteral("You were adding a trip (2003-02-05) when Tarno ended. Continue?"));
        QCOMPARE(drafts.List(draft.dataFolder).size(), std::size_t{isKept ? 1U : 0U});
    }
};

TEST_CLASS(tst_mStart)
#include "tst_mStart.moc"
