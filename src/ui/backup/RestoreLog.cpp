#include "RestoreLog.h"

#include "BackUpWork.h"
#include "backup/Restore.h"
#include "fRestore.h"
#include "qt/Strings.h"

#include <optional>

namespace Tarno
{

RestoreOutcome RestoreLog(const Program& program, QWidget* parent)
{
    const QString log = FromUtf8(program.folder.GetAppPath());
    const QString backUps = program.windows.BackUpFolder(log);
    const auto path = program.files.Open(
        parent, {.title = QStringLiteral("Restore"),
                 .filter = QStringLiteral("Back-ups (*.zip);;All files (*)"),
                 .folder = program.operations.GetState(ToUtf8(backUps)).exists ? backUps : log,
                 .fileName = {}});
    if (!path) {
        return {};
    }
    std::optional<BackUpArchive> backUp;
    try {
        backUp.emplace(ToUtf8(*path));
    } catch (const Error& error) {
        ShowUnusable(program, parent, *path, error);
        return {};
    }
    if (program.sql.CanAddEntries() && program.sql.CanAddLocations()) {
        program.sql.ReadChangesOfOthers();
    }
    fRestore window(program, *path, *backUp, parent);
    window.exec();
    return window.Outcome();
}

} // namespace Tarno
