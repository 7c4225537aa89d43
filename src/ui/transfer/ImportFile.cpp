#include "ImportFile.h"

#include "core/Error.h"
#include "core/Paths.h"
#include "qt/Strings.h"

namespace Tarno
{

std::optional<ImportFile> AskForImport(const Program& program, QWidget* parent, const QString& title,
                                       const QString& filter)
{
    const auto path = program.files.Open(parent, {.title = title,
                                                  .filter = filter,
                                                  .folder = FromUtf8(program.folder.GetAppPath() + '/'),
                                                  .fileName = {}});
    if (!path) {
        return std::nullopt;
    }
    try {
        return ImportFile{*path, ReadWholeFile(ToUtf8(*path))};
    } catch (const Error& error) {
        ShowImportProblem(program, parent, *path, error.Description() + '.');
        return std::nullopt;
    }
}

void ShowImportProblem(const Program& program, QWidget* parent, const QString& path,
                       const std::string& reason)
{
    program.messages.Ask(parent, {.text = QStringLiteral("This file cannot be imported: ") + path +
                                          QStringLiteral("\r\n") + FromUtf8(reason) +
                                          QStringLiteral("\r\nNothing was changed."),
                                  .title = QStringLiteral("Import Error"),
                                  .icon = Icon::Exclamation});
}

} // namespace Tarno
