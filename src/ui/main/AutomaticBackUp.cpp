#include "AutomaticBackUp.h"

#include "backup/BackUp.h"
#include "core/Conversions.h"
#include "qt/Strings.h"
#include "ui/backup/BackUpWork.h"

namespace Tarno
{

namespace
{

/// Says that the back-up failed, unless the user was told today.
void TellFailure(const Program& program, QWidget* parent, const QString& folder, const QString& reason)
{
    const QString log = FromUtf8(program.folder.GetAppPath());
    const QString today = FromUtf8(FromDate(program.clock.Today()));
    if (program.windows.DayOfFailedBackUp(log) == today) {
        return;
    }
    program.windows.SetDayOfFailedBackUp(log, today);
    program.messages.ShowInformation(
        parent,
        QStringLiteral("Your log is saved, but it could not be backed up to this folder:\r\n\r\n") + folder +
            QStringLiteral("\r\n\r\n") + reason +
            QStringLiteral("\r\n\r\nFile > Back Up in the log lets you choose another folder."),
        QStringLiteral("Back-Up"));
}

} // namespace

void BackUpAutomatically(const Program& program, QWidget* parent)
{
    if (!program.sql.HasSaved()) {
        return;
    }
    const QString folder = program.windows.BackUpFolder(FromUtf8(program.folder.GetAppPath()));
    try {
        RunWithProgress(program, parent, QStringLiteral("Backing up your log..."),
                        [&](const Progress& progress) {
                            BackUpIfChanged(program.folder, program.operations, ToUtf8(folder),
                                            {.pictures = BackUpPictures::LeaveOut,
                                             .time = LocalTimeOf(program.clock),
                                             .program = ProgramName()},
                                            progress);
                        });
    } catch (const Error& error) {
        TellFailure(program, parent, folder, ReasonOf(error));
    }
}

} // namespace Tarno
