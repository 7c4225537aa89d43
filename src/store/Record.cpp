#include "Record.h"

#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Text.h"
#include "core/Xml.h"

#include <iterator>

namespace Tarno
{

namespace
{

bool IsElement(const pugi::xml_node& node)
{
    return node.type() == pugi::node_element;
}

/// Returns the child element at `position`, or a null node if the record has fewer.
pugi::xml_node ChildAt(const pugi::xml_node& record, std::size_t position)
{
    for (pugi::xml_node child = record.first_child(); child; child = child.next_sibling()) {
        if (IsElement(child) && position-- == 0) {
            return child;
        }
    }
    return {};
}

pugi::xml_node RequiredChildAt(const pugi::xml_node& record, std::size_t position)
{
    const pugi::xml_node child = ChildAt(record, position);
    if (!child) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return child;
}

void AppendTextOf(const pugi::xml_node& node, std::string& text)
{
    text += node.value();
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata || IsElement(child)) {
            AppendTextOf(child, text);
        }
    }
}

} // namespace

std::string TextOf(const pugi::xml_node& node)
{
    std::string text;
    AppendTextOf(node, text);
    return text;
}

std::string RecordView::Text(std::size_t position) const
{
    return TextOf(ChildAt(m_node, position));
}

bool RecordView::Has(std::size_t position) const
{
    return !ChildAt(m_node, position).empty();
}

std::int32_t RecordView::Key() const
{
    const pugi::xml_node key = ChildAt(m_node, 0);
    return key ? ToInt32(TextOf(key)) : 0;
}

std::size_t RecordView::Count() const
{
    std::size_t count = 0;
    for (const pugi::xml_node& child : m_node.children()) {
        count += IsElement(child) ? 1 : 0;
    }
    return count;
}

const RecordView& RecordAt(const RecordList& list, std::int64_t position)
{
    if (position < 0 || static_cast<std::uint64_t>(position) >= list.size()) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    return list[static_cast<std::size_t>(position)];
}

Record::Record(const RecordView& stored)
{
    m_document.append_copy(stored.Node());
}

Record Record::FromXml(std::string_view xml)
{
    Record record;
    ParseXml(xml, record.m_document);
    return record;
}

Record::Record(const Record& other) : Record(other.View()) {}

Record& Record::operator=(const Record& other)
{
    if (this != &other) {
        m_document.reset(other.m_document);
    }
    return *this;
}

std::string Record::Text(std::size_t position) const
{
    return TextOf(RequiredChildAt(m_document.first_child(), position));
}

void Record::SetText(std::size_t position, std::string_view text)
{
    pugi::xml_node child = RequiredChildAt(m_document.first_child(), position);
    child.remove_children();
    if (child.text() || !text.empty()) {
        child.text().set(XmlText(text).c_str());
    }
}

} // namespace Tarno
