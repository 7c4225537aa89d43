#pragma once

#include <pugixml.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// Returns all text inside `node`, including CDATA sections and nested elements.
std::string TextOf(const pugi::xml_node& node);

/// A read-only view of a stored record. It refers to the data file and is invalidated by any change of it.
/// Values are addressed by their position among the child elements of the record. The key is at 0.
class RecordView
{
public:
    explicit RecordView(pugi::xml_node node) : m_node(node) {}

    /// Returns the value at `position`, UTF-8, or an empty text if the record has fewer children, so that a
    /// short record does not hide the others in a list.
    std::string Text(std::size_t position) const;
    /// Whether the record has a value at `position`, even an empty one.
    bool Has(std::size_t position) const;
    /// Returns the key as a number, or 0 if the record has no children. Throws Error TypeMismatch or
    /// Overflow.
    std::int32_t Key() const;
    std::size_t Count() const;

    const pugi::xml_node& Node() const { return m_node; }

private:
    pugi::xml_node m_node;
};

/// All records of a file, in file order.
using RecordList = std::vector<RecordView>;

/// Returns the record at `position` of `list`, counted from 0. Throws Error SubscriptOutOfRange if the
/// position is outside the list.
const RecordView& RecordAt(const RecordList& list, std::int64_t position);

/// An independent copy of a record. Changes take effect when the copy is passed to the matching update.
class Record
{
public:
    /// Creates a record without values.
    Record() = default;
    explicit Record(const RecordView& stored);
    /// Returns the record that SerializeXml has written, or one without values if `xml` is empty.
    static Record FromXml(std::string_view xml);
    Record(const Record& other);
    Record(Record&&) = default;
    Record& operator=(const Record& other);
    Record& operator=(Record&&) = default;
    ~Record() = default;

    /// Returns the value at `position`, UTF-8. Throws Error ObjectNotSet if the record has fewer children.
    std::string Text(std::size_t position) const;

    std::size_t Count() const { return View().Count(); }

    /// Replaces the value. Characters that XML does not allow become U+FFFD.
    /// Throws Error ObjectNotSet if the record has no child at `position`.
    void SetText(std::size_t position, std::string_view text);

    RecordView View() const { return RecordView(m_document.first_child()); }

private:
    pugi::xml_document m_document;
};

} // namespace Tarno
