#include "Csv.h"

#include "core/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Tarno
{

namespace
{

constexpr char quote = '"';
constexpr std::array separators{',', ';', '\t'}; // the first one of equally frequent ones counts

bool IsLineEnd(char letter)
{
    return letter == '\r' || letter == '\n';
}

std::size_t CountLineEnds(std::string_view text)
{
    const auto returns = std::count(text.begin(), text.end(), '\r');
    std::size_t count = static_cast<std::size_t>(returns + std::count(text.begin(), text.end(), '\n'));
    for (auto at = text.find("\r\n"); at != std::string_view::npos; at = text.find("\r\n", at + 2)) {
        --count;
    }
    return count;
}

/// Reads the rows of a text once, from its start to its end.
class CsvReader
{
public:
    /// Reads from the position `start`.
    CsvReader(std::string_view text, CsvFile& file, std::size_t start = 0)
        : m_text(text), m_file(file), m_at(start)
    {
    }

    void ReadRows()
    {
        if (const std::size_t zero = m_text.find('\0'); zero != std::string_view::npos) {
            Refuse(zero, "A zero byte: this is not a text file");
        }
        while (!m_file.problem && m_at < m_text.size()) {
            if (IsLineEnd(m_text[m_at])) {
                TakeLineEnd();
            } else if (m_file.rows.size() == CsvLimits::rows) {
                RefuseMoreThan(CsvLimits::rows, " rows");
            } else {
                ReadRow();
            }
        }
    }

    /// Reads the first row only, up to a problem in it. Returns the number of its texts.
    std::size_t CountFirstColumns()
    {
        while (m_at < m_text.size() && IsLineEnd(m_text[m_at])) {
            TakeLineEnd();
        }
        ReadRow();
        return m_file.rows.front().size();
    }

private:
    void ReadRow()
    {
        m_line += CountLineEnds(m_text.substr(m_counted, m_at - m_counted));
        m_counted = m_at;
        m_file.lines.push_back(m_line);
        CsvRow& row = m_file.rows.emplace_back();
        if (m_file.rows.size() > 1) {
            row.reserve(m_file.rows.front().size());
        }
        for (bool hasNext = true; hasNext && !m_file.problem;) {
            if (row.size() == CsvLimits::columns) {
                RefuseMoreThan(CsvLimits::columns, " columns");
                return;
            }
            if (m_values++ == CsvLimits::values) {
                RefuseMoreThan(CsvLimits::values, " values");
                return;
            }
            row.push_back(m_at < m_text.size() && m_text[m_at] == quote ? ReadQuoted() : ReadPlain());
            hasNext = m_at < m_text.size() && m_text[m_at] == m_file.separator;
            m_at += hasNext ? 1 : 0;
        }
        if (m_at < m_text.size() && !m_file.problem) {
            TakeLineEnd();
        }
    }

    std::string ReadPlain()
    {
        const std::size_t start = m_at;
        while (m_at < m_text.size() && m_text[m_at] != m_file.separator && !IsLineEnd(m_text[m_at])) {
            ++m_at;
        }
        return std::string(m_text.substr(start, m_at - start));
    }

    std::string ReadQuoted()
    {
        m_file.hasQuotes = true;
        const std::size_t start = m_at;
        std::string text;
        for (bool isOpen = true; isOpen;) {
            ++m_at;
            const std::size_t end = m_text.find(quote, m_at);
            if (end == std::string_view::npos) {
                Refuse(start, "This quotation mark is not closed");
                return {};
            }
            text += m_text.substr(m_at, end - m_at);
            m_at = end + 1;
            isOpen = m_at < m_text.size() && m_text[m_at] == quote;
            if (isOpen) {
                text += quote;
            }
        }
        if (m_at < m_text.size() && m_text[m_at] != m_file.separator && !IsLineEnd(m_text[m_at])) {
            Refuse(m_at, "Text after a closing quotation mark");
        }
        return text;
    }

    void TakeLineEnd()
    {
        const bool isPair = m_text.substr(m_at, 2) == "\r\n";
        const LineEnds found = isPair ? LineEnds::CrLf : m_text[m_at] == '\n' ? LineEnds::Lf : LineEnds::Cr;
        m_file.lineEnds =
            m_file.lineEnds == LineEnds::None || m_file.lineEnds == found ? found : LineEnds::Mixed;
        m_at += isPair ? 2 : 1;
    }

    void RefuseMoreThan(std::size_t limit, std::string_view what)
    {
        Refuse(m_at, std::string("More than ").append(std::to_string(limit)).append(what));
    }

    void Refuse(std::size_t at, std::string reason)
    {
        const std::string_view before = m_text.substr(0, at);
        const std::size_t lineStart = before.find_last_of("\r\n") + 1; // 0 in the first line
        m_file.problem = {.line = 1 + CountLineEnds(before),
                          .column = 1 + CharacterCount(before.substr(lineStart)),
                          .reason = std::move(reason)};
    }

    std::string_view m_text;
    CsvFile& m_file;
    std::size_t m_at;
    std::size_t m_values = 0;
    std::size_t m_line = 1;    ///< the line of m_counted
    std::size_t m_counted = 0; ///< the start of a row
};

constexpr std::string_view separatorMark = "sep=";

/// Whether the first line names the separator, for example "sep=;", as some spreadsheets write it.
bool NamesSeparator(std::string_view text)
{
    const std::size_t end = separatorMark.size() + 1;
    if (text.size() < end || !EqualIgnoringCase(text.substr(0, separatorMark.size()), separatorMark)) {
        return false;
    }
    const char separator = text[separatorMark.size()];
    const bool isSeparator =
        separator == '\t' || (separator >= ' ' && separator <= '~' && separator != quote);
    return isSeparator && (text.size() == end || IsLineEnd(text[end]));
}

char SeparatorOf(std::string_view text)
{
    std::array<std::size_t, separators.size()> counts{};
    std::transform(separators.begin(), separators.end(), counts.begin(), [&](char separator) {
        CsvFile trial;
        trial.separator = separator;
        return CsvReader(text, trial).CountFirstColumns();
    });
    const auto* most = std::max_element(counts.begin(), counts.end());
    return separators.at(static_cast<std::size_t>(most - counts.begin()));
}

} // namespace

std::string CsvProblem::Describe() const
{
    return line == 0 ? reason
                     : "Line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + reason;
}

std::string WriteCsv(const CsvRows& rows, char separator)
{
    std::string file = "\xEF\xBB\xBF";
    for (const CsvRow& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (column > 0) {
                file += separator;
            }
            file += quote;
            if (row[column].find(quote) == std::string::npos) {
                file += row[column];
            } else {
                file += ReplaceAll(row[column], "\"", "\"\"");
            }
            file += quote;
        }
        file += "\r\n";
    }
    return file;
}

CsvFile ReadCsv(std::string_view bytes)
{
    CsvFile file;
    if (bytes.size() > CsvLimits::bytes) {
        file.problem = {.reason = "The file is larger than " + std::to_string(CsvLimits::bytes / 1'000'000) +
                                  " MB"};
        return file;
    }
    const auto decoded = DecodeText(bytes);
    if (!decoded) {
        file.problem = {.line = 1,
                        .column = 1,
                        .reason = "The file begins with a Unicode mark, but does not contain such text"};
        return file;
    }
    file.encoding = decoded->encoding;
    const std::string& text = decoded->text;
    const bool isNamed = NamesSeparator(text);
    file.separator = isNamed ? text[separatorMark.size()] : SeparatorOf(text);
    CsvReader(text, file, isNamed ? separatorMark.size() + 1 : 0).ReadRows();
    if (!file.problem && file.rows.empty()) {
        file.problem = {.reason = "The file is empty"};
    }
    if (file.problem) {
        file.rows.clear();
        file.lines.clear();
    }
    return file;
}

} // namespace Tarno
