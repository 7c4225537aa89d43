#pragma once

#include "exchange/TripTable.h"
#include "support/TestStore.h"

#include <map>
#include <string>
#include <vector>

namespace Tarno
{

inline RecordList TripsOf(const cSQL& sql)
{
    RecordList trips;
    sql.EntryList(trips);
    return trips;
}

inline RecordList LocationsOf(const cSQL& sql)
{
    RecordList locations;
    sql.LocationList(locations);
    return locations;
}

inline RecordList FieldsOf(const cSQL& sql)
{
    RecordList fields;
    sql.FieldList(fields);
    return fields;
}

/// Returns the plan of importing a table whose columns are recognised by their headings.
inline ImportPlan PlanOf(const CsvRows& rows, const cSQL& sql, const TableForms& forms = {})
{
    const ColumnMapping mapping = ProposeMapping(rows.front(), FieldsOf(sql));
    return PlanImport(ReadTrips(rows, mapping, forms), TripsOf(sql), LocationsOf(sql));
}

} // namespace Tarno
