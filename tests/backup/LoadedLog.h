#pragma once

#include "LogFolder.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"
#include "store/cSQL.h"
#include "support/ExpectedReports.h"

#include <string>
#include <vector>

namespace Tarno
{

/// A loaded log.
struct LoadedLog : LogFolder {
    explicit LoadedLog(Log log = Log::Empty) : LogFolder(log) { sql.Init(); }

    RecordList Trips() const
    {
        RecordList trips;
        sql.EntryList(trips);
        return trips;
    }

    RecordList Locations() const
    {
        RecordList locations;
        sql.LocationList(locations);
        return locations;
    }

    std::string AddPlace(const std::string& name, const std::string& picture = {})
    {
        Record place;
        sql.LocationGet(0, place);
        place.SetText(LocationField::LocName, name);
        place.SetText(LocationField::LocPicture, picture);
        sql.LocationUpdate(place);
        return place.Text(0);
    }

    std::string AddTrip(const std::string& date, const std::string& place, const std::string& picture = {})
    {
        Record trip;
        sql.EntryGet(0, trip);
        trip.SetText(EntryField::StartDate, date);
        trip.SetText(EntryField::LocNo, place);
        trip.SetText(EntryField::Picture, picture);
        sql.EntryUpdate(trip);
        return trip.Text(0);
    }

    std::vector<std::string> PlaceNames() const
    {
        std::vector<std::string> names;
        for (const RecordView& location : Locations()) {
            names.push_back(location.Text(LocationField::LocName));
        }
        return names;
    }

    ExpectedReports reports;
    cSQL sql{program, operations};
};

} // namespace Tarno
