#pragma once

#include "exchange/Csv.h"
#include "store/EntryFields.h"
#include "store/Record.h"
#include "store/RecordLayouts.h"

#include <QLocale>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// What the cells of a column contain and which texts they accept.
enum class CellKind {
    Text,      ///< any text
    Lines,     ///< any text; line breaks are stored as "~CL~"
    Date,      ///< ISO or the short form of TableForms
    Time,      ///< hours and minutes
    RiseOrSet, ///< a time, or what the program calculates for a day without one
    PeakTime,  ///< a time, or any other text
    Code,      ///< a word of the field, or a number
    MoonPhase, ///< "Waning, 45%", or the stored number
    Latitude,  ///< decimal degrees, with a point or a comma
    Longitude,
    Hours,   ///< from GMT
    YesOrNo, ///< stored as "1" and "0"
};

/// A column of a table of trips. It is a value of the trip, or one of its location.
struct TableColumn {
    enum class Owner { Trip, Location };

    Owner owner;
    std::size_t position;     ///< in EntryField or LocationField
    std::string_view heading; ///< as it is exported: the data name of a field
    std::string_view caption; ///< for the user, for example "Start date"
    CellKind kind;
    std::span<const std::string_view> words = {}; ///< of a code
    bool isNeeded =
        false; ///< without a value, trips are hardly usable: an empty text is not written as an empty cell
};

/// The columns in the order of the export: the catalogue of fields, with the name, the coordinates and the
/// clock of the location beside its number.
const std::vector<TableColumn>& TableColumns();

/// The position in TableColumns of the column for each column of a table, or nothing if it is ignored.
using ColumnMapping = std::vector<std::optional<std::size_t>>;

/// Proposes what the columns of a table with these headings contain. Recognises the data names, the captions
/// of the fields in the windows, and the descriptions and labels in `fields` (cSQL::FieldList), without
/// regard to case. If several headings mean the same, only the first one is mapped.
ColumnMapping ProposeMapping(const CsvRow& headings, const RecordList& fields);

/// How dates are written in a table, beside "2025-12-31" and "2025/12/31", which are always accepted.
struct TableForms {
    enum class DateOrder { DayMonthYear, MonthDayYear, YearMonthDay };

    DateOrder dates = DateOrder::DayMonthYear;
    /// The first of the hundred years that a year of two digits can mean; by default those of the editor.
    int firstYear = 1930;

    /// Returns the forms of a locale.
    static TableForms Of(const QLocale& locale);
};

/// The stored text of a cell, or why the cell is refused.
struct CellReading {
    std::string stored = {};
    std::string refusal = {}; ///< a sentence for the user; empty if the cell is accepted
};

/// Converts the text of a cell to the stored text. "~=" in front of a text means that the rest is the stored
/// text, whatever it is.
CellReading ReadCell(const TableColumn& column, std::string_view cell, const TableForms& forms);

/// Returns the cell for a stored text: in words if ReadCell restores the stored text from them, otherwise
/// with "~=" in front.
std::string CellOf(const TableColumn& column, std::string_view stored);

} // namespace Tarno
