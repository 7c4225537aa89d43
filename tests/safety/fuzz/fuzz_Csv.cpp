#include "Require.h"
#include "exchange/TripTable.h"

#include <pugixml.hpp>

using namespace Tarno;

namespace
{

/// The records of a sample file.
class Sample
{
public:
    explicit Sample(const char* path) { m_document.load_file(path); }

    RecordList Records() const
    {
        RecordList records;
        for (const pugi::xml_node& node : m_document.first_child().children()) {
            records.emplace_back(node);
        }
        return records;
    }

private:
    pugi::xml_document m_document;
};

/// Checks that a text is a valid cell of each column, or refused, and comes back as a stored text.
void CheckText(const std::string& text)
{
    for (const TableColumn& column : TableColumns()) {
        const CellReading read = ReadCell(column, text, {});
        Require(read.refusal.empty() || (read.refusal.ends_with('.') && read.stored.empty()),
                "a refused cell has a reason and no value");
        const CellReading again = ReadCell(column, CellOf(column, text), {});
        Require(again.refusal.empty() && again.stored == text, "any stored text comes back");
    }
}

void CheckImport(const CsvRows& rows)
{
    static const Sample trips(TARNO_SHIPPED_DATA "/sample/tarno.xml");
    static const Sample locations(TARNO_SHIPPED_DATA "/sample/location.xml");
    const ColumnMapping mapping = ProposeMapping(rows.front(), {});
    Require(mapping.size() == rows.front().size(), "every column is mapped or ignored");
    const auto candidates = ReadTrips(rows, mapping, {});
    const ImportPlan plan = PlanImport(candidates, trips.Records(), locations.Records());
    Require(plan.rows.size() == candidates.size(), "every candidate is planned");
    Require(plan.Count(RowStatus::New) == plan.batch.trips.size(), "every new row is a trip");
    Require(plan.places.size() == plan.batch.locations.size(), "every new place is named");
    for (const ImportedTrip& trip : plan.batch.trips) {
        Require(!trip.newLocation || *trip.newLocation < plan.places.size(), "every new place exists");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const CsvFile file = ReadCsv(BytesOf(data, size));
    Require(file.rows.size() == file.lines.size(), "every row has a line");
    if (file.problem) {
        Require(file.rows.empty() && (file.problem->line > 0) == (file.problem->column > 0) &&
                    !file.problem->reason.empty(),
                "a problem has a reason, and a position or none");
        return 0;
    }
    std::string written = WriteCsv(file.rows, file.separator);
    constexpr std::size_t markSize = 3; // of the byte order mark
    const CsvFile again = ReadCsv(written.insert(markSize, std::string("sep=") + file.separator + '\n'));
    Require(!again.problem && again.rows == file.rows, "a written table is read unchanged");
    std::size_t checked = 0;
    for (const CsvRow& row : file.rows) {
        Require(!row.empty() && row.size() <= CsvLimits::columns, "a row has texts");
        for (const std::string& text : row) {
            if (++checked < 4) { // each is read as every column
                CheckText(text);
            }
        }
    }
    if (!file.rows.empty()) {
        CheckImport(file.rows);
    }
    return 0;
}
