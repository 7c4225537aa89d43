#include "Promise.h"
#include "core/Text.h"
#include "core/Xml.h"
#include "store/Record.h"

#include <algorithm>
#include <string>
#include <vector>

using namespace Tarno;

namespace
{

/// The text of an element that holds no others.
struct Value {
    std::string text;
    /// Nothing but one text, as the program writes it. Beside comments and sections, blanks that stand there
    /// as references go with the first save.
    bool plain;

    bool IsKeptBy(const Value& saved) const
    {
        return plain ? saved.text == text : WithoutBlanks(saved.text) == WithoutBlanks(text);
    }
};

/// The values in document order.
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
    Promise(ParseXmlInPlace(inPlace, same) == parsed, "both parsers take the same documents");
    const std::string once = SerializeXml(document);
    Promise(SerializeXml(same) == once, "both parsers make the same document");
    if (!parsed) {
        Promise(!document.first_child(), "a refused document is empty");
        return 0;
    }
    Promise(IsXmlText(once), "what is written is text that XML can carry");
    pugi::xml_document again;
    Promise(ParseXml(once, again), "what was written is read again");
    Promise(KeepsValues(document, again), "what was written holds the same values");
    const std::string twice = SerializeXml(again);
    Promise(WithoutBlanks(twice) == WithoutBlanks(once), "only blanks go with the first save");
    Promise(ParseXml(twice, again) && SerializeXml(again) == twice,
            "what was read again is written in the same bytes");
    return 0;
}
