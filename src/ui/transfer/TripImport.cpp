#include "TripImport.h"

#include "ImportFile.h"
#include "exchange/Csv.h"
#include "fImport.h"

namespace Tarno
{

std::vector<std::string> ImportTrips(const Program& program, QWidget* parent)
{
    const auto chosen = AskForImport(program, parent, QStringLiteral("Import Trips"),
                                     QStringLiteral("Tables (*.csv *.txt *.tsv);;All files (*)"));
    if (!chosen) {
        return {};
    }
    CsvFile file = ReadCsv(chosen->bytes);
    if (file.problem) {
        ShowImportProblem(program, parent, chosen->path, file.problem->Describe() + '.');
        return {};
    }
    fImport window(program, std::move(file), chosen->path, parent);
    if (window.Plan()) {
        window.exec();
    }
    return window.SavedKeys();
}

} // namespace Tarno
