#pragma once

#include "core/ErrorLog.h"
#include "support/StdStrings.h"

#include <deque>
#include <string>
#include <string_view>

namespace Tarno
{

/// Stands in for the message box of the error reporter. A report that the test did not announce fails the
/// test, and so does an announced one that never comes. Nothing is logged.
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

    /// The next report will be that `module`.`routine` raised `number` with its usual words.
    void Expect(std::string_view module, std::string_view routine, ErrorNumber number)
    {
        Expect(module, routine, number, Describe(number));
    }

    /// The same with a description of its own.
    void Expect(std::string_view module, std::string_view routine, ErrorNumber number,
                std::string_view description)
    {
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
