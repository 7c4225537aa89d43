#pragma once

#include <pugixml.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Tarno
{

/// Why and where a text is not accepted as XML.
struct XmlFault {
    std::size_t offset;      ///< in bytes of the text as UTF-8
    std::string_view reason; ///< for the user, without a full stop; refers to a constant
};

/// Parses `bytes` (UTF-8, or UTF-16 with a byte order mark) without losing manual edits when the document is
/// saved again: the declaration, comments, processing instructions and white space in values are kept. As in
/// every XML reader, a line end becomes a line feed; a carriage return is kept if it is written as a
/// reference. Returns false and leaves `document` empty unless `bytes` are one well-formed document with at
/// most 256 levels of elements.
bool ParseXml(std::string_view bytes, pugi::xml_document& document);

/// Like ParseXml, but saves memory for a large file. Modifies `bytes` instead of copying them, and the
/// document refers to them: they must outlive the document and must not be changed. Text at the start of an
/// element becomes the value of the element instead of its first child. Returns the fault, or nothing if it
/// succeeded.
std::optional<XmlFault> ParseXmlInPlace(std::string& bytes, pugi::xml_document& document);

/// Returns for example "Line 2, column 7", both counted from 1, for an offset in `bytes`, the text that was
/// parsed.
std::string DescribeXmlPosition(std::string_view bytes, std::size_t offset);

/// Serialises the document as UTF-8 with one element per line, without adding a declaration. Carriage returns
/// are written as references. Reserves `expectedSize` bytes for the result.
std::string SerializeXml(const pugi::xml_document& document, std::size_t expectedSize = 0);

/// Serialises a node and its descendants on one line, so that equal texts mean equal contents.
std::string SerializeXml(const pugi::xml_node& node);

} // namespace Tarno
