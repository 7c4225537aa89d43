#include "CollectPictures.h"

#include "LogPictures.h"
#include "PictureFolder.h"
#include "core/Paths.h"
#include "core/SafeWriter.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"

#include <map>
#include <set>
#include <utility>

namespace Tarno
{

namespace
{

/// Returns copies of the records with the new paths in place of the stored ones.
std::vector<Record> WithNewPaths(const RecordList& records, std::size_t position,
                                 const std::map<std::string, std::string>& names)
{
    std::vector<Record> changed;
    std::set<std::string> keys;
    for (const RecordView& record : records) {
        const auto name = names.find(record.Text(position));
        // of several records with the same key, only the first can be updated
        if (keys.insert(record.Text(0)).second && name != names.end()) {
            changed.emplace_back(record).SetText(position, name->second);
        }
    }
    return changed;
}

} // namespace

CollectPlan PlanCollecting(const ProgramFolder& folder, FileOperations& operations, const RecordList& trips,
                           const RecordList& locations)
{
    CollectPlan plan;
    PictureFolder pictures(folder.GetAppPath());
    std::map<std::pair<std::uint64_t, std::uint64_t>, std::string> known; // by volume and file
    for (const std::string& stored : StoredPictures(trips, locations)) {
        const std::string path = PicturePath(folder.GetAppPath(), stored);
        const auto name = NameInFolder(folder.GetAppPath(), stored);
        if (name && !ToPath(stored).is_absolute()) {
            continue;
        }
        if (!IsReadablePicture(path)) {
            plan.missing.push_back(stored);
            continue;
        }
        const FileState state = operations.GetState(path);
        if (name) {
            plan.pictures.push_back({stored, *name, false, state.size});
            continue;
        }
        const auto [entry, isNew] = known.try_emplace({state.volume, state.fileIndex});
        bool isCopied = false;
        if (isNew) {
            const auto place = pictures.PlaceFor(WantedName(folder.GetAppPath(), stored), ContentsOf(path));
            entry->second = place.name;
            isCopied = !place.isThere;
            plan.bytes += isCopied ? state.size : 0;
        }
        plan.pictures.push_back({stored, entry->second, isCopied, state.size});
    }
    return plan;
}

Status CollectPictures(const CollectPlan& plan, const ProgramFolder& folder, FileOperations& operations,
                       cSQL& sql, const Progress& progress)
{
    std::map<std::string, std::string> names;
    std::vector<std::string> copies;
    try {
        double done = 0;
        for (const CollectablePicture& picture : plan.pictures) {
            Report(progress, done++ / static_cast<double>(plan.pictures.size()));
            if (picture.isCopied) {
                const std::string copy = PicturePath(folder.GetAppPath(), picture.name);
                WritePicture(folder.GetAppPath(), copy,
                             ContentsOf(PicturePath(folder.GetAppPath(), picture.stored)), operations);
                copies.push_back(copy);
            }
            names.emplace(picture.stored, picture.name);
        }
        Report(progress, 1);
    } catch (...) {
        for (const std::string& copy : copies) {
            SafeWriter(operations).TryRemove(copy);
        }
        throw;
    }
    RecordList trips;
    RecordList locations;
    sql.EntryList(trips);
    sql.LocationList(locations);
    return sql.UpdateTogether(WithNewPaths(trips, EntryField::Picture, names),
                              WithNewPaths(locations, LocationField::LocPicture, names));
}

} // namespace Tarno
