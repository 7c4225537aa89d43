#pragma once

#include <pugixml.hpp>

#include <string>
#include <string_view>

namespace Tarno
{

/// Parses `bytes` (UTF-8, or UTF-16 with its mark) so that saving loses nothing that somebody put there
/// by hand: declaration, comments and processing instructions stay nodes, white space in values is kept.
/// Returns whether they are one well-formed document, its elements at most 256 levels deep; otherwise
/// `document` is empty.
bool ParseXml(std::string_view bytes, pugi::xml_document& document);

/// The same without a copy of a large file: the document points into `bytes`, which are changed and must
/// outlive it untouched.
bool ParseXmlInPlace(std::string& bytes, pugi::xml_document& document);

/// The document as UTF-8 text, one element a line, without a declaration of our own. `expectedSize`, if the
/// caller knows it, saves copies of a large text that grows.
std::string SerializeXml(const pugi::xml_document& document, std::size_t expectedSize = 0);

/// One node with all that is in it, on one line: equal texts, equal contents.
std::string SerializeXml(const pugi::xml_node& node);

} // namespace Tarno
