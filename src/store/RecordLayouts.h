#pragma once

#include <cstddef>

// The positions of the values in the four kinds of record. The order of a record's children is part of
// the file format; their names are not looked at.

namespace EntryField
{
enum Position : std::size_t {
    TarnoNo,
    StartDate,
    EndDate,
    StartTime,
    EndTime,
    LocNo,
    TideStart,
    TideEnd,
    HighTide,
    HighTideHt,
    LowTide,
    LowTideHt,
    SunRise,
    SunSet,
    MoonRise,
    MoonSet,
    MoonPhase,
    Prediction,
    AirTemp,
    WaterTemp,
    WindDir,
    WindStrength,
    Weather,
    WaterClarity,
    TargetSpecies,
    BaitUsed,
    Method,
    FishAction,
    FishCaught,
    AirPressure,
    PressureReading,
    Obbos,
    Major1,
    Major2,
    Minor1,
    Minor2,
    Picture,
    Count
};
} // namespace EntryField

namespace LocationField
{
enum Position : std::size_t {
    LocNo,
    LocName,
    LocDirections,
    LocDescription,
    LocAccess,
    LocLatt,
    LocLong,
    LocGMT,
    LocDST,
    LocPicture,
    Count
};
} // namespace LocationField

namespace FieldField
{
enum Position : std::size_t { FieldNo, FieldName, Desc, Label, Width, Font, Grow, DefaultFlag, Count };
} // namespace FieldField

namespace ReportField
{
enum Position : std::size_t { RptNo, RptName, Fields, FieldKeys, Options, Count };
} // namespace ReportField
