#pragma once

#include "exchange/TextEncoding.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// A row of texts, UTF-8.
using CsvRow = std::vector<std::string>;
using CsvRows = std::vector<CsvRow>;

/// Returns the rows as a CSV file (RFC 4180): UTF-8 with a byte order mark, lines ended by CR LF, every text
/// in quotation marks. The separator is a comma, a semicolon or a tab. Texts are not altered, so a
/// spreadsheet may take "=1+1" for a formula.
std::string WriteCsv(const CsvRows& rows, char separator = ',');

namespace CsvLimits
{
inline constexpr std::size_t bytes = 100'000'000;
inline constexpr std::size_t columns = 1000;
inline constexpr std::size_t rows = 200'000; // a log has at most 32767 trips
inline constexpr std::size_t values = 5'000'000;
} // namespace CsvLimits

/// Why a file cannot be read.
struct CsvProblem {
    std::size_t line = 0;   ///< counted from 1; 0 if the problem is the whole file
    std::size_t column = 0; ///< in characters, counted from 1
    std::string reason;     ///< for the user, without a full stop

    /// Returns for example "Line 2, column 7: This quotation mark is not closed" or "The file is empty".
    std::string Describe() const;
};

enum class LineEnds { None, CrLf, Lf, Cr, Mixed };

/// A CSV file that was read, and what was recognised in it.
struct CsvFile {
    CsvRows rows;
    std::vector<std::size_t> lines; ///< the number of the line in which each row starts, counted from 1
    std::optional<CsvProblem> problem = {}; ///< if set, there are no rows
    char separator = ',';
    TextEncoding encoding = TextEncoding::Utf8;
    LineEnds lineEnds = LineEnds::None;
    bool hasQuotes = false;
};

/// Reads a CSV file. Never alters a text: blanks, leading zeros and line breaks inside quotation marks stay.
/// - If the first line is "sep=" and a character, that is the separator and the line is no row. Otherwise the
///   separator is the one of comma, semicolon and tab with which the first row has most texts.
/// - Quotation marks count only at the start of a text. Within it, two of them mean one.
/// - Lines end with CR LF, LF or CR. Empty lines are left out.
/// The rows may have different lengths. See DecodeText for the encodings.
CsvFile ReadCsv(std::string_view bytes);

} // namespace Tarno
