#include "WindowsExchange.h"

#include "FileOperations.h"
#include "Paths.h"

#include <windows.h>

bool ComesBack(const std::string& path)
{
    const std::wstring target = ToPath(path).wstring();
    const auto isThere = [&] { return ::GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES; };
    constexpr int turns = 200;
    for (int turn = 0; turn < turns && !isThere(); ++turn) {
        WIN32_FIND_DATAW found{};
        const HANDLE search =
            ::FindFirstFileW(ToPath(path + ".*" + std::string(FileOperations::outSuffix)).c_str(), &found);
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
