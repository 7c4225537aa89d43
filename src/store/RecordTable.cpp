#include "RecordTable.h"

#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Xml.h"

#include <algorithm>
#include <limits>

namespace Tarno
{

namespace
{

pugi::xml_node LastRecord(const pugi::xml_node& container)
{
    pugi::xml_node last = container.last_child();
    while (last && last.type() != pugi::node_element) {
        last = last.previous_sibling();
    }
    return last;
}

std::int32_t KeyAfter(const pugi::xml_node& lastRecord)
{
    const std::int32_t key = ToInt32(Record(RecordView(lastRecord)).Text(0));
    if (key == std::numeric_limits<std::int32_t>::max()) {
        throw Error(ErrorNumber::Overflow);
    }
    return key + 1;
}

pugi::xml_node RequireNode(const pugi::xml_node& node)
{
    if (!node) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return node;
}

} // namespace

void RecordTable::Rebuild()
{
    ForgetChanges();
    Index();
}

void RecordTable::Index()
{
    m_byKey.clear();
    for (const pugi::xml_node& record : m_document.child("data").children(m_names.record)) {
        Index(record);
    }
}

void RecordTable::Index(const pugi::xml_node& record)
{
    if (const pugi::xml_node key = record.child(m_names.key); key) {
        m_byKey.emplace(TextOf(key), record);
    }
}

RecordList RecordTable::List() const
{
    RecordList records;
    for (const pugi::xml_node& node : Container().children()) {
        if (node.type() == pugi::node_element) {
            records.emplace_back(node);
        }
    }
    return records;
}

RecordView RecordTable::Get(const std::string& key) const
{
    return RecordView(RequireNode(Find(key)));
}

pugi::xml_node RecordTable::Find(const std::string& key) const
{
    const auto found = m_byKey.find(key);
    return found == m_byKey.end() ? pugi::xml_node() : found->second;
}

RecordView RecordTable::First() const
{
    const RecordList records = List();
    if (records.empty()) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return records.front();
}

void RecordTable::Append(Record& record)
{
    pugi::xml_node container = Container();
    const pugi::xml_node last = LastRecord(container);
    Record keyed = record;
    keyed.SetText(0, last ? std::to_string(KeyAfter(last)) : "1");
    m_appended.push_back(RequireNode(container.append_copy(keyed.View().Node())));
    Index(m_appended.back());
    record = std::move(keyed);
}

void RecordTable::Replace(const Record& record)
{
    const std::string key = record.Text(0);
    const pugi::xml_node old = Get(key).Node();
    pugi::xml_node data = Data();
    const pugi::xml_node stored = RequireNode(data.insert_copy_after(record.View().Node(), old));
    if (IsAppended(old)) {
        std::replace(m_appended.begin(), m_appended.end(), old, stored);
    } else {
        m_changed.try_emplace(key, SerializeXml(old));
    }
    data.remove_child(old);
    const pugi::xml_node storedKey = stored.child(m_names.key);
    if (storedKey && TextOf(storedKey) == key) {
        m_byKey[key] = stored;
    } else {
        Index(); // the first child of the record is not its key
    }
}

void RecordTable::Remove(const std::string& key)
{
    pugi::xml_node data = Data();
    if (const pugi::xml_node record = Find(key)) {
        if (IsAppended(record)) {
            std::erase(m_appended, record);
        } else {
            m_changed.try_emplace(key, SerializeXml(record));
        }
        data.remove_child(record);
        Index(); // a duplicate of the key may now be the first one
    }
}

void RecordTable::Restore(const Record& record, const std::vector<std::string>& keysBefore)
{
    pugi::xml_node data = Data();
    pugi::xml_node before;
    for (auto key = keysBefore.rbegin(); key != keysBefore.rend() && !before; ++key) {
        before = Find(*key);
    }
    const pugi::xml_node node = record.View().Node();
    Index(RequireNode(before ? data.insert_copy_after(node, before) : data.prepend_copy(node)));
    m_changed.try_emplace(record.Text(0));
}

std::vector<std::string> RecordTable::KeysBefore(const std::string& key) const
{
    std::vector<std::string> keys;
    for (const RecordView& record : List()) {
        if (record.Node() == Find(key)) {
            break;
        }
        keys.push_back(TextOf(record.Node().child(m_names.key)));
    }
    return keys;
}

pugi::xml_node RecordTable::Container() const
{
    return RequireNode(m_document.first_child());
}

pugi::xml_node RecordTable::Data() const
{
    return RequireNode(m_document.child("data"));
}

bool RecordTable::IsAppended(const pugi::xml_node& record) const
{
    return std::find(m_appended.begin(), m_appended.end(), record) != m_appended.end();
}

void RecordTable::ForgetChanges()
{
    m_changed.clear();
    m_appended.clear();
}

} // namespace Tarno
