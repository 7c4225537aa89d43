// The console program of Windows: starts Tarno.exe, which is in the same folder, with the same arguments, and
// waits for it. A shell neither waits for a windowed program nor shows what it prints.

#include <array>
#include <string>
#include <string_view>
#include <thread>
#include <windows.h>

namespace
{

/// A pipe whose end for writing the other program inherits.
struct Pipe {
    Pipe()
    {
        SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        CreatePipe(&readEnd, &writeEnd, &inherited, 0);
        SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    }

    /// Writes to `output` whatever the other program writes, until it ends.
    void CopyTo(HANDLE output) const
    {
        std::array<char, 4096> bytes{};
        DWORD count = 0;
        while (ReadFile(readEnd, bytes.data(), bytes.size(), &count, nullptr) && count > 0) {
            WriteFile(output, bytes.data(), count, &count, nullptr);
        }
    }

    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
};

/// Returns the path of Tarno.exe.
std::wstring WindowedProgram()
{
    constexpr std::size_t longestPath = 32768;
    std::wstring path(longestPath, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), longestPath));
    return path.substr(0, path.find_last_of(L'\\') + 1) + L"Tarno.exe";
}

} // namespace

int main()
{
    constexpr int notDone = 1;
    const Pipe output;
    const Pipe errors;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = output.writeEnd;
    startup.hStdError = errors.writeEnd;
    PROCESS_INFORMATION process{};
    std::wstring arguments = GetCommandLineW();
    if (!CreateProcessW(WindowedProgram().c_str(), arguments.data(), nullptr, nullptr, TRUE, 0, nullptr,
                        nullptr, &startup, &process)) {
        constexpr std::string_view problem =
            "Tarno.exe, which must be in the same folder, cannot be started.\r\n";
        DWORD count = 0;
        WriteFile(GetStdHandle(STD_ERROR_HANDLE), problem.data(), problem.size(), &count, nullptr);
        return notDone;
    }
    CloseHandle(output.writeEnd);
    CloseHandle(errors.writeEnd);
    SetConsoleOutputCP(CP_UTF8);
    std::thread copyErrors([&errors] { errors.CopyTo(GetStdHandle(STD_ERROR_HANDLE)); });
    output.CopyTo(GetStdHandle(STD_OUTPUT_HANDLE));
    copyErrors.join();
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = notDone;
    GetExitCodeProcess(process.hProcess, &status);
    return static_cast<int>(status);
}
