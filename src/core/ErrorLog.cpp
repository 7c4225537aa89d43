#include "ErrorLog.h"

#include <new>
#include <utility>

namespace Tarno
{

namespace
{

constexpr std::string_view lineEnd = "\r\n";
constexpr std::size_t ruleLength = 63;
constexpr std::string_view applicationName = "Tarno";

} // namespace

ErrorReporter& ErrorReporter::Instance()
{
    static ErrorReporter reporter;
    return reporter;
}

void ErrorReporter::SetLog(const ProgramFolder& folder, FileOperations& operations, const Clock& clock)
{
    m_log = Log{&folder, &operations, &clock};
}

void ErrorReporter::SetShowMessage(ShowMessage show)
{
    m_show = std::move(show);
}

void ErrorReporter::Reset()
{
    m_log.reset();
    m_show = nullptr;
    AllowRepetition();
}

void ErrorReporter::Report(std::string_view module, std::string_view routine, const std::string& detail,
                           const std::string& userMessage, bool show)
{
    const auto line = [](auto... parts) {
        return (std::string() + ... + std::string(parts)) + std::string(lineEnd);
    };
    const std::string message = "An error has occurred in Tarno in " + line(module, ".", routine) +
                                (detail.empty() ? userMessage : detail);
    const bool isShown = show && message != m_lastMessage;
    if (m_log) {
        std::string record = line(std::string(ruleLength, '-'));
        record += line(m_log->clock->ShortDate(), " ", m_log->clock->ShortTime());
        record += line("Module = ", module, ", Routine = ", routine);
        const std::string logged =
            isShown ? userMessage : "(Message not shown)" + std::string(lineEnd) + userMessage;
        for (const std::string& text : {detail, logged}) {
            record += text.empty() ? text : line(text);
        }
        AppendToLog(record);
    }
    if (isShown && m_show) {
        m_lastMessage = message;
        m_show(message, "Tarno Error");
    }
}

void ErrorReporter::AppendToLog(const std::string& record)
{
    const std::string path = m_log->folder->FindPath(std::string(applicationName) + ".log");
    for (;;) {
        try {
            m_log->operations->Append(path, record);
            return;
        } catch (const Error& error) {
            if (error.Number() != ErrorNumber::PermissionDenied) {
                return;
            }
        }
        m_log->operations->Pause();
    }
}

void ErrorLog(std::string_view module, std::string_view routine, const Error* pending,
              const std::optional<std::string>& message)
{
    std::string detail;
    if (pending != nullptr) {
        detail = "Vb<" + std::to_string(static_cast<int>(pending->Number())) + "> error raised" +
                 std::string(lineEnd) + pending->Description();
    }
    ErrorReporter::Instance().Report(module, routine, detail, message.value_or(""), true);
}

Error CurrentError()
{
    try {
        throw;
    } catch (const Error& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return Error(ErrorNumber::OutOfMemory);
    } catch (const std::exception& other) {
        return {ErrorNumber::InvalidProcedureCall, other.what()};
    }
}

} // namespace Tarno
