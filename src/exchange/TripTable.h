#pragma once

#include "exchange/Csv.h"
#include "exchange/TableColumns.h"
#include "store/ImportBatch.h"
#include "store/Record.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// Returns the trips as rows, in file order, after a row with the headings of TableColumns. ReadTrips
/// restores every stored value, also of trips without a date or location. Values that a trip lacks are empty.
CsvRows TripRows(const RecordList& trips, const RecordList& locations);

/// Whether a column of the table contains the field with this heading of TableColumns.
bool IsMapped(const ColumnMapping& mapping, std::string_view heading);

/// A row of a table that can become a trip.
struct TripCandidate {
    std::size_t row;          ///< in the table, counted from 0
    StoredTexts trip;         ///< stored texts by EntryField; the numbers are those of the row
    StoredTexts place;        ///< stored texts by LocationField, those that the table has
    std::string refusal = {}; ///< a sentence for the user; empty if the row was read
};

/// Reads the rows below the headings. Columns that are not mapped are empty in the candidates. Rows without
/// any text are left out. A row without a start date or location, or with texts beyond the last heading, is
/// refused. If no column is the end date, trips end on the day on which they start. Calls `advance`, if
/// given, after each row, and stops reading if it returns false.
std::vector<TripCandidate> ReadTrips(const CsvRows& rows, const ColumnMapping& mapping,
                                     const TableForms& forms, const std::function<bool()>& advance = {});

enum class RowStatus {
    New,
    AlreadyThere, ///< the log has a trip with the same place, start date and times
    Refused
};

struct PlannedRow {
    std::size_t row; ///< in the table, counted from 0
    RowStatus status;
    std::string reason; ///< why the row is refused, or the number of the trip that the log already has
};

/// A location that the log does not have.
struct PlannedPlace {
    std::string name;      ///< as it is stored: "~CL~" is a line break
    std::string latitude;  ///< empty if the table does not have it
    std::string longitude; ///< likewise
    std::size_t trips;     ///< the number of new trips there
};

/// What an import will do. Nothing has been changed yet.
struct ImportPlan {
    std::vector<PlannedRow> rows;
    std::vector<PlannedPlace> places; ///< in the order of batch.locations
    ImportBatch batch;                ///< the new trips and locations, for cSQL::Import

    std::size_t Count(RowStatus status) const;
};

/// Compares the candidates with the log. The location of a row is the one of the log with its number and
/// name, otherwise the first one with its name, otherwise a new one. Names are compared like the words of a
/// query, but on one line. A row with a number but without a name keeps the number. A row keeps the number of
/// its trip if the log does not have it (see cSQL::Import).
ImportPlan PlanImport(const std::vector<TripCandidate>& candidates, const RecordList& trips,
                      const RecordList& locations);

} // namespace Tarno
