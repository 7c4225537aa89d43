#include "support/ScriptedClock.h"
#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/reports/WaitDialog.h"

#include <QApplication>

using namespace Tarno;

using namespace std::chrono_literals;

namespace
{

/// Returns the dialog, or null if it is not shown.
QProgressDialog* Shown()
{
    return qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
}

} // namespace

class tst_WaitDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void dialog_appearsAfterHalfASecond()
    {
        ScriptedClock clock;
        WaitDialog wait(clock, nullptr, QStringLiteral("Laying out the report..."), 10);
        QVERIFY(wait.Advance());
        clock.now += 499ms;
        QVERIFY(wait.Advance());
        QVERIFY(Shown() == nullptr);
        clock.now += 1ms;
        QVERIFY(wait.Advance());
        QVERIFY(Shown() != nullptr);
        QCOMPARE(Shown()->objectName(), QStringLiteral("dlgWait"));
        QCOMPARE(Shown()->windowTitle(), QStringLiteral("Tarno"));
        QCOMPARE(Shown()->labelText(), QStringLiteral("Laying out the report..."));
        QCOMPARE(Shown()->value(), 3);
    }

    void progress_isShownEvery50Milliseconds()
    {
        ScriptedClock clock;
        WaitDialog wait(clock, nullptr, QString(), 10);
        clock.now += 500ms;
        wait.Advance();
        QCOMPARE(Shown()->value(), 1);
        clock.now += 49ms;
        wait.Advance();
        QCOMPARE(Shown()->value(), 1);
        clock.now += 1ms;
        wait.Advance();
        QCOMPARE(Shown()->value(), 3);
    }

    void progress_canSkipSteps()
    {
        ScriptedClock clock;
        WaitDialog wait(clock, nullptr, QString(), 10);
        clock.now += 500ms;
        QVERIFY(wait.AdvanceTo(7));
        QCOMPARE(Shown()->value(), 7);
    }

    void unknownNumberOfSteps_showsNoProgress()
    {
        ScriptedClock clock;
        WaitDialog wait(clock, nullptr, QString());
        clock.now += 1s;
        QVERIFY(wait.Advance());
        QCOMPARE(Shown()->maximum(), 0);
        QCOMPARE(Shown()->value(), 0);
    }

    void cancel_endsTheWork()
    {
        ScriptedClock clock;
        WaitDialog wait(clock, nullptr, QString(), 10);
        clock.now += 500ms;
        QVERIFY(wait.Advance());
        Shown()->cancel();
        QVERIFY(!wait.Advance());
    }

    void escape_endsTheWork()
    {
        ScriptedClock clock;
        WaitDialog wait(clock, nullptr, QString(), 10);
        clock.now += 500ms;
        QVERIFY(wait.Advance());
        AwaitActive(*Shown());
        Press(*Shown(), Qt::Key_Escape);
        QVERIFY(!wait.Advance());
    }

    void dialog_closesWithTheWork()
    {
        ScriptedClock clock;
        {
            WaitDialog wait(clock, nullptr, QString(), 10);
            clock.now += 500ms;
            wait.Advance();
            QVERIFY(Shown() != nullptr);
        }
        QVERIFY(Shown() == nullptr);
    }
};

TEST_CLASS(tst_WaitDialog)
#include "tst_WaitDialog.moc"
