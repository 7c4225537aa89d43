#include "cSQL.h"
#include "core/Error.h"
#include "core/ErrorLog.h"
#include "core/Xml.h"
#include "store/EntryFields.h"

#include <algorithm>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace Tarno
{

namespace
{

constexpr std::string_view importRoutine = "Import";

/// Returns the change of an added trip with a new location.
RecordChange WithLocation(RecordChange change, const KeyMap& newLocations)
{
    Record trip = Record::FromXml(change.after);
    const std::string location = trip.View().Text(EntryField::LocNo);
    if (newLocations.contains(location)) {
        trip.SetText(EntryField::LocNo, newLocations.at(location));
        change.after = SerializeXml(trip.View().Node());
    }
    return change;
}

std::vector<StoredTexts*> LocationsOf(ImportBatch& batch)
{
    std::vector<StoredTexts*> locations;
    for (StoredTexts& location : batch.locations) {
        locations.push_back(&location);
    }
    return locations;
}

std::vector<StoredTexts*> TripsOf(ImportBatch& batch)
{
    std::vector<StoredTexts*> trips;
    for (ImportedTrip& trip : batch.trips) {
        trips.push_back(&trip.values);
    }
    return trips;
}

std::vector<std::string> KeysOf(std::span<const History::Step> import, RecordTitle::Kind kind)
{
    std::vector<std::string> keys;
    for (const History::Step& step : import) {
        if (step.record == kind) {
            keys.push_back(step.change.key);
        }
    }
    return keys;
}

} // namespace

void cSQL::CheckImport(ImportBatch& batch) const
{
    for (const ImportedTrip& trip : batch.trips) {
        if (trip.values.size() <= EntryField::LocNo ||
            (trip.newLocation && *trip.newLocation >= batch.locations.size())) {
            throw Error(ErrorNumber::SubscriptOutOfRange);
        }
    }
    m_locations.Records().CheckAddAll(Record(m_locationBlank.Records().First()), LocationsOf(batch));
    m_entries.Records().CheckAddAll(Record(m_entryBlank.Records().First()), TripsOf(batch));
}

bool cSQL::HasNumbersFor(ImportBatch batch) const
{
    try {
        CheckImport(batch);
        return true;
    } catch (const Error& error) {
        return error.Number() != ErrorNumber::Overflow;
    }
}

Status cSQL::Import(ImportBatch& batch)
{
    if (!Trap("cSQL", importRoutine, [&] { CheckImport(batch); })) {
        return failed;
    }
    const std::vector<StoredTexts*> locations = LocationsOf(batch);
    const std::size_t import = m_history.StartImport();
    const Status ofLocations = AddAll(m_locations, m_locationBlank, locations, import, true);
    for (ImportedTrip& trip : batch.trips) {
        if (trip.newLocation) {
            trip.values[EntryField::LocNo] = locations[*trip.newLocation]->front();
        }
    }
    const Status ofTrips = AddAll(m_entries, m_entryBlank, TripsOf(batch), import, ofLocations == succeeded);
    return ofLocations == succeeded ? ofTrips : ofLocations;
}

Status cSQL::ReadChangesOfOthers()
{
    const Status ofLocations = MergeChangesOfOthers("ReadChangesOfOthers", m_locations);
    const Status ofTrips = MergeChangesOfOthers("ReadChangesOfOthers", m_entries);
    return ofLocations == succeeded ? ofTrips : ofLocations;
}

Status cSQL::AddAll(DataFile& in, const DataFile& blank, const std::vector<StoredTexts*>& records,
                    std::size_t import, bool saves)
{
    if (records.empty()) {
        return succeeded;
    }
    const auto updateKeys = [&](const KeyMap& newKeys) {
        for (StoredTexts* values : records) {
            values->front() = KeyIn(newKeys, values->front());
        }
    };
    return WithMerging(importRoutine, in, updateKeys, [&](MergeResult& merged) {
        for (RecordChange& change : in.Records().AddAll(Record(blank.Records().First()), records)) {
            NoteTrip(in, change);
            m_history.Add({KindOf(in), std::move(change), import});
        }
        if (saves) {
            in.Save(m_folder, in.Name(), m_operations, merged);
        }
    });
}

Status cSQL::UpdateTogether(const std::vector<Record>& trips, const std::vector<Record>& locations)
{
    constexpr std::string_view routine = "UpdateTogether";
    const bool canUpdate = Trap("cSQL", routine, [&] {
        const auto check = [](const DataFile& in, const std::vector<Record>& records) {
            for (const Record& record : records) {
                in.Records().Get(record.Text(0));
            }
        };
        check(m_entries, trips);
        check(m_locations, locations);
    });
    if (!canUpdate) {
        return failed;
    }
    const std::size_t together = m_history.StartImport();
    const auto update = [&](DataFile& in, const std::vector<Record>& records) {
        return records.empty() ? succeeded : WithMerging(routine, in, {}, [&](MergeResult& merged) {
            for (const Record& record : records) {
                RecordChange change = in.Records().Replace(record);
                NoteTrip(in, change);
                m_history.Add({KindOf(in), std::move(change), together});
            }
            in.Save(m_folder, in.Name(), m_operations, merged);
        });
    };
    const Status ofLocations = update(m_locations, locations);
    const Status ofTrips = update(m_entries, trips);
    return ofLocations == succeeded ? ofTrips : ofLocations;
}

UndoResult cSQL::StepImport(std::string_view routine, History::Direction direction, const ChangeTitle& title)
{
    using Kind = RecordTitle::Kind;
    const bool isUndo = direction == History::Direction::Undo;
    UndoResult result{UndoStatus::Failed, title, {}};
    if (title.locations > 0 && MergeChangesOfOthers(routine, m_locations) != succeeded) {
        return result;
    }
    if ((title.trips > 0 || (isUndo && CanAddEntries())) &&
        MergeChangesOfOthers(routine, m_entries) != succeeded) {
        return result;
    }
    const std::span<const History::Step> import = m_history.NextTogether(direction);
    const auto changed = std::find_if_not(import.begin(), import.end(), [&](const History::Step& step) {
        return FileOf(step.record).Records().CanApply(step.Towards(direction));
    });
    if (changed != import.end()) {
        result.status = UndoStatus::ChangedByOther;
        result.change.record = TitleOf(*changed, direction);
        m_history.Drop(direction);
        return result;
    }
    if (const History::Step* used = isUndo ? FindUsedLocation(import) : nullptr) {
        result.status = UndoStatus::InUse;
        result.change.record = TitleOf(*used, direction);
        return result;
    }
    // in this order, the trips in the file never refer to locations that are not there
    const std::vector<std::string> oldLocations = KeysOf(import, Kind::Location);
    const auto apply = [&](Kind kind, const KeyMap& newLocations, bool saves) {
        const bool hasChanges = (kind == Kind::Trip ? title.trips : title.locations) > 0;
        return hasChanges ? ApplyImport(routine, direction, kind, newLocations, saves) : succeeded;
    };
    const Status first = apply(isUndo ? Kind::Trip : Kind::Location, {}, true);
    KeyMap newLocations;
    if (!oldLocations.empty() && !isUndo) {
        const auto locations = KeysOf(m_history.NextTogether(History::Direction::Undo), Kind::Location);
        for (std::size_t index = 0; index < oldLocations.size(); ++index) {
            if (locations.at(index) != oldLocations[index]) {
                newLocations.emplace(oldLocations[index], locations[index]);
            }
        }
    }
    const Status second = apply(isUndo ? Kind::Location : Kind::Trip, newLocations, first == succeeded);
    result.status = first == succeeded && second == succeeded ? UndoStatus::Done : UndoStatus::Failed;
    if (!isUndo && title.trips > 0) {
        result.key = KeysOf(m_history.NextTogether(History::Direction::Undo), Kind::Trip).front();
    }
    return result;
}

Status cSQL::ApplyImport(std::string_view routine, History::Direction direction, RecordTitle::Kind kind,
                         const KeyMap& newLocations, bool saves)
{
    DataFile& in = FileOf(kind);
    const std::size_t import = m_history.Next(direction)->import;
    return WithMerging(routine, in, {}, [&](MergeResult& merged) {
        for (const History::Step* next = m_history.Next(direction);
             next != nullptr && next->import == import && next->record == kind;
             next = m_history.Next(direction)) {
            RecordChange change = next->Towards(direction);
            if (kind == RecordTitle::Kind::Trip && !newLocations.empty()) {
                change = WithLocation(std::move(change), newLocations);
            }
            in.Records().Apply(change);
            NoteTrip(in, change);
            m_history.Move(direction, change);
        }
        if (saves) {
            in.Save(m_folder, in.Name(), m_operations, merged);
        }
    });
}

const History::Step* cSQL::FindUsedLocation(std::span<const History::Step> import) const
{
    std::map<std::string, const History::Step*> locations;
    std::set<std::string> trips;
    for (const History::Step& step : import) {
        if (step.record == RecordTitle::Kind::Trip) {
            trips.insert(step.change.key);
        } else if (step.change.before.empty() && step.change.duplicate.empty()) {
            locations.emplace(step.change.key, &step);
        }
    }
    if (locations.empty() || !CanAddEntries()) {
        return nullptr;
    }
    for (const RecordView& trip : m_entries.Records().List()) {
        const auto used = locations.find(trip.Text(EntryField::LocNo));
        if (used != locations.end() && !trips.contains(trip.Text(EntryField::TarnoNo))) {
            return used->second;
        }
    }
    return nullptr;
}

} // namespace Tarno
