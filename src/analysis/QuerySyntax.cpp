#include "QuerySyntax.h"

#include <QList>
#include <QString>

#include <algorithm>

namespace Tarno
{

namespace
{

constexpr std::string_view blanks = " \t\r\n\v\f";

/// Returns the length of the part of `text` before the first of `separators` that is not quoted.
std::size_t LengthBefore(std::string_view separators, std::string_view text)
{
    bool isQuoted = false;
    const auto* end = std::find_if(text.begin(), text.end(), [&](char letter) {
        isQuoted = isQuoted != (letter == '"');
        return !isQuoted && separators.find(letter) != std::string_view::npos;
    });
    return static_cast<std::size_t>(end - text.begin());
}

bool StartsWithLetter(std::string_view text)
{
    constexpr qsizetype longestLetter = 4;
    const auto length = std::min(static_cast<qsizetype>(text.size()), longestLetter);
    const auto letters = QString::fromUtf8(text.data(), length).toUcs4();
    return !letters.empty() && QChar::isLetter(letters.front());
}

WrittenAlternative SplitAlternative(std::string_view text, const QueryField* fieldBefore)
{
    const std::size_t colon = text.find_first_of(":\"");
    if (colon == std::string_view::npos || text[colon] != ':' || !StartsWithLetter(text)) {
        return {text, {}, text, fieldBefore};
    }
    const std::string_view name = text.substr(0, colon);
    return {text, name, text.substr(colon + 1), FindQueryField(name)};
}

WrittenTerm SplitTerm(std::string_view text)
{
    WrittenTerm term{text, text.starts_with('-'), std::count(text.begin(), text.end(), '"') % 2 == 0, {}};
    const QueryField* field = nullptr;
    for (std::string_view rest = text.substr(term.isExcluded ? 1 : 0);;) {
        const std::size_t length = LengthBefore("|", rest);
        term.alternatives.push_back(SplitAlternative(rest.substr(0, length), field));
        field = term.alternatives.back().field;
        if (length == rest.size()) {
            return term;
        }
        rest.remove_prefix(length + 1);
    }
}

} // namespace

std::vector<WrittenTerm> SplitQuery(std::string_view query)
{
    std::vector<WrittenTerm> terms;
    std::string_view rest = query;
    for (;;) {
        rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
        if (rest.empty()) {
            return terms;
        }
        const std::size_t length = LengthBefore(blanks, rest);
        terms.push_back(SplitTerm(rest.substr(0, length)));
        rest.remove_prefix(length);
    }
}

std::string BothQueries(std::string_view first, std::string_view second)
{
    std::string both;
    for (const WrittenTerm& term : SplitQuery(first)) {
        if (term.isClosed) { // an open quotation finds nothing and would swallow the second query
            both.append(term.text) += ' ';
        }
    }
    return both.append(second);
}

std::string Quoted(std::string_view value)
{
    if (value.find('"') != std::string_view::npos) {
        return {};
    }
    const bool isPlain = value.find_first_of(" \t\r\v\f|:") == std::string_view::npos &&
                         value.find_first_of("<>=") != 0 && value.find("..") == std::string_view::npos;
    return isPlain ? std::string(value) : '"' + std::string(value) + '"';
}

std::string Unquoted(std::string_view written)
{
    std::string text;
    for (const char letter : written) {
        if (letter != '"') {
            text += letter == '\n' || letter == '\r' ? ' ' : letter;
        }
    }
    return text;
}

} // namespace Tarno
