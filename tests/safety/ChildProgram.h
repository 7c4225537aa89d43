#pragma once

#include <QtTest/QTest>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <string>
#include <string_view>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// Another program, whose standard input and output lead here. It ends with the object at the latest.
class ChildProgram
{
public:
    explicit ChildProgram(std::vector<std::string> command)
    {
        std::vector<char*> words;
        words.reserve(command.size() + 1);
        for (std::string& word : command) {
            words.push_back(word.data());
        }
        words.push_back(nullptr);
        std::array<int, 2> in{};
        std::array<int, 2> out{};
        if (::pipe2(in.data(), O_CLOEXEC) != 0 || ::pipe2(out.data(), O_CLOEXEC) != 0) {
            qFatal("no pipe");
        }
        m_process = ::fork();
        if (m_process == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL); // a test that was stopped leaves nobody behind
            ::dup2(in[0], STDIN_FILENO);
            ::dup2(out[1], STDOUT_FILENO);
            ::execv(words[0], words.data());
            ::_exit(127);
        }
        if (m_process < 0) {
            qFatal("no further process");
        }
        ::close(in[0]);
        ::close(out[1]);
        m_in = in[1];
        m_out = out[0];
    }

    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;

    ~ChildProgram()
    {
        if (m_process > 0) {
            Kill();
        }
        CloseInput();
        ::close(m_out);
    }

    /// The child reads `line`. One that has ended does not mind.
    void Tell(std::string_view line) const
    {
        const auto before = std::signal(SIGPIPE, SIG_IGN);
        const std::string ended = std::string(line) + '\n';
        if (::write(m_in, ended.data(), ended.size()) < 0 && errno != EPIPE) {
            qFatal("cannot tell the child anything");
        }
        std::signal(SIGPIPE, before);
    }

    /// The child finds the end of its input.
    void CloseInput()
    {
        if (m_in >= 0) {
            ::close(m_in);
            m_in = -1;
        }
    }

    /// The next line that the child writes; nothing when it has ended.
    std::optional<std::string> Line()
    {
        for (;;) {
            if (const auto end = m_read.find('\n', m_at); end != std::string::npos) {
                std::string line = m_read.substr(m_at, end - m_at);
                m_at = end + 1;
                return line;
            }
            m_read.erase(0, m_at);
            m_at = 0;
            std::array<char, 4096> buffer{};
            const ssize_t size = ::read(m_out, buffer.data(), buffer.size());
            if (size == 0 || (size < 0 && errno != EINTR)) {
                return std::nullopt;
            }
            m_read.append(buffer.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
        }
    }

    /// Ends the child without a warning; what it has written before can still be read.
    void Kill()
    {
        ::kill(m_process, SIGKILL);
        Wait();
    }

    /// Waits for the child's end; returns its exit code, -1 when it was killed.
    int Wait()
    {
        int status = 0;
        while (::waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
        }
        m_process = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t m_process = -1;
    int m_in = -1;
    int m_out = -1;
    std::string m_read;
    std::size_t m_at = 0;
};
