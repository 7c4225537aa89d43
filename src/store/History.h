#pragma once

#include "store/RecordChange.h"
#include "store/RecordTitle.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace Tarno
{

enum class ChangeKind { Add, Edit, Delete, Import };

/// The changes of this run that can be undone and redone. The memory for a change is proportional to its
/// record.
class History
{
public:
    enum class Direction { Undo, Redo };

    struct Step {
        RecordTitle::Kind record;
        RecordChange change; ///< as it was made, also if it is to be undone
        /// The number of the import or of the edit of several records that has made the change, from
        /// StartImport, or 0. Its changes follow each other and are undone and redone together.
        std::size_t import = 0;

        ChangeKind Kind() const;
        /// Returns the change that undoes or redoes this step.
        RecordChange Towards(Direction direction) const;
    };

    /// Adds a change that has been made and drops the steps that could be redone. Ignores an empty change.
    void Add(Step step);

    /// Returns a number for the changes of one import or of one edit of several records.
    std::size_t StartImport() { return ++m_imports; }

    /// Returns the changes that are to be undone or redone together with the next one, in the order in which
    /// they were made: those of its import, or only itself. Valid until the next change of the history.
    std::span<const Step> NextTogether(Direction direction) const;

    /// Returns the step to undo or redo next, or null. It is valid until the next change of the history.
    const Step* Next(Direction direction) const;

    /// Marks the next step as undone or redone. `applied` is the change that did it.
    void Move(Direction direction, const RecordChange& applied);

    /// Removes the next step, with all changes of its import, so that the one behind it is next.
    void Drop(Direction direction);

    void Clear();

    struct NewKey {
        std::string from;
        std::string to;
        std::string xml; ///< of the record with its new key
    };

    /// Updates the steps of existing records that have received new keys. Steps of other records that had the
    /// same keys earlier are left alone.
    void SetKeys(RecordTitle::Kind record, const std::vector<NewKey>& newKeys);

private:
    std::size_t IndexOf(Direction direction) const;
    std::vector<Step>::iterator Position(std::size_t index);

    std::vector<Step> m_steps;
    std::size_t m_imports = 0;
    std::size_t m_done = 0; ///< the number of steps that can be undone; those behind them can be redone
};

} // namespace Tarno
