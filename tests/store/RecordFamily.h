#pragma once

#include "store/cSQL.h"
#include "support/StdStrings.h"

#include <array>
#include <string>
#include <vector>

namespace Tarno
{

/// One of the three kinds of records, whose operations differ only in their names.
struct RecordFamily {
    std::string name;   ///< the prefix of its operations
    std::string record; ///< the element of a record
    std::string key;    ///< the element of its key
    std::string file;
    std::string blank; ///< the file of its template
    Status (cSQL::*list)(RecordList&) const;
    Status (cSQL::*get)(std::int16_t, Record&) const;
    Status (cSQL::*update)(Record&);
    Status (cSQL::*remove)(std::int16_t);

    /// Returns the XML of a record with two values.
    std::string RecordXml(const std::string& number, const std::string& value) const
    {
        return "\t<" + record + ">\n\t\t<" + key + ">" + number + "</" + key + ">\n\t\t<Value>" + value +
               "</Value>\n\t</" + record + ">\n";
    }

    /// Returns a file with these records in the format of the program.
    static std::string File(const std::vector<std::string>& records)
    {
        std::string bytes = "<data>\n";
        for (const std::string& made : records) {
            bytes += made;
        }
        return records.empty() ? "<data />\n" : bytes + "</data>\n";
    }
};

inline const std::array<RecordFamily, 3>& RecordFamilies()
{
    static const std::array<RecordFamily, 3> families{{
        {"Entry", "tarno", "TarnoNo", "tarno.xml", "tarnoblank.xml", &cSQL::EntryList, &cSQL::EntryGet,
         &cSQL::EntryUpdate, &cSQL::EntryDelete},
        {"Location", "location", "LocNo", "location.xml", "locationblank.xml", &cSQL::LocationList,
         &cSQL::LocationGet, &cSQL::LocationUpdate, &cSQL::LocationDelete},
        {"Report", "report", "RptNo", "Rpt.xml", "RptBlank.xml", &cSQL::ReportList, &cSQL::ReportGet,
         &cSQL::ReportUpdate, &cSQL::ReportDelete},
    }};
    return families;
}

/// Makes every slot run once per kind. Call this in initTestCase_data.
inline void AddRecordFamilies()
{
    QTest::addColumn<RecordFamily>("family");
    for (const RecordFamily& family : RecordFamilies()) {
        QTest::newRow(family.name.c_str()) << family;
    }
}

/// Returns the keys of the records in `list`.
inline std::vector<std::string> KeysOf(const RecordList& list)
{
    std::vector<std::string> keys;
    for (const RecordView& record : list) {
        keys.push_back(record.Text(0));
    }
    return keys;
}

} // namespace Tarno
