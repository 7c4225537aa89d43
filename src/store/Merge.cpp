#include "Merge.h"

#include "core/Xml.h"

#include <set>
#include <utility>

namespace Tarno
{

MergeResult MergeChanges(const RecordTable& ours, RecordTable& theirs)
{
    MergeResult result;
    std::set<std::string> restored;
    std::vector<Record> taken; // appended after the others, which keep their keys
    for (const auto& [key, before] : ours.Changed()) {
        const pugi::xml_node found = ours.Find(key);
        const pugi::xml_node our =
            ours.IsAppended(found) ? pugi::xml_node() : found; // a new record reuses the key
        const pugi::xml_node their = theirs.Find(key);
        const std::string ourText = SerializeXml(our);
        const std::string theirText = SerializeXml(their);
        if (ourText == theirText || ourText == before) {
            continue;
        }
        Record record{RecordView(our)};
        if (before.empty() && their) { // a record that was restored here is like a new one
            taken.push_back(std::move(record));
            continue;
        }
        if (theirText != before) {
            result.conflicts.push_back({record, Record(RecordView(their))});
        }
        if (!our) {
            theirs.Remove(key);
        } else if (their) {
            theirs.Replace(record);
        } else {
            restored.insert(key);
        }
    }
    theirs.RestoreAll(restored, ours);
    for (Record& record : taken) {
        const std::string key = record.Text(0);
        theirs.Append(record);
        result.newKeys.emplace(key, record.Text(0));
    }
    for (const pugi::xml_node& our : ours.Appended()) {
        Record record{RecordView(our)};
        const std::string key = record.Text(0);
        // An identical record with the same key is from an earlier save of ours that was reported as failed.
        if (SerializeXml(theirs.Find(key)) != SerializeXml(our)) {
            theirs.Append(record);
            if (record.Text(0) != key) {
                result.newKeys.emplace(key, record.Text(0));
            }
        }
    }
    return result;
}

} // namespace Tarno
