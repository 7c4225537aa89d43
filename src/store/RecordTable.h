#pragma once

#include "store/ImportBatch.h"
#include "store/Record.h"
#include "store/RecordChange.h"

#include <pugixml.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace Tarno
{

/// The records of a data file by key, and the changes that are not yet in the file. Entries, locations, field
/// definitions and saved reports differ only in the names of their elements. The table does not access files.
class RecordTable
{
public:
    struct Names {
        const char* record; ///< the element of a record
        const char* key;    ///< the child element that contains its key
    };

    /// A state of the table. The default one belongs to no table.
    struct Revision {
        std::uint64_t index = 0;
        std::size_t changes = 0;

        bool operator==(const Revision&) const = default;
    };

    /// The original XML of each changed or removed record, by key.
    using Changes = std::map<std::string, std::string>;

    /// `document` must outlive the table.
    RecordTable(pugi::xml_document& document, Names names) : m_document(document), m_names(names) {}

    /// Rebuilds the index and forgets all changes. Call this after parsing or resetting the document.
    void Rebuild();

    /// Returns the records in file order, without comments and other nodes between them.
    /// Throws Error ObjectNotSet if the document is empty.
    RecordList List() const;

    /// Returns the first record with the key `key`, compared as text ("012" is not "12").
    /// Throws Error ObjectNotSet if no record has the key or the document is empty.
    RecordView Get(const std::string& key) const;

    /// Returns the same record as Get, or a null node if no record has the key.
    pugi::xml_node Find(const std::string& key) const;

    /// Returns the first record of the file. Throws like Get.
    RecordView First() const;

    Revision CurrentRevision() const { return {m_index, m_touched.size()}; }

    /// Returns the keys of the records that were added, changed or removed since `revision`, or nothing if
    /// any record may have been. If there are keys, Get finds each record of List by its first value.
    std::optional<std::set<std::string>> ChangedSince(const Revision& revision) const;

    // Changes: each returns what it has changed.

    /// Appends a copy of `record` with the key of the last record plus one ("1" in an empty file) and stores
    /// the new key in `record`. Throws Error: TypeMismatch if the last key is not a number, Overflow if it or
    /// the new key exceeds 32 bits, ObjectNotSet if the document is empty.
    RecordChange Append(Record& record);

    /// Adds a copy of `blank` with each of `records` as its values, and stores the keys in them. Inserts a
    /// record before those with greater keys if its own key is a number from 1 to `lastKey` that no record
    /// has. Appends the others under the next keys above all others. Throws Error without changing anything:
    /// Overflow if a new key would exceed `lastKey`, ObjectNotSet if `blank` has fewer values or the document
    /// is empty.
    std::vector<RecordChange> AddAll(const Record& blank, const std::vector<StoredTexts*>& records);

    /// Throws what AddAll would throw.
    void CheckAddAll(const Record& blank, const std::vector<StoredTexts*>& records) const
    {
        PlanKeys(blank, records);
    }

    static constexpr std::int32_t lastKey = 32767; ///< the last one that windows can ask for

    /// Whether Apply would apply the change. Unlike Apply, does not give a record another key.
    bool CanApply(const RecordChange& change) const;

    /// Replaces the stored record with the same key by a copy of `record`. Throws like Get.
    RecordChange Replace(const Record& record);

    /// Removes the record with the key, if any. Throws Error ObjectNotSet if the document is empty.
    RecordChange Remove(const std::string& key);

    /// Reinserts a copy of `record`, a removed record. If the record before its place no longer exists,
    /// inserts it after the last record with a smaller key. Throws Error ObjectNotSet if the document is
    /// empty.
    void Restore(const Record& record, const RecordPlace& place);

    /// Reinserts copies of records of `ours` that this table does not have, at the same places among those
    /// that both have.
    void RestoreAll(const std::set<std::string>& keys, const RecordTable& ours);

    /// Applies a change to a record that has the text `change.before`, and updates the key and the place in
    /// `change`. A record whose key another one has taken is appended under the next key instead. Returns
    /// false without changing anything if the record is different or already exists again. Throws like
    /// Append.
    bool Apply(RecordChange& change);

    /// Returns the record that Apply would replace or remove, or a null node.
    pugi::xml_node FindUnchanged(const RecordChange& change) const;

    /// Returns the place of `record`, a node of this table.
    RecordPlace PlaceOf(const pugi::xml_node& record) const;

    /// The records that were replaced, removed or restored since the last ForgetChanges, and those appended.
    const Changes& Changed() const { return m_changed; }

    const std::vector<pugi::xml_node>& Appended() const { return m_appended; }

    bool IsAppended(const pugi::xml_node& record) const;

    /// Forgets all changes. Call this after saving.
    void ForgetChanges();

private:
    /// Container returns the first child of the document, in which records are listed and appended. Data
    /// returns its child `data`, in which they are looked up. Both throw Error ObjectNotSet if the document
    /// is empty.
    pugi::xml_node Container() const;
    pugi::xml_node Data() const;
    void Index();
    void Index(const pugi::xml_node& record);
    std::string KeyOf(const pugi::xml_node& record) const;
    /// Whether `node` is a record that Find returns for its key.
    bool IsFound(const pugi::xml_node& node) const;
    /// Returns the key of the first record at or after `node`.
    std::optional<std::string> NextKey(pugi::xml_node node) const;
    RecordPlace PlaceBetween(pugi::xml_node before, const pugi::xml_node& after) const;
    /// Returns the last record between `start` and `from` with a smaller key, or `start`.
    pugi::xml_node LastBefore(const std::string& key, const pugi::xml_node& start, pugi::xml_node from) const;

    struct KeyPlan {
        /// The positions of the records that keep their numbers, from the highest number down.
        std::map<std::int32_t, std::size_t, std::greater<>> kept;
        std::int32_t highest; ///< the highest key afterwards, without the new ones
    };

    KeyPlan PlanKeys(const Record& blank, const std::vector<StoredTexts*>& records) const;
    /// Returns `node`. Throws Error ObjectNotSet if it is null.
    static pugi::xml_node RequireNode(const pugi::xml_node& node);
    RecordChange AppendKeyed(const Record& record);
    /// Inserts a copy of `record` after `before`, or as the first node, and notes the change.
    pugi::xml_node InsertAfter(const pugi::xml_node& before, const Record& record);

    RecordChange Replace(const pugi::xml_node& old, const Record& record);
    RecordChange Remove(const pugi::xml_node& record);
    void NoteChange(const std::string& key, const std::string& before);

    pugi::xml_document& m_document;
    Names m_names;
    std::unordered_map<std::string, pugi::xml_node> m_byKey; ///< the first record of each key
    bool m_isRegular = false;           ///< whether all elements are records that begin with their keys
    std::uint64_t m_index = 0;          ///< a number for each Index of any table
    std::vector<std::string> m_touched; ///< keys of the records changed since Index
    bool m_hasDuplicates = false;       ///< whether two records have the same key
    Changes m_changed;
    std::vector<pugi::xml_node> m_appended;
};

} // namespace Tarno
