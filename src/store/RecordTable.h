#pragma once

#include "store/Record.h"

#include <pugixml.hpp>

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace Tarno
{

/// The records of one data file, by key, and the changes that its file lacks. Entries, locations, field
/// definitions and saved reports differ only in their names. Nothing here reads or writes files.
class RecordTable
{
public:
    struct Names {
        const char* record; ///< the element of a record
        const char* key;    ///< the child element that holds its key
    };

    /// By key, each changed or removed record in XML as it was before.
    using Changes = std::map<std::string, std::string>;

    /// `document` must outlive the table.
    RecordTable(pugi::xml_document& document, Names names) : m_document(document), m_names(names) {}

    /// To be called after the document was parsed or reset. There are no changes then.
    void Rebuild();

    /// The records in file order; comments and the like between them do not count.
    /// Throws Error ObjectNotSet if the document is empty.
    RecordList List() const;

    /// The first record whose key is `key` as text ("012" is not "12").
    /// Throws Error ObjectNotSet if there is none or the document is empty.
    RecordView Get(const std::string& key) const;

    /// The same record; a null node if there is none.
    pugi::xml_node Find(const std::string& key) const;

    /// The first record of the file. Throws as Get.
    RecordView First() const;

    /// Appends a copy of `record` under the key of the last record plus one ("1" in an empty file) and
    /// writes the new key into `record`. Throws Error: TypeMismatch or Overflow if the last key is no 32-bit
    /// number that can be counted on, ObjectNotSet if the document is empty.
    void Append(Record& record);

    /// Puts a copy of `record` in the place of the stored record with the same key. Throws as Get.
    void Replace(const Record& record);

    /// Removes the record if there is one. Throws Error ObjectNotSet if the document is empty.
    void Remove(const std::string& key);

    /// Inserts a copy of `record`, which was removed, behind the record of the last of `keysBefore` that the
    /// table has. Throws Error ObjectNotSet if the document is empty.
    void Restore(const Record& record, const std::vector<std::string>& keysBefore);

    /// The keys of the records before that of `key`, in file order.
    std::vector<std::string> KeysBefore(const std::string& key) const;

    /// The records that were replaced, removed or restored; those that were appended.
    const Changes& Changed() const { return m_changed; }

    const std::vector<pugi::xml_node>& Appended() const { return m_appended; }

    bool IsAppended(const pugi::xml_node& record) const;

    /// To be called when the file has all changes.
    void ForgetChanges();

private:
    /// The first child of the document, where records are listed and appended, and its child `data`, where
    /// they are looked up. They throw Error ObjectNotSet if the document is empty.
    pugi::xml_node Container() const;
    pugi::xml_node Data() const;
    void Index();
    void Index(const pugi::xml_node& record);

    pugi::xml_document& m_document;
    Names m_names;
    std::unordered_map<std::string, pugi::xml_node> m_byKey; ///< the first record of each key
    Changes m_changed;
    std::vector<pugi::xml_node> m_appended;
};

} // namespace Tarno
