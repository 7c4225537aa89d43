#pragma once

#include "store/DataFile.h"
#include "store/Record.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// The records of one data file, found by their key. Entries, locations, field definitions and saved
/// reports differ only in their names. Nothing here touches the disk; whoever changes a table saves it.
class RecordTable
{
public:
    struct Names {
        const char* record; ///< the element of a record
        const char* key;    ///< the child element that holds its key
    };

    RecordTable(DataFile& file, Names names) : m_file(file), m_names(names) {}

    const Names& RecordNames() const { return m_names; }

    /// To be called when the file was loaded or released.
    void Rebuild();

    /// The records in file order; comments and the like between them do not count.
    /// Throws Error ObjectNotSet when the file could not be read.
    RecordList List() const;

    /// The first record whose key is `key` as text ("012" is not "12").
    /// Throws Error ObjectNotSet when there is none or the file could not be read.
    RecordView Get(const std::string& key) const;

    /// The first record of the file. Throws as Get.
    RecordView First() const;

    /// Whether every record of `other` is here too, with the same values.
    /// Throws Error ObjectNotSet when one of the files could not be read.
    bool HoldsAllOf(const RecordTable& other) const;

    /// Whether both have the same record under `key`, or neither has one.
    bool AgreesWith(const RecordTable& other, const std::string& key) const;

    /// Appends a copy of `record` under the key of the last record plus one ("1" in an empty file) and
    /// writes the new key into `record`. Throws Error: TypeMismatch or Overflow when the last key is no
    /// 32-bit number that can be counted on, ObjectNotSet when the file could not be read.
    void Append(Record& record);

    /// Puts a copy of `record` into the place of the stored record with the same key. Throws as Get.
    void Replace(const Record& record);

    /// Removes the record if there is one. Throws Error ObjectNotSet when the file could not be read.
    void Remove(const std::string& key);

private:
    void Index(const pugi::xml_node& record);
    std::vector<std::string> SortedTexts() const;

    DataFile& m_file;
    Names m_names;
    std::unordered_map<std::string, pugi::xml_node> m_byKey; ///< the first record of each key
};
