#include "History.h"

#include "core/Xml.h"
#include "store/Record.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <utility>

namespace Tarno
{

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
    return change.before.empty()  ? import != 0 ? ChangeKind::Import : ChangeKind::Add
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

std::span<const History::Step> History::NextTogether(Direction direction) const
{
    const Step* next = Next(direction);
    if (next == nullptr) {
        return {};
    }
    std::size_t first = IndexOf(direction);
    std::size_t end = first + 1;
    if (next->import != 0 && direction == Direction::Undo) {
        while (first > 0 && m_steps[first - 1].import == next->import) {
            --first;
        }
    } else if (next->import != 0) {
        while (end < m_steps.size() && m_steps[end].import == next->import) {
            ++end;
        }
    }
    return std::span(m_steps).subspan(first, end - first);
}

void History::Move(Direction direction, const RecordChange& applied)
{
    Step& step = m_steps.at(IndexOf(direction));
    m_done = direction == Direction::Undo ? m_done - 1 : m_done + 1;
    if (applied.key != step.change.key) {
        SetKeys(step.record, {{step.change.key, applied.key, applied.after}});
    }
    step.change = direction == Direction::Undo ? applied.Reversed() : applied;
}

void History::Drop(Direction direction)
{
    const std::span<const Step> dropped = NextTogether(direction);
    const auto first = static_cast<std::size_t>(dropped.data() - m_steps.data());
    m_steps.erase(Position(first), Position(first + dropped.size()));
    m_done = std::min(m_done, first);
}

void History::Clear()
{
    m_steps.clear();
    m_done = 0;
}

void History::SetKeys(RecordTitle::Kind record, const std::vector<NewKey>& newKeys)
{
    std::map<std::size_t, RecordChange>
        updated; // applied at the end, because a new key may be an old one too
    for (const Direction direction : {Direction::Undo, Direction::Redo}) {
        const std::size_t count = direction == Direction::Undo ? m_done : m_steps.size() - m_done;
        for (const auto& [from, to, current] : newKeys) {
            std::string xml = current;
            for (std::size_t distance = 0; distance < count && !xml.empty(); ++distance) {
                const std::size_t index =
                    direction == Direction::Undo ? m_done - 1 - distance : m_done + distance;
                const Step& step = m_steps[index];
                if (step.record != record || step.change.key != from) {
                    continue;
                }
                RecordChange change = step.Towards(direction);
                change.SetKey(to);
                if (change.before == xml) { // otherwise the step is about an earlier record with that key
                    xml = change.after;
                    updated[index] = direction == Direction::Undo ? change.Reversed() : change;
                }
            }
        }
    }
    for (auto& [index, change] : updated) {
        m_steps[index].change = std::move(change);
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
