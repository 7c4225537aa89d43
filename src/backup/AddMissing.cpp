#include "LogPictures.h"
#include "PictureFolder.h"
#include "Restore.h"
#include "analysis/TripText.h"
#include "core/SafeWriter.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"

#include <algorithm>
#include <set>
#include <utility>

namespace Tarno
{

namespace
{

StoredTexts TextsOf(const RecordView& record, std::size_t count)
{
    StoredTexts texts;
    for (std::size_t position = 0; position < count; ++position) {
        texts.push_back(record.Text(position));
    }
    return texts;
}

using Places = std::map<std::string, RecordView>; ///< the first location of each number

Places ByNumber(const RecordList& locations)
{
    Places places;
    for (const RecordView& location : locations) {
        places.emplace(location.Text(LocationField::LocNo), location);
    }
    return places;
}

/// Returns the folded name of a location, or an empty text if it does not exist.
std::string NameOf(const Places& places, const std::string& number)
{
    const auto found = places.find(number);
    return found == places.end() ? std::string() : Fold(found->second.Text(LocationField::LocName));
}

/// Returns a trip of the back-up with its location. A number without a name says nothing in another log.
TripCandidate CandidateOf(std::size_t row, const RecordView& trip, const Places& archived,
                          const Places& present)
{
    TripCandidate candidate{row, TextsOf(trip, EntryField::Count), StoredTexts(LocationField::Count)};
    std::string& number = candidate.trip[EntryField::LocNo];
    if (const std::string name = NameOf(archived, number); !name.empty()) {
        candidate.place = TextsOf(archived.at(number), LocationField::Count);
    } else if (NameOf(present, number).empty()) {
        candidate.place[LocationField::LocNo] = number;
    } else {
        number.clear();
    }
    return candidate;
}

/// Adds the locations without trips that neither the log nor the batch has.
void AddPlaces(const RecordList& archived, const RecordList& present, ImportPlan& plan)
{
    std::set<std::string> names;
    for (const RecordView& location : present) {
        names.insert(Fold(location.Text(LocationField::LocName)));
    }
    std::set<std::pair<std::string, std::string>> added; // by number and name
    for (const StoredTexts& location : plan.batch.locations) {
        added.emplace(location[LocationField::LocNo], Fold(location[LocationField::LocName]));
    }
    for (const RecordView& location : archived) {
        const std::string name = Fold(location.Text(LocationField::LocName));
        if (!name.empty() && !names.contains(name) &&
            added.emplace(location.Text(LocationField::LocNo), name).second) {
            const StoredTexts& place =
                plan.batch.locations.emplace_back(TextsOf(location, LocationField::Count));
            plan.places.push_back({place[LocationField::LocName], place[LocationField::LocLatt],
                                   place[LocationField::LocLong], 0});
        }
    }
}

/// Copies pictures from a back-up to the picture folder. Removes them if not all can be copied.
class PictureCopier
{
public:
    PictureCopier(const BackUpArchive& backUp, const ProgramFolder& folder, FileOperations& operations)
        : m_backUp(backUp),
          m_folder(folder.GetAppPath()),
          m_operations(operations),
          m_pictures(folder.GetAppPath())
    {
    }

    /// Replaces a stored path by the path of the copy, if the back-up has the picture.
    void Copy(std::string& stored)
    {
        const ArchiveEntry* entry = stored.empty() ? nullptr : m_backUp.PictureOf(stored);
        if (entry == nullptr) {
            return;
        }
        const auto [known, isNew] = m_placed.try_emplace(entry);
        if (isNew) {
            const PictureContents contents = ContentsOf(m_backUp.Archive(), *entry);
            const PictureFolder::Place place = m_pictures.PlaceFor(entry->name, contents);
            if (!place.isThere) {
                const std::string path = PicturePath(m_folder, place.name);
                WritePicture(m_folder, path, contents, m_operations);
                m_written.push_back(path);
            }
            known->second = place.name;
        }
        stored = known->second;
    }

    void RemoveCopies()
    {
        for (const std::string& path : m_written) {
            SafeWriter(m_operations).TryRemove(path);
        }
    }

private:
    const BackUpArchive& m_backUp;
    std::string m_folder;
    FileOperations& m_operations;
    PictureFolder m_pictures;
    std::map<const ArchiveEntry*, std::string> m_placed;
    std::vector<std::string> m_written;
};

} // namespace

ImportPlan PlanMissing(const BackUpArchive& backUp, const RecordList& trips, const RecordList& locations)
{
    const RecordList archivedTrips = backUp.Trips();
    const RecordList archivedLocations = backUp.Locations();
    const Places archived = ByNumber(archivedLocations);
    const Places present = ByNumber(locations);
    std::vector<TripCandidate> candidates;
    for (std::size_t row = 0; row < archivedTrips.size(); ++row) {
        candidates.push_back(CandidateOf(row, archivedTrips[row], archived, present));
    }
    ImportPlan plan = PlanImport(candidates, trips, locations);
    AddPlaces(archivedLocations, locations, plan);
    return plan;
}

Status AddMissing(const BackUpArchive& backUp, ImportPlan& plan, const ProgramFolder& folder,
                  FileOperations& operations, cSQL& sql, const Progress& progress)
{
    PictureCopier copier(backUp, folder, operations);
    std::vector<std::string*> pictures;
    for (ImportedTrip& trip : plan.batch.trips) {
        pictures.push_back(&trip.values[EntryField::Picture]);
    }
    for (StoredTexts& location : plan.batch.locations) {
        pictures.push_back(&location[LocationField::LocPicture]);
    }
    try {
        double done = 0;
        for (std::string* picture : pictures) {
            Report(progress, done++ / static_cast<double>(pictures.size()));
            copier.Copy(*picture);
        }
        Report(progress, 1);
    } catch (...) {
        copier.RemoveCopies();
        throw;
    }
    return sql.Import(plan.batch);
}

} // namespace Tarno
