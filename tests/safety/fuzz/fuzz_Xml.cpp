#include "Require.h"
#include "core/Text.h"
#include "core/Xml.h"
#include "store/Record.h"

#include <algorithm>
#include <string>
#include <vector>

using namespace Tarno;

namespace
{

/// The text of an element without child elements.
struct Value {
    std::string text;
    /// Whether the element contains a single text, as the program writes it. Otherwise the first save drops
    /// blanks that are written as references next to comments and CDATA sections.
    bool plain;

    bool IsKeptBy(const Value& saved) const
    {
        return plain ? saved.text == text : WithoutBlanks(saved.text) == WithoutBlanks(text);
    }
};

/// Appends the values in document order.
void CollectValues(const pugi::xml_node& node, std::vector<Value>& values)
{
    bool leaf = true;
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_element) {
            leaf = false;
            CollectValues(child, values);
        }
    }
    if (leaf) {
        values.push_back({TextOf(node), node.first_child() == node.last_child()});
    }
}

bool KeepsValues(const pugi::xml_document& document, const pugi::xml_document& saved)
{
    std::vector<Value> before;
    std::vector<Value> after;
    CollectValues(document, before);
    CollectValues(saved, after);
    return std::equal(before.begin(), before.end(), after.begin(), after.end(),
                      [](const Value& value, const Value& now) { return value.IsKeptBy(now); });
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = BytesOf(data, size);
    pugi::xml_document document;
    const bool parsed = ParseXml(bytes, document);
    std::string inPlace(bytes);
    pugi::xml_document same;
    Require(!ParseXmlInPlace(inPlace, same) == parsed, "both parsers accept the same documents");
    const std::string once = SerializeXml(document);
    Require(SerializeXml(same) == once, "both parsers create the same document");
    if (!parsed) {
        Require(!document.first_child(), "a refused document is empty");
        return 0;
    }
    Require(IsXmlText(once), "the output contains only characters that XML allows");
    pugi::xml_document again;
    Require(ParseXml(once, again), "the output can be parsed");
    Require(KeepsValues(document, again), "the output contains the same values");
    const std::string twice = SerializeXml(again);
    Require(WithoutBlanks(twice) == WithoutBlanks(once), "the first save removes only blanks");
    Require(ParseXml(twice, again) && SerializeXml(again) == twice, "later saves write the same bytes");
    return 0;
}
