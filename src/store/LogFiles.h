#pragma once

#include "store/RecordTable.h"

#include <array>

namespace Tarno
{

/// A data file: its name in the data folder and the elements of its records.
struct LogFile {
    const char* name;
    RecordTable::Names elements;
};

// The files of a log.

namespace LogFiles
{

inline constexpr LogFile trips{"tarno.xml", {"tarno", "TarnoNo"}};
inline constexpr LogFile locations{"location.xml", {"location", "LocNo"}};
inline constexpr LogFile fields{"field.xml", {"field", "FieldNo"}};
inline constexpr LogFile reports{"Rpt.xml", {"report", "RptNo"}};
inline constexpr LogFile blankTrip{"tarnoblank.xml", {"tarno", "TarnoNo"}};
inline constexpr LogFile blankLocation{"locationblank.xml", {"location", "LocNo"}};
inline constexpr LogFile blankReport{"RptBlank.xml", {"report", "RptNo"}};

inline constexpr std::array data{trips, locations, fields, reports, blankTrip, blankLocation, blankReport};

inline constexpr std::array pickLists{"Species.txt", "Bait.txt", "Methods.txt"};

} // namespace LogFiles

} // namespace Tarno
