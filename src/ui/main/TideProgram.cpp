#include "TideProgram.h"

#include "core/Error.h"
#include "core/Paths.h"
#include "qt/Strings.h"

namespace Tarno
{

namespace
{

constexpr std::string_view tideSection = "KOWRA";
constexpr std::string_view tideSetting = "XTidePath";

} // namespace

void StartTideProgram(const Program& program, QWidget* window)
{
    std::string path = program.settings.GetSetting(tideSection, tideSetting, "");
    if (path.empty() || !mMain::FileExist(path)) {
        QString filter = QStringLiteral("WXTide32 Progam File (WXTide32.exe)");
#ifndef Q_OS_WIN
        filter += QStringLiteral(";;All Files (*)");
#endif
        const auto chosen =
            program.files.Open(window, {.title = QStringLiteral("Specify WXTide32 Program Location"),
                                        .filter = filter,
                                        .folder = {},
                                        .fileName = QStringLiteral("WXTide32.exe")});
        if (!chosen) {
            return;
        }
        path = ToUtf8(*chosen);
        program.settings.SaveSetting(tideSection, tideSetting, path);
    }
    try {
        program.programs.Start(FromUtf8(path), {});
    } catch (const Error&) {
        program.settings.DeleteSetting(tideSection, tideSetting); // the next click asks again
        throw;
    }
}

} // namespace Tarno
