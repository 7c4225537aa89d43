#include "RecordTable.h"

#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Xml.h"

#include <algorithm>
#include <limits>

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
    const std::int32_t key = ToInt32(RecordView(lastRecord).Text(0));
    if (key == std::numeric_limits<std::int32_t>::max()) {
        throw Error(ErrorNumber::Overflow);
    }
    return key + 1;
}

pugi::xml_node Stored(const pugi::xml_node& node)
{
    if (!node) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return node;
}

} // namespace

void RecordTable::Rebuild()
{
    m_byKey.clear();
    try {
        for (const pugi::xml_node& record : m_file.Data().children(m_names.record)) {
            Index(record);
        }
    } catch (const Error&) { // NOLINT(bugprone-empty-catch): an unreadable file has no records
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
    for (const pugi::xml_node& node : m_file.Container().children()) {
        if (node.type() == pugi::node_element) {
            records.emplace_back(node);
        }
    }
    return records;
}

RecordView RecordTable::Get(const std::string& key) const
{
    const auto found = m_byKey.find(key);
    if (found == m_byKey.end()) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return RecordView(found->second);
}

RecordView RecordTable::First() const
{
    const RecordList records = List();
    if (records.empty()) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return records.front();
}

bool RecordTable::HoldsAllOf(const RecordTable& other) const
{
    const std::vector<std::string> ours = SortedTexts();
    const std::vector<std::string> theirs = other.SortedTexts();
    return std::includes(ours.begin(), ours.end(), theirs.begin(), theirs.end());
}

bool RecordTable::AgreesWith(const RecordTable& other, const std::string& key) const
{
    const auto text = [&key](const RecordTable& table) {
        const auto found = table.m_byKey.find(key);
        return found == table.m_byKey.end() ? std::string() : SerializeXml(found->second);
    };
    return text(*this) == text(other);
}

std::vector<std::string> RecordTable::SortedTexts() const
{
    std::vector<std::string> texts;
    for (const RecordView& record : List()) {
        texts.push_back(SerializeXml(record.Node()));
    }
    std::sort(texts.begin(), texts.end());
    return texts;
}

void RecordTable::Append(Record& record)
{
    pugi::xml_node container = m_file.Container();
    const pugi::xml_node last = LastRecord(container);
    Record keyed = record;
    keyed.SetText(0, last ? std::to_string(KeyAfter(last)) : "1");
    Index(Stored(container.append_copy(keyed.View().Node())));
    record = std::move(keyed);
}

void RecordTable::Replace(const Record& record)
{
    const std::string key = record.Text(0);
    const pugi::xml_node old = Get(key).Node();
    pugi::xml_node data = m_file.Data();
    const pugi::xml_node stored = Stored(data.insert_copy_after(record.View().Node(), old));
    data.remove_child(old);
    const pugi::xml_node storedKey = stored.child(m_names.key);
    if (storedKey && TextOf(storedKey) == key) {
        m_byKey[key] = stored;
    } else {
        Rebuild(); // what stands first in the record is not its key
    }
}

void RecordTable::Remove(const std::string& key)
{
    pugi::xml_node data = m_file.Data();
    if (const auto found = m_byKey.find(key); found != m_byKey.end()) {
        data.remove_child(found->second);
        Rebuild(); // a later record with the same key is the first one now
    }
}
