#pragma once

#include <pugixml.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// All text inside `node`, CDATA sections and nested elements included.
std::string TextOf(const pugi::xml_node& node);

/// A stored record, to be read. It sees the data file itself and must not outlive the next change of it.
/// Values are addressed by their position among the record's child elements, the key at 0.
class RecordView
{
public:
    explicit RecordView(pugi::xml_node node) : m_node(node) {}

    /// The value at `position`, UTF-8. Throws Error ObjectNotSet when the record has no such child.
    std::string Text(std::size_t position) const;
    std::size_t Count() const;

    const pugi::xml_node& Node() const { return m_node; }

private:
    pugi::xml_node m_node;
};

/// All records of a file, in file order.
using RecordList = std::vector<RecordView>;

/// The record at `position` of `list`, from 0. Throws Error SubscriptOutOfRange when there is none.
const RecordView& RecordAt(const RecordList& list, std::int64_t position);

/// A copy of a record that belongs to its holder. Changing it changes nothing until it is handed to the
/// matching update.
class Record
{
public:
    /// A record without values.
    Record() = default;
    explicit Record(const RecordView& stored);
    Record(const Record& other);
    Record(Record&&) = default;
    Record& operator=(const Record& other);
    Record& operator=(Record&&) = default;
    ~Record() = default;

    std::string Text(std::size_t position) const { return View().Text(position); }

    std::size_t Count() const { return View().Count(); }

    /// Replaces the value; what XML cannot carry becomes U+FFFD.
    /// Throws Error ObjectNotSet when the record has no child at `position`.
    void SetText(std::size_t position, std::string_view text);

    RecordView View() const { return RecordView(m_document.first_child()); }

private:
    pugi::xml_document m_document;
};

} // namespace Tarno
