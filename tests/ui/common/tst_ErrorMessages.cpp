#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/common/ErrorMessages.h"

using namespace Tarno;

namespace
{

void RaiseError()
{
    const Error error(ErrorNumber::ObjectNotSet);
    ErrorLog("cSQL", "LocationList", &error);
}

/// Lets the event loop wait until a timer fires, as it does for the user.
void WaitForUser()
{
    bool isOver = false;
    QTimer::singleShot(1, [&] { isOver = true; });
    while (!isOver) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace

class tst_ErrorMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void cleanup() { ErrorReporter::Instance().Reset(); }

    void equalErrors_withoutWaiting_areShownOnce()
    {
        int shown = 0;
        const ErrorMessages messages([&](const std::string&, const std::string&) { ++shown; });
        RaiseError();
        RaiseError();
        QCOMPARE(shown, 1);
        WaitForUser();
        RaiseError();
        QCOMPARE(shown, 2);
    }

    void equalErrors_aroundAMessageBox_areShownOnce()
    {
        int shown = 0;
        const ErrorMessages messages([&](const std::string&, const std::string&) {
            ++shown;
            WaitForUser(); // the user reads the box
        });
        RaiseError();
        RaiseError();
        QCOMPARE(shown, 1);
    }
};

TEST_CLASS(tst_ErrorMessages)
#include "tst_ErrorMessages.moc"
