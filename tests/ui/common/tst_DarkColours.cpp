#include "support/Platform.h"
#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/common/DarkColours.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Tarno;

class tst_DarkColours : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        NOT_ON_WINDOWS("the desktop portal");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
        qputenv("PATH", QFile::encodeName(m_folder.path()));
        QFile::remove(m_folder.filePath(QStringLiteral("gdbus")));
    }

    void preference_isThatOfThePortal_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<bool>("isDark");
        QTest::newRow("dark") << "echo '(<<uint32 1>>,)'" << true;
        QTest::newRow("light") << "echo '(<<uint32 2>>,)'" << false;
        QTest::newRow("none") << "echo '(<<uint32 0>>,)'" << false;
        QTest::newRow("no portal") << "echo 'Error: uint32' >&2; exit 1" << false;
        QTest::newRow("only this question")
            << "test \"$7 $8\" = 'org.freedesktop.appearance color-scheme' || echo '(<<uint32 1>>,)'"
            << false;
    }

    void preference_isThatOfThePortal()
    {
        QFETCH(QString, script);
        QFETCH(bool, isDark);
        Install(script);
        QCOMPARE(DesktopPrefersDark(std::chrono::milliseconds(awaitTimeout)), isDark);
    }

    void withoutProgramOrBus_colours_areLight()
    {
        QVERIFY(!DesktopPrefersDark());
        Install(QStringLiteral("echo '(<<uint32 1>>,)'"));
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        QVERIFY(!DesktopPrefersDark());
    }

private:
    /// Makes a double of gdbus that runs `script`.
    void Install(const QString& script)
    {
        QFile program(m_folder.filePath(QStringLiteral("gdbus")));
        QVERIFY(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\n" + script.toUtf8() + '\n');
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QTemporaryDir m_folder;
};

TEST_CLASS(tst_DarkColours)
#include "tst_DarkColours.moc"
