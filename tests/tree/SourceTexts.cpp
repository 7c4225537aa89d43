#include "SourceTexts.h"

#include <QByteArray>
#include <QXmlStreamReader>

#include <cctype>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <stdexcept>

namespace Tarno
{

namespace
{

/// The length of the quoted text at the start of `code`, quotation marks included.
std::size_t QuotedLength(std::string_view code)
{
    std::size_t end = 1;
    while (end < code.size() && code[end] != code[0]) {
        end += code[end] == '\\' ? 2 : 1;
    }
    return end + 1;
}

/// The length of the comment at the start of `code`; 0 if it does not start with one.
std::size_t CommentLength(std::string_view code)
{
    const bool isLine = code.starts_with("//");
    if (!isLine && !code.starts_with("/*")) {
        return 0;
    }
    const std::size_t end = isLine ? code.find('\n') : code.find("*/", 2);
    return end == std::string_view::npos ? code.size() : end + (isLine ? 1 : 2);
}

std::string WithoutMnemonic(std::string_view caption)
{
    std::string text;
    for (std::size_t at = 0; at < caption.size(); ++at) {
        if (caption[at] == '&' && at + 1 < caption.size()) {
            ++at;
        }
        text += caption[at];
    }
    return text;
}

std::string Read(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.generic_string());
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// How often each text occurs in the files named by `files`, which are separated by blanks.
std::map<std::string, int> TextsOf(const std::filesystem::path& sources, const std::string& files)
{
    std::map<std::string, int> counts;
    std::istringstream names(files);
    for (std::string name; names >> name;) {
        const std::string bytes = Read(sources / name);
        for (const std::string& text : name.ends_with(".ui") ? StringsOfForm(bytes) : LiteralsOf(bytes)) {
            ++counts[text];
        }
    }
    return counts;
}

} // namespace

std::string ResolveEscapes(std::string_view text)
{
    static const std::map<char, char> simple{{'r', '\r'},  {'n', '\n'}, {'t', '\t'},
                                             {'\\', '\\'}, {'"', '"'},  {'\'', '\''}};
    std::string resolved;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            resolved += text[at];
            continue;
        }
        const char kind = ++at < text.size() ? text[at] : '\0';
        if (const auto found = simple.find(kind); found != simple.end()) {
            resolved += found->second;
        } else if (kind == 'x') {
            resolved += static_cast<char>(std::stoi(std::string(text.substr(at + 1, 2)), nullptr, 16));
            at += 2;
        } else {
            throw std::runtime_error("unknown escape in " + std::string(text));
        }
    }
    return resolved;
}

std::vector<std::string> LiteralsOf(std::string_view code)
{
    std::vector<std::string> literals;
    bool isAdjacent = false;
    for (std::size_t at = 0; at < code.size();) {
        const std::string_view rest = code.substr(at);
        if (const std::size_t comment = CommentLength(rest); comment > 0) {
            at += comment;
            continue;
        }
        if (rest[0] == '"') {
            const std::size_t length = QuotedLength(rest);
            const std::string literal = ResolveEscapes(rest.substr(1, length - 2));
            if (isAdjacent) {
                literals.back() += literal;
            } else {
                literals.push_back(literal);
            }
            isAdjacent = true;
            at += length;
            continue;
        }
        const bool isSpace = std::isspace(static_cast<unsigned char>(rest[0])) != 0;
        const bool followsDigit = at > 0 && std::isdigit(static_cast<unsigned char>(code[at - 1])) != 0;
        isAdjacent = isAdjacent && isSpace;
        at += rest[0] == '\'' && !followsDigit ? QuotedLength(rest) : 1; // after a digit it separates digits
    }
    return literals;
}

std::vector<std::string> StringsOfForm(std::string_view form)
{
    std::vector<std::string> texts;
    QXmlStreamReader reader(QByteArray(form.data(), static_cast<qsizetype>(form.size())));
    bool isAccessible = false;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (reader.name() == QLatin1String("property")) {
            isAccessible =
                reader.attributes().value(QLatin1String("name")).startsWith(QLatin1String("accessible"));
        } else if (reader.name() == QLatin1String("string") && !isAccessible) {
            texts.push_back(WithoutMnemonic(reader.readElementText().toStdString()));
        }
    }
    if (reader.hasError()) {
        throw std::runtime_error("a form is not well-formed: " + reader.errorString().toStdString());
    }
    return texts;
}

std::vector<std::string> MissingTexts(const std::filesystem::path& sources, std::string_view list)
{
    std::vector<std::string> missing;
    std::map<std::string, std::map<std::string, int>> unmatched; // texts that no line has claimed, by files
    std::string files;
    std::istringstream lines{std::string(list)};
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line.starts_with('#')) {
            continue;
        }
        if (line.starts_with('[')) {
            files = line.substr(1, line.find(']') - 1);
            if (unmatched.count(files) == 0) {
                unmatched[files] = TextsOf(sources, files);
            }
        } else if (--unmatched[files][ResolveEscapes(line)] < 0) {
            missing.push_back(std::string(files).append(": ").append(line));
        }
    }
    return missing;
}

} // namespace Tarno
