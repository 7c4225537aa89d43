#pragma once

#include "store/Record.h"

#include <QtGlobal>
#include <pugixml.hpp>

#include <string>

namespace Tarno
{

/// Loads a data file of the sample log into `document`, which must outlive the records.
inline RecordList SampleRecords(pugi::xml_document& document, const char* file)
{
    RecordList records;
    if (!document.load_file((std::string(TARNO_SHIPPED_DATA "/sample/") + file).c_str())) {
        qFatal("cannot read %s", file);
    }
    for (const pugi::xml_node& node : document.first_child().children()) {
        records.emplace_back(node);
    }
    return records;
}

} // namespace Tarno
