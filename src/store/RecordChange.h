#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace Tarno
{

/// The place of a record among the nodes of its file. It stays valid while other records are changed.
struct RecordPlace {
    std::optional<std::string> previous; ///< key of the nearest record before it, if any
    std::size_t others = 0; ///< number of nodes after `previous` that no key finds, for example comments
    std::optional<std::string> next; ///< key of the nearest record after it, if any
};

/// A change of one record, with everything that is needed to revert it.
struct RecordChange {
    std::string key;
    std::string before; ///< XML of the record; empty if the change adds it
    std::string after;  ///< XML of the record; empty if the change removes it
    RecordPlace place = {};
    std::string duplicate = {}; ///< XML of what `key` finds while the record is absent; usually empty

    bool IsEmpty() const { return before == after; }

    /// Returns the change that reverts this one.
    RecordChange Reversed() const
    {
        return {.key = key, .before = after, .after = before, .place = place, .duplicate = duplicate};
    }

    /// Gives the record the key `newKey`, which no other record has.
    void SetKey(const std::string& newKey);
};

} // namespace Tarno
