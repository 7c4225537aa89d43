#include "Promise.h"
#include "core/Text.h"
#include "core/Xml.h"
#include "store/Record.h"

#include <string>
#include <vector>

namespace
{

/// The text of an element. Beside sections and comments, which the program never writes, blanks that stand
/// there as references go with the first save.
std::string ValueOf(const pugi::xml_node& node)
{
    return node.first_child() == node.last_child() ? TextOf(node) : WithoutBlanks(TextOf(node));
}

/// The texts of the elements that hold no others, in document order.
void CollectValues(const pugi::xml_node& node, std::vector<std::string>& values)
{
    bool leaf = true;
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_element) {
            leaf = false;
            CollectValues(child, values);
        }
    }
    if (leaf) {
        values.push_back(ValueOf(node));
    }
}

std::vector<std::string> ValuesOf(const pugi::xml_document& document)
{
    std::vector<std::string> values;
    CollectValues(document, values);
    return values;
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
    Promise(ValuesOf(again) == ValuesOf(document), "what was written holds the same values");
    const std::string twice = SerializeXml(again);
    Promise(WithoutBlanks(twice) == WithoutBlanks(once), "only blanks go with the first save");
    Promise(ParseXml(twice, again) && SerializeXml(again) == twice,
            "what was read again is written in the same bytes");
    return 0;
}
