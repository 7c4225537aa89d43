#include "RecordTable.h"
#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Xml.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <system_error>
#include <utility>

namespace Tarno
{

namespace
{

/// Returns the number, or 0 if `key` is not written like the key of a record from 1 to `most`.
std::int32_t NumberOf(const std::string& key, std::int32_t most)
{
    std::int32_t number = 0;
    const char* end = key.data() + key.size();
    const auto [stop, failure] = std::from_chars(key.data(), end, number);
    const bool isKey = failure == std::errc() && stop == end && key.front() != '0' && key.front() != '-';
    return isKey && number <= most ? number : 0;
}

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

void SetTexts(Record& record, const StoredTexts& values)
{
    for (std::size_t position = 0; position < values.size(); ++position) {
        record.SetText(position, values[position]);
    }
}

} // namespace

RecordChange RecordTable::Append(Record& record)
{
    const pugi::xml_node last = LastRecord(Container());
    Record keyed = record;
    keyed.SetText(0, last ? std::to_string(KeyAfter(last)) : "1");
    RecordChange change = AppendKeyed(keyed);
    record = std::move(keyed);
    return change;
}

RecordChange RecordTable::AppendKeyed(const Record& record)
{
    const std::string key = record.Text(0);
    std::string duplicate = SerializeXml(Find(key));
    m_appended.push_back(RequireNode(Container().append_copy(record.View().Node())));
    const pugi::xml_node stored = m_appended.back();
    m_touched.push_back(key);
    Index(stored);
    return {.key = key,
            .before = {},
            .after = SerializeXml(stored),
            .place = PlaceOf(stored),
            .duplicate = std::move(duplicate)};
}

RecordTable::KeyPlan RecordTable::PlanKeys(const Record& blank,
                                           const std::vector<StoredTexts*>& records) const
{
    constexpr std::int32_t anyKey = std::numeric_limits<std::int32_t>::max();
    const std::size_t count = blank.Count();
    KeyPlan plan{{}, 0};
    for (std::size_t index = 0; index < records.size(); ++index) {
        const StoredTexts& values = *records[index];
        if (values.empty() || values.size() > count) {
            throw Error(ErrorNumber::ObjectNotSet);
        }
        const std::int32_t number = NumberOf(values.front(), lastKey);
        if (number != 0 && !Find(values.front())) {
            plan.kept.emplace(number, index);
        }
    }
    plan.highest = plan.kept.empty() ? 0 : plan.kept.begin()->first;
    for (const RecordView& record : List()) {
        plan.highest = std::max(plan.highest, NumberOf(record.Text(0), anyKey));
    }
    const std::size_t newKeys = records.size() - plan.kept.size();
    if (newKeys > 0 && static_cast<std::size_t>(plan.highest) + newKeys > lastKey) {
        throw Error(ErrorNumber::Overflow);
    }
    return plan;
}

std::vector<RecordChange> RecordTable::AddAll(const Record& blank, const std::vector<StoredTexts*>& records)
{
    auto [kept, highest] = PlanKeys(blank, records);
    std::vector<RecordChange> changes(records.size());
    std::vector<pugi::xml_node> stored(records.size());
    Record record = blank;
    pugi::xml_node before = Data().last_child();
    for (const auto& [number, index] : kept) {
        const StoredTexts& values = *records[index];
        SetTexts(record, values);
        before = LastBefore(values.front(), {}, before);
        stored[index] = InsertAfter(before, record);
    }
    for (std::size_t index = 0; index < records.size(); ++index) {
        StoredTexts& values = *records[index];
        if (stored[index]) {
            changes[index] = {.key = values.front(),
                              .before = {},
                              .after = SerializeXml(stored[index]),
                              .place = PlaceOf(stored[index])};
        } else {
            values.front() = std::to_string(++highest);
            SetTexts(record, values);
            changes[index] = AppendKeyed(record);
        }
    }
    return changes;
}

bool RecordTable::CanApply(const RecordChange& change) const
{
    return change.before.empty()
               ? SerializeXml(Find(change.key)) != change.after || change.after == change.duplicate
               : !FindUnchanged(change).empty();
}

} // namespace Tarno
