#include "qt/Strings.h"
#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/main/fSplash.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Tarno;

namespace
{

const QString folder = QStringLiteral("/home/<b>angler</b>/log");

/// The timer that closes the splash.
QTimer& Timer(const QWidget& window)
{
    auto* timer = window.findChild<QTimer*>(QStringLiteral("tShow"));
    if (timer == nullptr) {
        qFatal("no timer");
    }
    return *timer;
}

void AddWays()
{
    QTest::addColumn<int>("key");
    QTest::newRow("button") << 0;
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("Esc") << int(Qt::Key_Escape);
}

void CloseBy(QDialog& window, int key)
{
    if (key == 0) {
        Click(window, "cmdOK");
    } else {
        Press(window, static_cast<Qt::Key>(key));
    }
    QVERIFY(!window.isVisible());
}

} // namespace

class tst_fSplash : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void window_hasItsCaption()
    {
        const fSplash about(folder, nullptr);
        QCOMPARE(ToUtf8(about.windowTitle()), "About Tarno Fishing Log");
    }

    void version_isThatOfTheProgram()
    {
        QCoreApplication::setApplicationVersion(QStringLiteral("12.3.45"));
        const fSplash about(folder, nullptr);
        QCOMPARE(ToUtf8(Find<QLabel>(about, "lblVersion").text()), "Version 12.3.45");
    }

    void texts_areShown_data()
    {
        QTest::addColumn<QString>("label");
        for (const char* label : {"lblTitle", "lblNote", "lblContact"}) {
            QTest::newRow(label) << label;
        }
    }

    void texts_areShown()
    {
        QFETCH(QString, label);
        const fSplash about(folder, nullptr);
        QVERIFY(!Find<QLabel>(about, label.toLatin1()).text().isEmpty());
    }

    void folder_isShown()
    {
        const fSplash about(folder, nullptr);
        QCOMPARE(ToUtf8(Find<QLabel>(about, "lblFolder").text()), "Your log is in");
        const auto& box = Find<QLineEdit>(about, "txtFolder");
        QCOMPARE(ToUtf8(box.text()), "/home/<b>angler</b>/log");
        QVERIFY(box.isReadOnly());
    }

    void picture_isShown()
    {
        const fSplash about(folder, nullptr);
        QVERIFY(!Find<QLabel>(about, "picAbout").pixmap().isNull());
        QCOMPARE(ToUtf8(Find<QPushButton>(about, "cmdOK").text()), "OK");
    }

    void splash_closesWhenItsTimerFires()
    {
        fSplash splash(folder, nullptr);
        QCOMPARE(Timer(splash).interval(), 2500);
        Timer(splash).setInterval(awaitTimeout);
        WhileOpen(
            "fSplash", [&] { splash.ShowSplash(); },
            [&](QDialog& window) {
                QVERIFY(window.isModal());
                QVERIFY(Timer(window).isActive());
                Timer(window).setInterval(0); // expires immediately
                Await([&] { return !window.isVisible(); }, "the splash stays open");
            });
    }

    void splash_closesEarly_data() { AddWays(); }

    void splash_closesEarly()
    {
        QFETCH(int, key);
        fSplash splash(folder, nullptr);
        Timer(splash).setInterval(awaitTimeout); // longer than the test
        WhileOpen(
            "fSplash", [&] { splash.ShowSplash(); }, [&](QDialog& window) { CloseBy(window, key); });
    }

    void splash_staysCentredWhenItsParentIsPlaced()
    {
        QWidget parent;
        parent.resize(700, 500);
        parent.show();
        fSplash splash(folder, &parent);
        Timer(splash).setInterval(awaitTimeout);
        WhileOpen(
            "fSplash", [&] { splash.ShowSplash(); },
            [&](QDialog& window) {
                parent.move(250, 120); // like a window manager that places the window late
                Await([&] { return window.geometry().center() == parent.geometry().center(); },
                      "the splash is not centred");
                CloseBy(window, 0);
            });
    }

    void about_hasNoTimerRunning()
    {
        fSplash about(folder, nullptr);
        WhileOpen(
            "fSplash", [&] { about.ShowAbout(); },
            [](QDialog& window) {
                QVERIFY(window.isModal());
                QVERIFY(!Timer(window).isActive());
                CloseBy(window, 0);
            });
    }

    void about_closes_data() { AddWays(); }

    void about_closes()
    {
        QFETCH(int, key);
        fSplash about(folder, nullptr);
        WhileOpen(
            "fSplash", [&] { about.ShowAbout(); }, [&](QDialog& window) { CloseBy(window, key); });
    }

    void about_afterASplash_stays()
    {
        fSplash window(folder, nullptr);
        Timer(window).setInterval(awaitTimeout);
        WhileOpen(
            "fSplash", [&] { window.ShowSplash(); }, [](QDialog& splash) { CloseBy(splash, 0); });
        WhileOpen(
            "fSplash", [&] { window.ShowAbout(); },
            [](QDialog& about) {
                QVERIFY(!Timer(about).isActive());
                CloseBy(about, 0);
            });
    }
};

TEST_CLASS(tst_fSplash)
#include "tst_fSplash.moc"
