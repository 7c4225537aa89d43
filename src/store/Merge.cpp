#include "Merge.h"

#include "core/Xml.h"

namespace Tarno
{

MergeResult MergeChanges(const RecordTable& ours, RecordTable& theirs)
{
    MergeResult result;
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
            theirs.Append(record);
            result.newKeys.emplace(key, record.Text(0));
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
            theirs.Restore(record, ours.PlaceOf(our, theirs));
        }
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
