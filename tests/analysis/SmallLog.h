#pragma once

#include "analysis/Query.h"
#include "store/EntryFields.h"
#include "store/Record.h"
#include "store/RecordLayouts.h"
#include "support/StdStrings.h"

#include <pugixml.hpp>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Tarno
{

/// Values of a trip by field. All others are empty.
using Values = std::map<EntryField::Position, std::string>;

/// Trips with the keys "1", "2" ... and locations with the numbers "1", "2" ... in memory.
class SmallLog
{
public:
    SmallLog(const std::vector<Values>& trips, const std::vector<std::string>& places)
    {
        for (const Values& values : trips) {
            pugi::xml_node trip = m_trips->append_child("tarno");
            const std::string key = std::to_string(m_trips->select_nodes("tarno").size());
            for (std::size_t field = 0; field < EntryField::Count; ++field) {
                const auto value = values.find(static_cast<EntryField::Position>(field));
                trip.append_child("v").text().set(field == 0              ? key.c_str()
                                                  : value == values.end() ? ""
                                                                          : value->second.c_str());
            }
        }
        for (const std::string& place : places) {
            pugi::xml_node location = m_places->append_child("location");
            location.append_child("LocNo").text().set(
                std::to_string(m_places->select_nodes("location").size()).c_str());
            location.append_child("LocName").text().set(place.c_str());
        }
        for (const RecordView& trip : Trips()) {
            m_searched.emplace_back(trip, Places());
        }
    }

    RecordList Trips() const { return Records(*m_trips); }

    PlaceNames Places() const { return PlaceNames(Records(*m_places)); }

    /// Returns the keys of the trips that match, separated by blanks.
    std::string Matching(std::string_view text) const
    {
        const Query query(text);
        std::string keys;
        for (std::size_t trip = 0; trip < m_searched.size(); ++trip) {
            if (query.Matches(m_searched[trip])) {
                keys += (keys.empty() ? "" : " ") + std::to_string(trip + 1);
            }
        }
        return keys;
    }

    const std::vector<SearchedTrip>& Searched() const { return m_searched; }

private:
    static RecordList Records(const pugi::xml_document& document)
    {
        RecordList records;
        for (const pugi::xml_node& node : document.children()) {
            records.emplace_back(node);
        }
        return records;
    }

    std::unique_ptr<pugi::xml_document> m_trips = std::make_unique<pugi::xml_document>();
    std::unique_ptr<pugi::xml_document> m_places = std::make_unique<pugi::xml_document>();
    std::vector<SearchedTrip> m_searched;
};

} // namespace Tarno
