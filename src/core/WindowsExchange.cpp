#include "WindowsExchange.h"

#include "FileOperations.h"
#include "Paths.h"
#include "SafeWriter.h"
#include "WindowsHandle.h"

static DWORD CodeOf(BOOL success)
{
    return success != 0 ? ERROR_SUCCESS : ::GetLastError();
}

template <typename Step>
DWORD WindowsExchange::Patiently(const std::string& to, const Step& step)
{
    constexpr int turns = 10;
    constexpr DWORD milliseconds = 10;
    DWORD code = step();
    for (int turn = 0;
         turn < turns && (code == ERROR_SHARING_VIOLATION || (code == ERROR_FILE_NOT_FOUND && ComesBack(to)));
         ++turn) {
        ::Sleep(milliseconds);
        code = step();
    }
    return code;
}

bool WindowsExchange::Exchange(const std::string& from, const std::string& to)
{
    const std::string out = from + std::string(FileOperations::outSuffix);
    DWORD code = Patiently(to, [&] { return TakePlace(from, to, out); });
    switch (code) {
    case ERROR_SUCCESS:
        break;
    case ERROR_FILE_NOT_FOUND:
        return false;
    case ERROR_UNABLE_TO_MOVE_REPLACEMENT_2: // half done: what stood at `to` has gone out already
        Patiently(to, [&] { return Move(out, to); });
        throw Error(ErrorNumber::PermissionDenied);
    default:
        throw ErrorOf(code);
    }
    code = Patiently(to, [&] { return Move(out, from); });
    if (code != ERROR_SUCCESS) {
        Patiently(to, [&] { return TakePlace(out, to, from); });
        throw ErrorOf(code);
    }
    return true;
}

bool WindowsExchange::ComesBack(const std::string& path)
{
    const std::wstring target = ToPath(path).wstring();
    const std::string outOfIt =
        path + ".*" + std::string(SafeWriter::temporarySuffix) + std::string(FileOperations::outSuffix);
    const auto isThere = [&] { return ::GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES; };
    constexpr int turns = 200;
    for (int turn = 0; turn < turns && !isThere(); ++turn) {
        WIN32_FIND_DATAW found{};
        const HANDLE search = ::FindFirstFileW(ToPath(outOfIt).c_str(), &found);
        if (search == INVALID_HANDLE_VALUE) {
            return isThere(); // it may just have come
        }
        ::FindClose(search);
        if (turn + 1 == turns) {
            const auto out = ToPath(path).replace_filename(found.cFileName);
            return ::MoveFileExW(out.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) != 0 || isThere();
        }
        constexpr DWORD milliseconds = 5;
        ::Sleep(milliseconds);
    }
    return true;
}

DWORD WindowsExchange::TakePlace(const std::string& from, const std::string& to, const std::string& out)
{
    return CodeOf(
        ::ReplaceFileW(ToPath(to).c_str(), ToPath(from).c_str(), ToPath(out).c_str(), 0, nullptr, nullptr));
}

DWORD WindowsExchange::Move(const std::string& from, const std::string& to)
{
    return CodeOf(::MoveFileExW(ToPath(from).c_str(), ToPath(to).c_str(), MOVEFILE_WRITE_THROUGH));
}
