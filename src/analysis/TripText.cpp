#include "TripText.h"

#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Text.h"
#include "store/RecordLayouts.h"

#include <QString>

#include <algorithm>
#include <cstdlib>

namespace Tarno
{

namespace
{

std::string WithLineBreaksAs(std::string_view lineBreak, std::string_view stored)
{
    return ReplaceAll(mMain::DecodeLineBreaks(stored), "\r\n", lineBreak);
}

std::string ReadableMoonPhase(std::string_view stored)
{
    if (stored.empty()) {
        return {};
    }
    try {
        return (stored.starts_with('-') ? "Waning, " : "Waxing, ") +
               ZeroPadded(std::abs(ToInt16(stored)), 2) + "%";
    } catch (const Error&) {
        return std::string(stored);
    }
}

} // namespace

PlaceNames::PlaceNames(const RecordList& locations)
{
    for (const RecordView& location : locations) {
        m_names.emplace(location.Text(LocationField::LocNo),
                        WithLineBreaksAs(" ", location.Text(LocationField::LocName)));
    }
}

const std::string& PlaceNames::Of(std::string_view number) const
{
    static const std::string unknown;
    const auto found = m_names.find(number);
    return found == m_names.end() ? unknown : found->second;
}

std::string ReadableText(const RecordView& trip, EntryField::Position field, const PlaceNames& places)
{
    return ReadableValue(trip.Text(field), field, places);
}

std::optional<int> CodeOf(const RecordView& trip, EntryField::Position field)
{
    return CodeOf(trip.Text(field), field);
}

std::optional<int> CodeOf(std::string_view stored, EntryField::Position field)
{
    return CodeWord(field, stored) == FieldWords::notSet ? std::nullopt : std::optional(stored[0] - '0');
}

std::vector<std::string> LinesOf(const RecordView& trip, EntryField::Position field, const PlaceNames& places)
{
    std::vector<std::string> lines = Split(ReadableText(trip, field, places), '\n');
    std::erase_if(lines, IsBlank);
    for (std::string& line : lines) {
        line = std::string(Trimmed(line));
    }
    return lines;
}

std::string ReadableValue(std::string_view value, EntryField::Position field, const PlaceNames& places)
{
    switch (entryFields.at(field).kind) {
    case FieldKind::Code: {
        const std::string word = CodeWord(field, value);
        return word == FieldWords::notSet ? std::string() : word;
    }
    case FieldKind::Place:
        return places.Of(value);
    case FieldKind::MoonPhase:
        return ReadableMoonPhase(value);
    case FieldKind::Lines:
        return WithLineBreaksAs("\n", value);
    default:
        return std::string(value);
    }
}

std::string Fold(std::string_view text)
{
    std::string folded(text);
    bool isAscii = true;
    for (char& letter : folded) {
        isAscii = isAscii && static_cast<unsigned char>(letter) < 0x80;
        letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    }
    if (isAscii) {
        return folded;
    }
    QString letters = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))
                          .normalized(QString::NormalizationForm_KD);
    letters.removeIf([](QChar letter) { return letter.isMark(); });
    // Qt folds letters one to one; apart from U+00DF, no letter that is left after the normalization needs
    // more
    return letters.toCaseFolded().replace(QChar(0xDF), QLatin1String("ss")).toStdString();
}

bool IsBlank(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    const bool isAscii = first == std::string_view::npos || static_cast<unsigned char>(text[first]) < 0x80;
    return isAscii ? first == std::string_view::npos
                   : Fold(text).find_first_not_of(blanks) == std::string::npos;
}

std::string_view SubjectOf(std::string_view line)
{
    const std::size_t end = line.find_first_of("0123456789,;(");
    std::string_view subject = Trimmed(line.substr(0, end));
    if (end != std::string_view::npos && (subject.ends_with(" x") || subject.ends_with(" X"))) {
        subject = Trimmed(subject.substr(0, subject.size() - 2));
    }
    return subject.empty() ? line : subject;
}

} // namespace Tarno
