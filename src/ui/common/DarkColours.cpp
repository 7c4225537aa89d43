#include "DarkColours.h"

#include <QProcess>

namespace Tarno
{

bool DesktopPrefersDark(std::chrono::milliseconds timeout)
{
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) {
        return false; // gdbus would start a bus of its own
    }
    QProcess gdbus;
    gdbus.start(QStringLiteral("gdbus"),
                {QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--timeout=1"),
                 QStringLiteral("--dest=org.freedesktop.portal.Desktop"),
                 QStringLiteral("--object-path=/org/freedesktop/portal/desktop"),
                 QStringLiteral("--method=org.freedesktop.portal.Settings.Read"),
                 QStringLiteral("org.freedesktop.appearance"), QStringLiteral("color-scheme")});
    const int milliseconds = static_cast<int>(timeout.count());
    if (!gdbus.waitForFinished(milliseconds)) {
        gdbus.kill();
        gdbus.waitForFinished(milliseconds);
        return false;
    }
    return gdbus.readAllStandardOutput().contains("uint32 1>"); // 0: no preference, 2: light
}

QPalette DarkColours()
{
    QPalette dark(QColor(50, 55, 60), QColor(46, 50, 54));
    dark.setColor(QPalette::Base, QColor(27, 30, 32));
    dark.setColor(QPalette::AlternateBase, QColor(35, 38, 41));
    return dark;
}

} // namespace Tarno
