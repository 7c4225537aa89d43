// The manual: its pages, links and pictures, and the key that opens it.

#include "qt/Strings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/common/RememberedWindows.h"
#include "ui/help/fHelp.h"

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QRegularExpression>
#include <QTextBrowser>

using namespace Tarno;

namespace
{

QString Page(const QString& name)
{
    QFile file(QStringLiteral(":/manual/") + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList Targets(const QString& page, const char* attribute)
{
    QStringList targets;
    const QRegularExpression pattern(QLatin1String(attribute) + QStringLiteral("=\"([^\"]+)\""));
    for (auto match = pattern.globalMatch(page); match.hasNext();) {
        targets << match.next().captured(1);
    }
    return targets;
}

QStringList Pages()
{
    return QDir(QStringLiteral(":/manual")).entryList({QStringLiteral("*.html")});
}

/// A visible, active window.
class ActiveWindow : public QDialog
{
public:
    explicit ActiveWindow(const char* name)
    {
        setObjectName(QLatin1String(name));
        show();
        AwaitActive(*this);
    }

    fHelp* Help() const { return findChild<fHelp*>(); }

    QString ShownPage() const
    {
        return Help() == nullptr ? QString() : Help()->findChild<QTextBrowser*>()->source().fileName();
    }
};

} // namespace

class tst_fHelp : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        const fHelp manual(nullptr); // registers the pages
        QVERIFY(Pages().size() >= 10);
    }

    void page_existsForEachWindow_data()
    {
        QTest::addColumn<QString>("window");
        for (const char* window : {"fTarno", "fEntry", "fLocs", "dlgLocMaint", "fRptLog", "fCustom",
                                   "fPreview", "fBackUp", "fRestore", "fCollect"}) {
            QTest::newRow(window) << QString::fromLatin1(window);
        }
    }

    void page_existsForEachWindow()
    {
        QFETCH(QString, window);
        const QString page = Page(window + QLatin1String(".html"));
        QVERIFY(page.contains(QLatin1String("<h1>")));
        QVERIFY(Page(QStringLiteral("index.html")).contains(window + QLatin1String(".html")));
    }

    void links_haveTargets()
    {
        for (const QString& name : Pages()) {
            const QString page = Page(name);
            for (const QString& target : Targets(page, "href") + Targets(page, "src")) {
                QVERIFY2(QFile::exists(QStringLiteral(":/manual/") + target), qPrintable(name + target));
            }
        }
    }

    void pictures_haveAlternativeTexts()
    {
        for (const QString& name : Pages()) {
            const QString page = Page(name);
            QCOMPARE(Targets(page, "alt").size(), Targets(page, "<img src").size());
        }
    }

    void f1_opensThePageOfTheActiveWindow()
    {
        const HelpKey key(m_windows);
        const ActiveWindow window("fRptLog");
        Press(window, Qt::Key_F1);
        QVERIFY(window.Help() != nullptr);
        QVERIFY(window.Help()->isVisible());
        QVERIFY(!window.Help()->isModal());
        QCOMPARE(window.ShownPage(), QStringLiteral("fRptLog.html"));
    }

    void f1_inAWindowWithoutAPage_opensTheContents()
    {
        const HelpKey key(m_windows);
        const ActiveWindow window("other");
        Press(window, Qt::Key_F1);
        QCOMPARE(window.ShownPage(), QStringLiteral("index.html"));
    }

    void f1_again_opensNoSecondManual()
    {
        const HelpKey key(m_windows);
        ActiveWindow window("fLocs");
        Press(window, Qt::Key_F1);
        fHelp* help = window.Help();
        AwaitActive(*help);
        Press(*help, Qt::Key_F1);
        QVERIFY(help->findChild<fHelp*>() == nullptr);
        window.activateWindow();
        AwaitActive(window);
        Press(window, Qt::Key_F1);
        QCOMPARE(window.findChildren<fHelp*>().size(), 1);
    }

    void f1_inAModalWindow_opensAManualThatCanBeUsed()
    {
        const HelpKey key(m_windows);
        QDialog dialog;
        dialog.setObjectName(QStringLiteral("fCustom"));
        WhileOpen(
            "fCustom", [&] { dialog.exec(); },
            [](QDialog& window) {
                Press(window, Qt::Key_F1);
                const QPointer<fHelp> help = window.findChild<fHelp*>();
                QVERIFY(!help.isNull());
                AwaitActive(*help);
                Click(*help, "cmdContents");
                QCOMPARE(help->findChild<QTextBrowser*>()->source().fileName(), QStringLiteral("index.html"));
                Click(*help, "cmdBack");
                QCOMPARE(help->findChild<QTextBrowser*>()->source().fileName(),
                         QStringLiteral("fCustom.html"));
                Click(*help, "cmdClose");
                QTRY_VERIFY_WITH_TIMEOUT(help.isNull(), awaitTimeout); // deleted on closing
                window.reject();
            });
    }

    void withoutTheKeyObject_f1DoesNothing()
    {
        const ActiveWindow window("fLocs");
        Press(window, Qt::Key_F1);
        QVERIFY(window.Help() == nullptr);
    }

    void manual_keepsItsSize()
    {
        const HelpKey key(m_windows);
        ActiveWindow window("fLocs");
        constexpr QSize wanted(700, 500);
        for (int time = 0; time < 2; ++time) {
            window.activateWindow();
            AwaitActive(window);
            Press(window, Qt::Key_F1);
            const QPointer<fHelp> help = window.Help();
            AwaitActive(*help);
            if (time == 0) {
                QVERIFY(help->size() != wanted);
                help->resize(wanted);
            }
            QCOMPARE(help->size(), wanted);
            help->close();
            QTRY_VERIFY_WITH_TIMEOUT(help.isNull(), awaitTimeout);
        }
    }

    void showManual_showsThePageInTheManualThatIsOpen()
    {
        ActiveWindow window("fLocs");
        ShowManual(&window, QStringLiteral("fEntry"), m_windows);
        QCOMPARE(window.ShownPage(), QStringLiteral("fEntry.html"));
        const fHelp* help = window.Help();
        QVERIFY(help->isVisible());
        ShowManual(&window, QStringLiteral("fRptLog"), m_windows);
        QCOMPARE(window.Help(), help);
        QCOMPARE(window.ShownPage(), QStringLiteral("fRptLog.html"));
        ShowManual(&window, QStringLiteral("no page"), m_windows);
        QCOMPARE(window.ShownPage(), QStringLiteral("index.html"));
        QCOMPARE(window.findChildren<fHelp*>().size(), 1);
    }

private:
    TemporaryFolder m_folder;
    RememberedWindows m_windows{FromUtf8(m_folder.PathOf("windows.ini"))};
};

TEST_CLASS(tst_fHelp)
#include "tst_fHelp.moc"
