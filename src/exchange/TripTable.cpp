#include "TripTable.h"

#include <algorithm>
#include <map>

namespace Tarno
{

namespace
{

using Owner = TableColumn::Owner;

/// Whether all texts of a row, or those from a column on, are empty.
bool IsWithoutText(const CsvRow& row, std::size_t from = 0)
{
    return row.size() <= from || std::all_of(row.begin() + static_cast<std::ptrdiff_t>(from), row.end(),
                                             [](const std::string& text) { return text.empty(); });
}

TripCandidate ReadTrip(const CsvRow& row, const ColumnMapping& mapping, const TableForms& forms)
{
    TripCandidate candidate{
        .row = 0, .trip = StoredTexts(EntryField::Count), .place = StoredTexts(LocationField::Count)};
    if (!IsWithoutText(row, mapping.size())) {
        candidate.refusal = "The row has more values than there are headings.";
    }
    bool hasDate = false;
    bool hasPlace = false;
    for (std::size_t index = 0; index < std::min(row.size(), mapping.size()); ++index) {
        if (!mapping[index] || !candidate.refusal.empty()) {
            continue;
        }
        const TableColumn& column = TableColumns().at(*mapping[index]);
        const bool isOfTrip = column.owner == Owner::Trip;
        CellReading reading = ReadCell(column, row[index], forms);
        StoredTexts& values = isOfTrip ? candidate.trip : candidate.place;
        values[column.position] = std::move(reading.stored);
        candidate.refusal = std::move(reading.refusal);
        if (!row[index].empty()) {
            hasDate = hasDate || (isOfTrip && column.position == EntryField::StartDate);
            hasPlace = hasPlace || (isOfTrip ? column.position == EntryField::LocNo
                                             : column.position == LocationField::LocName);
        }
    }
    candidate.place[LocationField::LocNo] = candidate.trip[EntryField::LocNo];
    if (candidate.refusal.empty() && !(hasDate && hasPlace)) {
        candidate.refusal = hasDate ? "The location is missing." : "The start date is missing.";
    }
    return candidate;
}

} // namespace

bool IsMapped(const ColumnMapping& mapping, std::string_view heading)
{
    return std::any_of(mapping.begin(), mapping.end(), [&](const auto& column) {
        return column && TableColumns().at(*column).heading == heading;
    });
}

CsvRows TripRows(const RecordList& trips, const RecordList& locations)
{
    const auto& columns = TableColumns();
    std::map<std::string, RecordView> places; // the first location of each number, as in cSQL
    for (const RecordView& location : locations) {
        places.emplace(location.Text(LocationField::LocNo), location);
    }
    CsvRows rows(1);
    rows.reserve(trips.size() + 1);
    for (const TableColumn& column : columns) {
        rows.front().emplace_back(column.heading);
    }
    for (const RecordView& trip : trips) {
        CsvRow& row = rows.emplace_back();
        row.reserve(columns.size());
        const auto place = places.find(trip.Text(EntryField::LocNo));
        for (const TableColumn& column : columns) {
            const bool isOfTrip = column.owner == Owner::Trip;
            row.push_back(isOfTrip                ? CellOf(column, trip.Text(column.position))
                          : place == places.end() ? std::string()
                                                  : CellOf(column, place->second.Text(column.position)));
        }
    }
    return rows;
}

std::vector<TripCandidate> ReadTrips(const CsvRows& rows, const ColumnMapping& mapping,
                                     const TableForms& forms, const std::function<bool()>& advance)
{
    const bool hasEndDates = IsMapped(mapping, "EndDate");
    std::vector<TripCandidate> candidates;
    for (std::size_t index = 1; index < rows.size(); ++index) {
        if (!IsWithoutText(rows[index])) {
            TripCandidate& candidate = candidates.emplace_back(ReadTrip(rows[index], mapping, forms));
            candidate.row = index;
            if (!hasEndDates) {
                candidate.trip[EntryField::EndDate] = candidate.trip[EntryField::StartDate];
            }
        }
        if (advance && !advance()) {
            break;
        }
    }
    return candidates;
}

} // namespace Tarno
