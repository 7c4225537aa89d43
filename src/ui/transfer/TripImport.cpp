#include "TripImport.h"

#include "core/Error.h"
#include "core/Paths.h"
#include "exchange/Csv.h"
#include "fImport.h"
#include "qt/Strings.h"

namespace Tarno
{

namespace
{

void ShowProblem(const Program& program, QWidget* parent, const QString& path, const QString& reason)
{
    program.messages.Ask(parent, {.text = QStringLiteral("This file cannot be imported: ") + path +
                                          QStringLiteral("\r\n") + reason +
                                          QStringLiteral(".\r\nNothing was changed."),
                                  .title = QStringLiteral("Import Error"),
                                  .icon = Icon::Exclamation});
}

} // namespace

std::vector<std::string> ImportTrips(const Program& program, QWidget* parent)
{
    const auto path =
        program.files.Open(parent, {.title = QStringLiteral("Import Trips"),
                                    .filter = QStringLiteral("Tables (*.csv *.txt *.tsv);;All files (*)"),
                                    .folder = FromUtf8(program.folder.GetAppPath() + '/'),
                                    .fileName = {}});
    if (!path) {
        return {};
    }
    CsvFile file;
    try {
        file = ReadCsv(ReadWholeFile(ToUtf8(*path)));
    } catch (const Error& error) {
        ShowProblem(program, parent, *path, FromUtf8(error.Description()));
        return {};
    }
    if (file.problem) {
        ShowProblem(program, parent, *path, FromUtf8(file.problem->Describe()));
        return {};
    }
    fImport window(program, std::move(file), *path, parent);
    window.exec();
    return window.SavedKeys();
}

} // namespace Tarno
