#include "History.h"

#include "core/Xml.h"
#include "store/Record.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Tarno
{

namespace
{

/// Updates `step` if `newKeys` contains its key. Removes the key from there at the end of the time in which
/// the record exists: at a step of the kind `last`, which belongs to the record, or of the kind `beyond`,
/// which belongs to another one.
void SetKey(History::Step& step, KeyMap& newKeys, ChangeKind last, ChangeKind beyond)
{
    const auto found = newKeys.find(step.change.key);
    if (found == newKeys.end()) {
        return;
    }
    const ChangeKind kind = step.Kind();
    if (kind != beyond) {
        step.change.SetKey(found->second);
    }
    if (kind == last || kind == beyond) {
        newKeys.erase(found);
    }
}

} // namespace

void RecordChange::SetKey(const std::string& newKey)
{
    key = newKey;
    duplicate.clear();
    for (std::string* xml : {&before, &after}) {
        if (Record record = Record::FromXml(*xml); record.Count() > 0) {
            record.SetText(0, newKey);
            *xml = SerializeXml(record.View().Node());
        }
    }
}

ChangeKind History::Step::Kind() const
{
    return change.before.empty()  ? ChangeKind::Add
           : change.after.empty() ? ChangeKind::Delete
                                  : ChangeKind::Edit;
}

RecordChange History::Step::Towards(Direction direction) const
{
    return direction == Direction::Undo ? change.Reversed() : change;
}

void History::Add(Step step)
{
    if (!step.change.IsEmpty()) {
        m_steps.erase(Position(m_done), m_steps.end());
        m_steps.push_back(std::move(step));
        m_done = m_steps.size();
    }
}

const History::Step* History::Next(Direction direction) const
{
    const bool exists = direction == Direction::Undo ? m_done > 0 : m_done < m_steps.size();
    return exists ? &m_steps[IndexOf(direction)] : nullptr;
}

void History::Move(Direction direction, const RecordChange& applied)
{
    Step& step = m_steps.at(IndexOf(direction));
    m_done = direction == Direction::Undo ? m_done - 1 : m_done + 1;
    if (applied.key != step.change.key) {
        SetKeys(step.record, {{step.change.key, applied.key}});
    }
    step.change = direction == Direction::Undo ? applied.Reversed() : applied;
}

void History::Drop(Direction direction)
{
    const std::size_t index = IndexOf(direction);
    m_steps.erase(Position(index));
    m_done = std::min(m_done, index);
}

void History::Clear()
{
    m_steps.clear();
    m_done = 0;
}

void History::SetKeys(RecordTitle::Kind record, const KeyMap& newKeys)
{
    KeyMap earlier = newKeys;
    for (std::size_t index = m_done; index-- > 0;) {
        if (m_steps[index].record == record) {
            SetKey(m_steps[index], earlier, ChangeKind::Add, ChangeKind::Delete);
        }
    }
    KeyMap later = newKeys;
    for (std::size_t index = m_done; index < m_steps.size(); ++index) {
        if (m_steps[index].record == record) {
            SetKey(m_steps[index], later, ChangeKind::Delete, ChangeKind::Add);
        }
    }
}

std::size_t History::IndexOf(Direction direction) const
{
    return direction == Direction::Undo ? m_done - 1 : m_done;
}

std::vector<History::Step>::iterator History::Position(std::size_t index)
{
    return m_steps.begin() + static_cast<std::ptrdiff_t>(index);
}

} // namespace Tarno
