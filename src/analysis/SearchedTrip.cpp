#include "SearchedTrip.h"

namespace Tarno
{

SearchedTrip::SearchedTrip(const RecordView& trip, const PlaceNames& places)
    : m_days(DaysBetween(trip.Text(EntryField::StartDate), trip.Text(EntryField::EndDate)))
{
    std::size_t field = 0;
    // one pass over the values: RecordView::Text counts from the first value each time
    for (const pugi::xml_node& child : trip.Node().children()) {
        if (child.type() == pugi::node_element && field < EntryField::Count) {
            Append(field++, TextOf(child), places);
        }
    }
    while (field < EntryField::Count) {
        Append(field++, {}, places);
    }
}

void SearchedTrip::Append(std::size_t field, std::string_view value, const PlaceNames& places)
{
    const auto position = static_cast<EntryField::Position>(field);
    if (position == EntryField::Picture) {
        m_picture = Fold(value);
    } else if (position != EntryField::TarnoNo) {
        m_shown += Fold(ReadableValue(value, position, places));
    }
    m_ends.at(field) = static_cast<std::uint32_t>(m_shown.size());
    m_shown += '\n';
}

} // namespace Tarno
