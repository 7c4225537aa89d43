#include "Xml.h"

#include "Text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace
{

// Fragments are let in so that text beside the root is seen and refused instead of dropped. Line ends are
// left as they are: a value keeps its bytes.
constexpr unsigned parseOptions = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_wconv_attribute |
                                  pugi::parse_comments | pugi::parse_pi | pugi::parse_declaration |
                                  pugi::parse_doctype | pugi::parse_ws_pcdata_single | pugi::parse_fragment;

/// Whether `name`, what stands between "&" and ";", stands for a character that XML can carry.
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

bool HasOnlyReferences(std::string_view text)
{
    for (auto at = text.find('&'); at != std::string_view::npos; at = text.find('&')) {
        text.remove_prefix(at + 1);
        const auto end = text.find(';');
        if (end == std::string_view::npos || !IsReference(text.substr(0, end))) {
            return false;
        }
    }
    return true;
}

/// Stops at the first text or attribute that holds an "&" which begins no reference.
struct ReferenceCheck final : pugi::xml_tree_walker {
    bool for_each(pugi::xml_node& node) override
    {
        const auto attributes = node.attributes();
        return (node.type() != pugi::node_pcdata || HasOnlyReferences(node.value())) &&
               std::all_of(attributes.begin(), attributes.end(), [](const pugi::xml_attribute& attribute) {
                   return HasOnlyReferences(attribute.value());
               });
    }
};

/// The parser itself takes an "&" that begins no reference for text, which would then be saved as such.
bool HasOnlyReferences(std::string_view bytes, unsigned options)
{
    if (bytes.find('&') == std::string_view::npos) {
        return true;
    }
    pugi::xml_document raw;
    ReferenceCheck check;
    return raw.load_buffer(bytes.data(), bytes.size(), options & ~pugi::parse_escapes, pugi::encoding_utf8) &&
           raw.traverse(check);
}

bool HasOneRoot(const pugi::xml_document& document)
{
    int roots = 0;
    for (const pugi::xml_node& node : document.children()) {
        if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
            return false;
        }
        roots += node.type() == pugi::node_element ? 1 : 0;
    }
    return roots == 1;
}

struct StringWriter final : pugi::xml_writer {
    void write(const void* data, std::size_t size) override
    {
        text.append(static_cast<const char*>(data), size);
    }

    std::string text;
};

} // namespace

bool ParseXml(std::string_view bytes, pugi::xml_document& document)
{
    document.reset();
    std::string converted;
    if (HasUtf16Mark(bytes)) {
        converted = FromUtf16(bytes);
        bytes = converted;
    }
    // the parser itself looks at neither the encoding nor control characters, and stops at a zero byte
    if (!IsXmlText(bytes) || !HasOnlyReferences(bytes, parseOptions)) {
        return false;
    }
    if (!document.load_buffer(bytes.data(), bytes.size(), parseOptions, pugi::encoding_utf8) ||
        !HasOneRoot(document)) {
        document.reset();
        return false;
    }
    // what is saved is UTF-8, whatever was declared
    if (pugi::xml_node first = document.first_child(); first.type() == pugi::node_declaration) {
        first.attribute("encoding") = "UTF-8";
    }
    return true;
}

std::string SerializeXml(const pugi::xml_document& document)
{
    StringWriter writer;
    document.save(writer, "\t", pugi::format_indent | pugi::format_no_declaration, pugi::encoding_utf8);
    return std::move(writer.text);
}
