#pragma once

#include "analysis/ComparableValues.h"
#include "analysis/TripText.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Tarno
{

/// The texts of a trip as queries search them: readable and folded once, independent of the record. The lines
/// of a text and the texts themselves are separated by "\n".
class SearchedTrip
{
public:
    SearchedTrip(const RecordView& trip, const PlaceNames& places);

    /// Returns the texts of all fields but the key and the picture.
    std::string_view All() const { return m_shown; }

    std::string_view Of(EntryField::Position field) const
    {
        return field == EntryField::Picture
                   ? std::string_view(m_picture)
                   : std::string_view(m_shown).substr(Start(field), m_ends.at(field) - Start(field));
    }

    /// Returns the days of the trip, or nullopt if its start date cannot be read. An end date that cannot be
    /// read or is before the start counts as the start.
    const std::optional<Interval>& Days() const { return m_days; }

private:
    void Append(std::size_t field, std::string_view value, const PlaceNames& places);

    std::size_t Start(std::size_t field) const { return field == 0 ? 0 : m_ends.at(field - 1) + 1; }

    std::string m_shown;
    std::array<std::uint32_t, EntryField::Count> m_ends{}; ///< of the fields in m_shown
    std::string m_picture;
    std::optional<Interval> m_days;
};

} // namespace Tarno
