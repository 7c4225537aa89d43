// A Windows program that records its command line and its working folder, one line each in UTF-8, in the file
// "started.txt" in its own folder.

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdio>
#include <string>
#include <windows.h>

int main()
{
    std::array<wchar_t, 4096> text{};
    ::GetCurrentDirectoryW(static_cast<DWORD>(text.size()), text.data());
    const QString lines = QString::fromWCharArray(::GetCommandLineW()) + QLatin1Char('\n') +
                          QString::fromWCharArray(text.data());
    ::GetModuleFileNameW(nullptr, text.data(), static_cast<DWORD>(text.size()));
    std::wstring record = text.data();
    record.resize(record.find_last_of(L'\\') + 1);
    const std::wstring half = record + L"half.txt";
    record += L"started.txt";
    if (FILE* file = ::_wfopen(half.c_str(), L"wb"); file != nullptr) {
        const QByteArray bytes = lines.toUtf8();
        std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), file);
        std::fclose(file);
    }
    return ::MoveFileExW(half.c_str(), record.c_str(), MOVEFILE_REPLACE_EXISTING) != 0 ? 0 : 1;
}
