#include "mStart.h"

#include "InterruptedRestore.h"
#include "core/Error.h"
#include "core/ErrorLog.h"
#include "core/SettingsStore.h"
#include "qt/Strings.h"
#include "ui/common/DesktopPrompts.h"
#include "ui/common/ErrorMessages.h"
#include "ui/common/Notices.h"
#include "ui/common/Program.h"
#include "ui/common/ScreenFit.h"
#include "ui/common/SystemClock.h"
#include "ui/help/fHelp.h"
#include "ui/main/fSplash.h"
#include "ui/main/fTarno.h"
#include "ui/reports/DesktopPrinters.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

namespace Tarno
{

namespace
{

/// Finishes a restore that was killed, and says so. Returns whether the log can be read.
bool FinishRestore(const ProgramFolder& folder, FileOperations& operations, MessageBoxes& messages)
{
    const auto show = [&messages](const std::string& text) {
        if (!text.empty()) {
            messages.ShowInformation(nullptr, FromUtf8(text), QStringLiteral("Restore"));
        }
    };
    try {
        show(FinishInterruptedRestore(folder, operations));
        return true;
    } catch (const Error& error) {
        show(error.Description());
        return false;
    }
}

/// Returns the folder of the drafts, whose parent it creates.
std::string DraftsFolder()
{
    const QDir state = QFileInfo(RememberedWindows::DefaultFile()).dir();
    state.mkpath(QStringLiteral("."));
    return ToUtf8(QDir::toNativeSeparators(state.filePath(QStringLiteral("drafts"))));
}

} // namespace

int mStart::Main(const DataFolder& folder)
{
    const ProgramFolder programFolder(ToUtf8(QDir::toNativeSeparators(folder.path)));
    const auto operations = SystemFileOperations();
    const SystemClock clock;
    DesktopMessageBoxes messages;
    DesktopFileDialogs files;
    DesktopProgramStarter programs;
    DesktopPrinters printers;

    ErrorReporter& reporter = ErrorReporter::Instance();
    reporter.SetLog(programFolder, *operations, clock);
    const ErrorMessages shown([&messages](const std::string& text, const std::string& title) {
        messages.ShowInformation(QApplication::activeWindow(), FromUtf8(text), FromUtf8(title));
    });

    cSQL sql(programFolder, *operations);
    sql.SetShowConflict([&messages](const ConflictNotice& conflict) { ShowConflict(conflict, messages); });
    const cDescs descs;
    const auto store = SystemSettingsStore(*operations);
    CRegSettings settings(*store);
    const RememberedWindows windows(RememberedWindows::DefaultFile());
    Drafts drafts(DraftsFolder(), *operations);
    const Program program{programFolder, sql,      descs,    settings,    clock,   messages,
                          files,         programs, printers, *operations, windows, drafts};

    const HelpKey helpKey(windows);
    const ScreenFit screenFit;
    int exitCode = 1;
    if (FinishRestore(programFolder, *operations, messages) && sql.Init() == succeeded) {
        if (folder.isNew) {
            messages.ShowInformation(
                nullptr,
                QStringLiteral(
                    "Welcome to Tarno. The program folder is read-only, so your log is stored in:\r\n\r\n") +
                    FromUtf8(programFolder.GetAppPath()) +
                    QStringLiteral("\r\n\r\nTo back up your log, use File > Back Up in the log."),
                QStringLiteral("Where Your Log Is Stored"));
        }
        fTarno window(program);
        QObject::connect(&window, &fTarno::ExitConfirmed, qApp, &QApplication::quit, Qt::QueuedConnection);
        window.show();
        QApplication::processEvents(); // positions the window before the splash screen is centred over it
        const QString path = FromUtf8(programFolder.GetAppPath());
        fSplash(path, &window).ShowSplash();
        ShowFileProblems(sql, path, &window, messages);
        window.OfferDrafts();
        exitCode = QApplication::exec();
    }
    reporter.Reset();
    return exitCode;
}

} // namespace Tarno
