#include "RecordTable.h"

#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Xml.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

namespace Tarno
{

void RecordTable::Rebuild()
{
    ForgetChanges();
    Index();
}

void RecordTable::Index()
{
    static std::uint64_t lastIndex = 0;
    m_index = ++lastIndex;
    m_touched.clear();
    m_byKey.clear();
    m_hasDuplicates = false;
    const pugi::xml_node data = m_document.child("data");
    m_isRegular = data && data == m_document.first_child();
    for (const pugi::xml_node& node : data.children()) {
        if (std::string_view(node.name()) == m_names.record) {
            Index(node);
        } else if (node.type() == pugi::node_element) {
            m_isRegular = false;
        }
    }
}

void RecordTable::Index(const pugi::xml_node& record)
{
    const pugi::xml_node key = record.child(m_names.key);
    m_isRegular = m_isRegular && key && key == record.first_child();
    if (key) {
        m_hasDuplicates = !m_byKey.emplace(TextOf(key), record).second || m_hasDuplicates;
    }
}

std::optional<std::set<std::string>> RecordTable::ChangedSince(const Revision& revision) const
{
    if (revision.index != m_index || m_hasDuplicates || !m_isRegular) {
        return std::nullopt;
    }
    return std::set<std::string>(m_touched.begin() + static_cast<std::ptrdiff_t>(revision.changes),
                                 m_touched.end());
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

RecordChange RecordTable::Replace(const Record& record)
{
    return Replace(Get(record.Text(0)).Node(), record);
}

RecordChange RecordTable::Replace(const pugi::xml_node& old, const Record& record)
{
    const std::string key = KeyOf(old);
    RecordChange change{.key = key, .before = SerializeXml(old), .after = {}, .place = PlaceOf(old)};
    pugi::xml_node data = Data();
    const pugi::xml_node stored = RequireNode(data.insert_copy_after(record.View().Node(), old));
    change.after = SerializeXml(stored);
    const bool isAppended = IsAppended(old);
    if (isAppended) {
        std::replace(m_appended.begin(), m_appended.end(), old, stored);
    }
    const bool isFound = IsFound(old);
    data.remove_child(old);
    m_touched.push_back(key);
    if (isFound && KeyOf(stored) == key) {
        m_byKey[key] = stored;
    } else {
        Index(); // the first child of the record is not its key, or another record has the same key
    }
    if (!isAppended) {
        NoteChange(key, change.before);
    }
    return change;
}

RecordChange RecordTable::Remove(const std::string& key)
{
    Data();
    const pugi::xml_node record = Find(key);
    return record ? Remove(record) : RecordChange{.key = key, .before = {}, .after = {}};
}

RecordChange RecordTable::Remove(const pugi::xml_node& record)
{
    RecordChange change{.key = KeyOf(record), .before = SerializeXml(record), .after = {}};
    const pugi::xml_node previous = record.previous_sibling();
    const pugi::xml_node next = record.next_sibling();
    const bool isAppended = IsAppended(record);
    const bool isFound = IsFound(record);
    std::erase(m_appended, record);
    Data().remove_child(record);
    m_touched.push_back(change.key);
    if (m_hasDuplicates) {
        Index(); // a duplicate of the key may now be the first one
    } else if (isFound) {
        m_byKey.erase(change.key);
    }
    if (!isAppended) {
        NoteChange(change.key, change.before);
    }
    change.duplicate = SerializeXml(Find(change.key));
    change.place = PlaceBetween(previous, next);
    return change;
}

void RecordTable::Restore(const Record& record, const RecordPlace& place)
{
    pugi::xml_node data = Data();
    const auto after = [&](const pugi::xml_node& node) {
        return node ? node.next_sibling() : data.first_child();
    };
    const pugi::xml_node node = record.View().Node();
    const pugi::xml_node previous = place.previous ? Find(*place.previous) : pugi::xml_node();
    const bool isUnchanged =
        place.previous.has_value() == !previous.empty() && NextKey(after(previous)) == place.next;
    pugi::xml_node before = isUnchanged ? previous : LastBefore(KeyOf(node), previous, data.last_child());
    if (before == previous) {
        for (auto others = place.others; others > 0 && after(before) && !IsFound(after(before)); --others) {
            before = after(before);
        }
    }
    InsertAfter(before, record);
}

pugi::xml_node RecordTable::InsertAfter(const pugi::xml_node& before, const Record& record)
{
    pugi::xml_node data = Data();
    const pugi::xml_node node = record.View().Node();
    const pugi::xml_node stored =
        RequireNode(before ? data.insert_copy_after(node, before) : data.prepend_copy(node));
    const std::string key = KeyOf(stored);
    m_touched.push_back(key);
    if (m_hasDuplicates || Find(key)) {
        Index(); // a duplicate of the key may follow
    } else {
        Index(stored);
    }
    NoteChange(key, {});
    return stored;
}

void RecordTable::RestoreAll(const std::set<std::string>& keys, const RecordTable& ours)
{
    std::vector<std::optional<std::string>> next; // of each restored record, in reverse order
    std::optional<std::string> known;
    for (pugi::xml_node node = ours.Data().last_child(); node; node = node.previous_sibling()) {
        if (!ours.IsFound(node)) {
            continue;
        }
        if (std::string key = ours.KeyOf(node); keys.contains(key)) {
            next.push_back(known);
        } else if (Find(key)) {
            known = std::move(key);
        }
    }
    RecordPlace place{.previous = {}, .others = 0, .next = {}};
    for (pugi::xml_node node = ours.Data().first_child(); node; node = node.next_sibling()) {
        if (!ours.IsFound(node)) {
            ++place.others;
            continue;
        }
        const std::string key = ours.KeyOf(node);
        if (keys.contains(key)) {
            place.next = std::move(next.back());
            next.pop_back();
            Restore(Record(RecordView(node)), place);
        }
        if (Find(key)) {
            place = {.previous = key, .others = 0, .next = {}};
        }
    }
}

bool RecordTable::Apply(RecordChange& change)
{
    const Record record = Record::FromXml(change.after);
    if (!change.before.empty()) {
        const pugi::xml_node old = FindUnchanged(change);
        if (old) {
            change = change.after.empty() ? Remove(old) : Replace(old, record);
        }
        return !old.empty();
    }
    const std::string found = SerializeXml(Find(change.key));
    if (found == change.duplicate) {
        Restore(record, change.place);
    } else if (found == change.after) {
        return false;
    } else {
        Record appended = record;
        change = Append(appended);
    }
    return true;
}

RecordPlace RecordTable::PlaceOf(const pugi::xml_node& record) const
{
    return PlaceBetween(record.previous_sibling(), record.next_sibling());
}

RecordPlace RecordTable::PlaceBetween(pugi::xml_node before, const pugi::xml_node& after) const
{
    RecordPlace place{.previous = {}, .others = 0, .next = NextKey(after)};
    for (; before && !place.previous; before = before.previous_sibling()) {
        if (IsFound(before)) {
            place.previous = KeyOf(before);
        } else {
            ++place.others;
        }
    }
    return place;
}

std::optional<std::string> RecordTable::NextKey(pugi::xml_node node) const
{
    while (node && !IsFound(node)) {
        node = node.next_sibling();
    }
    return node ? std::optional(KeyOf(node)) : std::nullopt;
}

std::string RecordTable::KeyOf(const pugi::xml_node& record) const
{
    return TextOf(record.child(m_names.key));
}

bool RecordTable::IsFound(const pugi::xml_node& node) const
{
    return node.type() == pugi::node_element && Find(KeyOf(node)) == node;
}

pugi::xml_node RecordTable::LastBefore(const std::string& key, const pugi::xml_node& start,
                                       pugi::xml_node from) const
{
    const auto numberOf = [](std::string_view text) {
        std::int32_t number = std::numeric_limits<std::int32_t>::max();
        std::from_chars(text.data(), text.data() + text.size(), number);
        return number;
    };
    while (from != start && (!IsFound(from) || numberOf(KeyOf(from)) >= numberOf(key))) {
        from = from.previous_sibling();
    }
    return from;
}

pugi::xml_node RecordTable::FindUnchanged(const RecordChange& change) const
{
    pugi::xml_node at =
        change.place.previous ? Find(*change.place.previous).next_sibling() : Data().first_child();
    for (std::size_t others = change.place.others; others > 0; --others) {
        at = at.next_sibling();
    }
    for (const pugi::xml_node& record : {at, Find(change.key)}) {
        if (SerializeXml(record) == change.before) {
            return record;
        }
    }
    return {};
}

/// Notes that the record of `key`, which has just been changed, was `before` until then.
void RecordTable::NoteChange(const std::string& key, const std::string& before)
{
    const auto [noted, isFirst] = m_changed.try_emplace(key, before);
    const pugi::xml_node record = Find(key);
    if (!isFirst && noted->second == SerializeXml(IsAppended(record) ? pugi::xml_node() : record)) {
        m_changed.erase(noted); // the change has been reverted
    }
}

pugi::xml_node RecordTable::RequireNode(const pugi::xml_node& node)
{
    if (!node) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return node;
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
