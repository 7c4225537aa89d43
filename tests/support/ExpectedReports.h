#pragma once

#include "core/ErrorLog.h"
#include "support/StdStrings.h"

#include <deque>
#include <string>
#include <string_view>

namespace Tarno
{

/// Replaces the message box of the error reporter. An unexpected report fails the test, and so does an
/// expected report that does not arrive. Nothing is logged.
class ExpectedReports
{
public:
    ExpectedReports()
    {
        ErrorReporter::Instance().Reset();
        ErrorReporter::Instance().SetShowMessage(
            [this](const std::string& text, const std::string& /*title*/) { Shown(text); });
    }

    ExpectedReports(const ExpectedReports&) = delete;
    ExpectedReports& operator=(const ExpectedReports&) = delete;

    ~ExpectedReports()
    {
        ErrorReporter::Instance().Reset();
        for (const std::string& text : m_expected) {
            QTest::qFail(("not reported: " + text).c_str(), __FILE__, __LINE__);
        }
    }

    /// Expects the next report to be error `number` of `module`.`routine` with its usual description.
    void Expect(std::string_view module, std::string_view routine, ErrorNumber number)
    {
        Expect(module, routine, number, Describe(number));
    }

    /// Overload for an error with its own description. Like an action of the user, allows the last message to
    /// be repeated.
    void Expect(std::string_view module, std::string_view routine, ErrorNumber number,
                std::string_view description)
    {
        ErrorReporter::Instance().AllowRepetition();
        m_expected.push_back("An error has occurred in Tarno in " + std::string(module) + "." +
                             std::string(routine) + "\r\nVb<" + std::to_string(static_cast<int>(number)) +
                             "> error raised\r\n" + std::string(description));
    }

private:
    void Shown(const std::string& text)
    {
        if (m_expected.empty()) {
            QTest::qFail(("unexpected report: " + text).c_str(), __FILE__, __LINE__);
            return;
        }
        QTest::qCompare(text, m_expected.front(), "reported", "expected", __FILE__, __LINE__);
        m_expected.pop_front();
    }

    std::deque<std::string> m_expected;
};

} // namespace Tarno
