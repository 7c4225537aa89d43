#include "Merge.h"

#include "core/Xml.h"

MergeResult MergeChanges(const RecordTable& ours, RecordTable& theirs)
{
    MergeResult result;
    for (const auto& [key, before] : ours.PendingChanges()) {
        const pugi::xml_node our = ours.Find(key);
        const pugi::xml_node their = theirs.Find(key);
        const bool isAddedHere = before.empty();
        if (SerializeXml(our) == SerializeXml(their) || (isAddedHere && !our)) {
            continue;
        }
        Record record{RecordView(our)};
        if (isAddedHere) {
            theirs.Append(record);
            if (record.Text(0) != key) {
                result.newKeys.emplace(key, record.Text(0));
            }
            continue;
        }
        if (SerializeXml(their) != before) {
            result.conflicts.push_back({record, Record(RecordView(their))});
        }
        if (!our) {
            theirs.Remove(key);
        } else if (their) {
            theirs.Replace(record);
        } else {
            theirs.Restore(record, ours.KeysBefore(key));
        }
    }
    return result;
}
