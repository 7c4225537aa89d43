#pragma once

#include "support/Platform.h"

#include <QProcess>
#include <QString>
#include <QtTest/QTest>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#ifdef Q_OS_LINUX
#include <csignal>
#include <sys/prctl.h>
#endif

namespace Tarno
{

/// Another program, whose standard input and output lead here. It ends with the object at the latest.
class ChildProgram
{
public:
    explicit ChildProgram(const std::vector<std::string>& command)
    {
        QStringList arguments;
        for (const std::string& word : command) {
            arguments << QString::fromStdString(word);
        }
        m_process.setProgram(arguments.takeFirst());
        m_process.setArguments(arguments);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
#ifdef Q_OS_LINUX
        // a test that was stopped leaves nobody behind
        m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
#endif
        for (int turns = 1; !Starts(); ++turns) {
            constexpr int most = isWindows ? 20 : 1; // Wine does not always start a process at once
            if (turns == most) {
                qFatal("%s: %s", qPrintable(m_process.program()), qPrintable(m_process.errorString()));
            }
            qWarning("%s, turn %d", qPrintable(m_process.errorString()), turns);
            QTest::qSleep(500);
        }
    }

    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;

    ~ChildProgram()
    {
        Kill();
    }

    /// The child reads `line`. One that has ended does not mind.
    void Tell(std::string_view line)
    {
        m_process.write((std::string(line) + '\n').c_str());
        m_process.waitForBytesWritten(-1);
    }

    /// The child finds the end of its input.
    void CloseInput()
    {
        m_process.closeWriteChannel();
    }

    /// The next line that the child writes; nothing when it has ended.
    std::optional<std::string> Line()
    {
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(-1) && !m_process.canReadLine()) {
                return std::nullopt;
            }
        }
        std::string line = m_process.readLine().toStdString();
        line.resize(line.find_last_not_of("\r\n") + 1);
        return line;
    }

    /// Ends the child without a warning; what it has written before can still be read.
    void Kill()
    {
        m_process.kill();
        m_process.waitForFinished(-1);
    }

    /// Waits for the child's end; returns its exit code, -1 when it was killed.
    int Wait()
    {
        m_process.waitForFinished(-1);
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

private:
    bool Starts()
    {
        m_process.start();
        return m_process.waitForStarted(-1);
    }

    QProcess m_process;
};

} // namespace Tarno
