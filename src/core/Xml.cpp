#include "Xml.h"

#include "Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

namespace Tarno
{

namespace
{

// parse_fragment makes text outside the root visible, so that it is refused instead of dropped.
constexpr unsigned parseOptions = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol |
                                  pugi::parse_wconv_attribute | pugi::parse_comments | pugi::parse_pi |
                                  pugi::parse_declaration | pugi::parse_doctype |
                                  pugi::parse_ws_pcdata_single | pugi::parse_fragment;
constexpr auto encoding = pugi::encoding_utf8;

// Levels of elements; the files of the program have three. The limit bounds recursion and the indentation of
// saved files.
constexpr int maxDepth = 256;

/// Whether `name`, the text between "&" and ";", refers to a character that XML allows.
bool IsReference(std::string_view name)
{
    constexpr std::array<std::string_view, 5> predefined{"amp", "apos", "gt", "lt", "quot"};
    if (!name.starts_with('#')) {
        return std::find(predefined.begin(), predefined.end(), name) != predefined.end();
    }
    const bool hexadecimal = name.starts_with("#x");
    const std::string_view digits = name.substr(hexadecimal ? 2 : 1);
    std::uint32_t value = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, failure] = std::from_chars(digits.data(), end, value, hexadecimal ? 16 : 10);
    return failure == std::errc() && stop == end && IsXmlCharacter(value);
}

struct Section {
    std::size_t begin;
    std::size_t end;
};

/// Returns the end of the tag that begins at `at`, ignoring quoted text.
std::size_t EndOfTag(std::string_view bytes, std::size_t at)
{
    constexpr std::string_view endsAndQuotes = ">[\"'"; // a document type contains further tags after "["
    at = bytes.find_first_of(endsAndQuotes, at);
    while (at != std::string_view::npos && (bytes[at] == '"' || bytes[at] == '\'')) {
        at = bytes.find(bytes[at], at + 1);
        at = at == std::string_view::npos ? at : bytes.find_first_of(endsAndQuotes, at + 1);
    }
    return at;
}

/// Whether an XML declaration begins at `at`. Its values may contain references, like those of attributes.
bool IsDeclarationAt(std::string_view bytes, std::size_t at)
{
    constexpr std::string_view opening = "<?xml";
    return EqualIgnoringCase(bytes.substr(at, opening.size()), opening) &&
           bytes.find_first_of(" \t\r\n?", at + opening.size()) == at + opening.size();
}

/// Returns the first comment, CDATA section or processing instruction at or after `from`, which must be
/// outside tags and declarations. Returns an empty section at the end of `bytes` if none follows.
Section NextLiteral(std::string_view bytes, std::size_t from)
{
    constexpr std::array<std::pair<std::string_view, std::string_view>, 3> kinds{
        {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}}};
    for (std::size_t at = bytes.find('<', from); at != std::string_view::npos;
         at = bytes.find('<', EndOfTag(bytes, at))) {
        for (const auto& [opening, closing] : kinds) {
            if (bytes.substr(at).starts_with(opening) && !IsDeclarationAt(bytes, at)) {
                return {at, std::min(bytes.find(closing, at + opening.size()), bytes.size())};
            }
        }
    }
    return {bytes.size(), bytes.size()};
}

/// Returns the position of the first "&" outside of literal sections that does not begin a valid character
/// reference, or npos. The parser accepts it as text, which would then be saved as "&amp;".
std::size_t FindInvalidReference(std::string_view bytes)
{
    constexpr std::size_t maxLength = 64; // leaves room for leading zeros
    Section literal{0, 0};
    for (auto at = bytes.find('&'); at != std::string_view::npos; at = bytes.find('&', at + 1)) {
        const std::string_view rest = bytes.substr(at + 1, maxLength);
        const auto end = rest.find(';');
        if (end != std::string_view::npos && IsReference(rest.substr(0, end))) {
            continue;
        }
        while (literal.end <= at && literal.begin < bytes.size()) {
            literal = NextLiteral(bytes, literal.end);
        }
        if (at < literal.begin) {
            return at;
        }
    }
    return std::string_view::npos;
}

/// Returns the first text, CDATA section or further element beside the root element, or a null node.
pugi::xml_node FindBesideRoot(const pugi::xml_document& document)
{
    bool hasRoot = false;
    for (const pugi::xml_node& node : document.children()) {
        const bool isElement = node.type() == pugi::node_element;
        if ((isElement && hasRoot) || node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
            return node;
        }
        hasRoot = hasRoot || isElement;
    }
    return {};
}

/// Finds the first element that is nested too deeply.
struct DepthCheck final : pugi::xml_tree_walker {
    bool for_each(pugi::xml_node& node) override
    {
        if (depth() < maxDepth || node.type() != pugi::node_element) {
            return true;
        }
        tooDeep = node;
        return false;
    }

    pugi::xml_node tooDeep;
};

/// Finds what the parser does not: it accepts any bytes as text and stops at a zero byte.
std::optional<XmlFault> FindFault(std::string_view text)
{
    if (const std::size_t length = XmlTextLength(text); length < text.size()) {
        return XmlFault{length, "Character that XML does not allow"};
    }
    if (const std::size_t at = FindInvalidReference(text); at != std::string_view::npos) {
        return XmlFault{at, "Invalid character reference"};
    }
    return std::nullopt;
}

std::optional<XmlFault> FindFault(const pugi::xml_parse_result& result, pugi::xml_document& document)
{
    const auto faultAt = [](const pugi::xml_node& node, std::string_view reason) {
        return XmlFault{static_cast<std::size_t>(node.offset_debug()), reason};
    };
    if (!result) {
        return XmlFault{static_cast<std::size_t>(result.offset), result.description()};
    }
    if (const pugi::xml_node node = FindBesideRoot(document)) {
        return faultAt(node, "Text or element outside the first element");
    }
    if (!document.document_element()) {
        return XmlFault{0, "No element"};
    }
    DepthCheck check;
    if (!document.traverse(check)) {
        return faultAt(check.tooDeep, "Too many nested elements");
    }
    return std::nullopt;
}

/// Empties the document from its leaves upwards. reset() alone would recurse once per level.
void ResetWithoutRecursion(pugi::xml_document& document)
{
    for (pugi::xml_node node = document.root(); node;) {
        if (const pugi::xml_node child = node.first_child(); child) {
            node = child;
        } else {
            pugi::xml_node parent = node.parent();
            parent.remove_child(node);
            node = parent;
        }
    }
    document.reset();
}

/// Loads `text` with `load`, a function that returns the result of the parser. Returns why it is refused; the
/// document is empty then.
template <typename Load>
std::optional<XmlFault> LoadOrReset(std::string_view text, pugi::xml_document& document, Load&& load)
{
    document.reset();
    if (const auto fault = FindFault(text)) {
        return fault;
    }
    const pugi::xml_parse_result result = load();
    if (const auto fault = FindFault(result, document)) {
        ResetWithoutRecursion(document);
        return fault;
    }
    // documents are always saved as UTF-8
    if (pugi::xml_node first = document.first_child(); first.type() == pugi::node_declaration) {
        first.attribute("encoding") = "UTF-8";
    }
    return std::nullopt;
}

struct StringWriter final : pugi::xml_writer {
    void write(const void* data, std::size_t size) override
    {
        std::string_view rest(static_cast<const char*>(data), size);
        // pugixml writes a carriage return raw, which the next reader would take for a line feed
        for (auto at = rest.find('\r'); at != std::string_view::npos; at = rest.find('\r')) {
            text.append(rest.substr(0, at)).append("&#13;");
            rest.remove_prefix(at + 1);
        }
        text.append(rest);
    }

    std::string text;
};

} // namespace

bool ParseXml(std::string_view bytes, pugi::xml_document& document)
{
    const std::string converted = HasUtf16Mark(bytes) ? FromUtf16(bytes) : std::string();
    const std::string_view text = converted.empty() ? bytes : converted;
    return !LoadOrReset(text, document, [&] {
        return document.load_buffer(text.data(), text.size(), parseOptions, encoding);
    });
}

std::optional<XmlFault> ParseXmlInPlace(std::string& bytes, pugi::xml_document& document)
{
    if (HasUtf16Mark(bytes)) {
        bytes = FromUtf16(bytes);
    }
    // Passes the terminating zero too. The parser overwrites the last byte that it gets with a zero, so it
    // would not detect a stray letter at the end of the text.
    return LoadOrReset(bytes, document, [&] {
        return document.load_buffer_inplace(bytes.data(), bytes.size() + 1,
                                            parseOptions | pugi::parse_embed_pcdata, encoding);
    });
}

std::string DescribeXmlPosition(std::string_view bytes, std::size_t offset)
{
    const std::string converted = HasUtf16Mark(bytes) ? FromUtf16(bytes) : std::string();
    const std::string_view before = (converted.empty() ? bytes : converted).substr(0, offset);
    const auto lineStart = before.rfind('\n') + 1; // 0 in the first line
    return "Line " + std::to_string(1 + std::count(before.begin(), before.end(), '\n')) + ", column " +
           std::to_string(1 + before.size() - lineStart);
}

std::string SerializeXml(const pugi::xml_document& document, std::size_t expectedSize)
{
    StringWriter writer;
    writer.text.reserve(expectedSize);
    document.save(writer, "\t", pugi::format_indent | pugi::format_no_declaration, pugi::encoding_utf8);
    return std::move(writer.text);
}

std::string SerializeXml(const pugi::xml_node& node)
{
    StringWriter writer;
    node.print(writer, "", pugi::format_raw, pugi::encoding_utf8);
    return std::move(writer.text);
}

} // namespace Tarno
