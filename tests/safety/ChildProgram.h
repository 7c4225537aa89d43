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

/// Runs another program and communicates with it through its standard input and output. Kills it on
/// destruction.
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
        // the child does not outlive a killed test
        m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
#endif
        for (int turns = 1; !Starts(); ++turns) {
            constexpr int maxAttempts = isWindows ? 20 : 1; // under Wine, starting a process sometimes fails
            if (turns == maxAttempts) {
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

    /// Writes `line` to the child's input. Does nothing if the child has ended.
    void Tell(std::string_view line)
    {
        m_process.write((std::string(line) + '\n').c_str());
        m_process.waitForBytesWritten(-1);
    }

    /// Closes the child's input.
    void CloseInput()
    {
        m_process.closeWriteChannel();
    }

    /// Waits for the next line that the child writes. Returns nothing if the child has ended.
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

    /// Kills the child. The output that it has written before can still be read.
    void Kill()
    {
        m_process.kill();
        m_process.waitForFinished(-1);
    }

    /// Waits until the child ends. Returns its exit code, or -1 if it was killed.
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
