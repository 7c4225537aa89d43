#pragma once

#include <cstddef>

namespace Tarno
{

// The positions of the values in records of locations, columns of the log report and saved reports. Those of
// entries are in EntryFields.h. The order of the children is part of the file format; their names are
// ignored.

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

} // namespace Tarno
