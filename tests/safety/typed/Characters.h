#pragma once

#include "support/Platform.h"
#include "support/StdStrings.h"

#include <QProcess>
#include <QString>
#include <QStringList>

#include <string>
#include <vector>

namespace Tarno
{

// The characters of Unicode, and a check of files with a strict XML parser.

constexpr char32_t lastCharacter = 0x10FFFF;
inline const std::string replacementCharacter = "\xEF\xBF\xBD";

/// Returns the characters that XML 1.0 allows.
inline std::vector<char32_t> XmlCharacters()
{
    std::vector<char32_t> characters{0x9, 0xA, 0xD};
    for (const auto& [first, last] :
         {std::pair<char32_t, char32_t>(0x20, 0xD7FF), std::pair<char32_t, char32_t>(0xE000, 0xFFFD),
          std::pair<char32_t, char32_t>(0x10000, lastCharacter)}) {
        for (char32_t character = first; character <= last; ++character) {
            characters.push_back(character);
        }
    }
    return characters;
}

/// Returns `character` in UTF-8. Surrogates are encoded like other characters.
inline std::string Utf8(char32_t character)
{
    const auto bits = [&](unsigned shift, unsigned mask, unsigned lead) {
        return static_cast<char>((character >> shift & mask) | lead);
    };
    if (character < 0x80) {
        return {bits(0, 0x7F, 0)};
    }
    if (character < 0x800) {
        return {bits(6, 0x1F, 0xC0), bits(0, 0x3F, 0x80)};
    }
    if (character < 0x10000) {
        return {bits(12, 0x0F, 0xE0), bits(6, 0x3F, 0x80), bits(0, 0x3F, 0x80)};
    }
    return {bits(18, 0x07, 0xF0), bits(12, 0x3F, 0x80), bits(6, 0x3F, 0x80), bits(0, 0x3F, 0x80)};
}

/// Splits the characters into texts of `length` characters each.
inline std::vector<std::string> Texts(const std::vector<char32_t>& characters, std::size_t length)
{
    std::vector<std::string> texts;
    for (std::size_t at = 0; at < characters.size(); ++at) {
        if (at % length == 0) {
            texts.emplace_back();
        }
        texts.back() += Utf8(characters[at]);
    }
    return texts;
}

/// Returns the errors that xmllint finds in the file at `path`, or an empty string. On Windows, where xmllint
/// is not available, always returns an empty string.
inline std::string XmllintFault(const std::string& path)
{
    if constexpr (isWindows) {
        return {};
    }
    QProcess xmllint;
    // --huge: a value may be longer than ten million bytes
    xmllint.start(QStringLiteral("xmllint"), {QStringLiteral("--noout"), QStringLiteral("--nonet"),
                                              QStringLiteral("--huge"), QString::fromStdString(path)});
    if (!xmllint.waitForFinished(-1)) {
        return "xmllint cannot be run";
    }
    const std::string output = xmllint.readAllStandardError().toStdString();
    return xmllint.exitCode() == 0 ? output : output + "(refused)";
}

} // namespace Tarno
