#include "cSQL.h"
#include "store/EntryFields.h"

#include <algorithm>
#include <span>

namespace Tarno
{

std::optional<ChangeTitle> cSQL::TitleOfNext(History::Direction direction) const
{
    const History::Step* step = m_history.Next(direction);
    if (step == nullptr) {
        return std::nullopt;
    }
    ChangeTitle title{step->Kind(), TitleOf(*step, direction)};
    if (step->import != 0) {
        const std::span<const History::Step> together = m_history.NextTogether(direction);
        title.trips = static_cast<std::size_t>(
            std::count_if(together.begin(), together.end(), [](const History::Step& change) {
                return change.record == RecordTitle::Kind::Trip;
            }));
        title.locations = together.size() - title.trips;
    }
    return title;
}

RecordTitle cSQL::TitleOf(const History::Step& step, History::Direction direction) const
{
    const RecordChange change = step.Towards(direction);
    const Record record = Record::FromXml(change.before.empty() ? change.after : change.before);
    return TitleOf(step.record == RecordTitle::Kind::Trip ? m_entries : m_locations, record.View());
}

UndoResult cSQL::Step(std::string_view routine, History::Direction direction)
{
    const std::optional<ChangeTitle> title = TitleOfNext(direction);
    if (!title) {
        return {UndoStatus::Nothing, {}, {}};
    }
    if (m_history.Next(direction)->import != 0) {
        return StepImport(routine, direction, *title);
    }
    UndoResult result{UndoStatus::Failed, *title, {}};
    DataFile& in = FileOf(title->record.kind);
    if (MergeChangesOfOthers(routine, in) != succeeded) {
        return result;
    }
    RecordChange change = m_history.Next(direction)->Towards(direction);
    const bool removesLocation = &in == &m_locations && change.after.empty() && change.duplicate.empty();
    if (removesLocation && CanAddEntries()) {
        if (MergeChangesOfOthers(routine, m_entries) != succeeded) {
            return result;
        }
        if (in.Records().FindUnchanged(change) && IsUsed(change.key)) {
            result.status = UndoStatus::InUse;
            return result;
        }
    }
    bool isApplied = false;
    const Status status = WithMerging(routine, in, nullptr, [&](MergeResult& merged) {
        isApplied = in.Records().Apply(change);
        if (isApplied) {
            NoteTrip(in, change);
            m_history.Move(direction, change);
            in.Save(m_folder, in.Name(), m_operations, merged);
        } else {
            m_history.Drop(direction);
        }
    });
    if (status == succeeded) {
        result.status = isApplied ? UndoStatus::Done : UndoStatus::ChangedByOther;
    }
    if (isApplied && !change.after.empty()) { // merging may have changed the key
        result.key = m_history
                         .Next(direction == History::Direction::Undo ? History::Direction::Redo
                                                                     : History::Direction::Undo)
                         ->change.key;
    }
    return result;
}

Status cSQL::MergeChangesOfOthers(std::string_view routine, DataFile& in)
{
    return WithMerging(routine, in, nullptr, [&](MergeResult& merged) {
        in.MergeChangesOfOthers(m_folder, in.Name(), m_operations, merged);
    });
}

bool cSQL::IsUsed(const std::string& location) const
{
    const RecordList trips = m_entries.Records().List();
    return std::any_of(trips.begin(), trips.end(),
                       [&](const RecordView& trip) { return trip.Text(EntryField::LocNo) == location; });
}

} // namespace Tarno
