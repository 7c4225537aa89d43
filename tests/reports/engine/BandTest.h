#pragma once

#include "reports/RowsReport.h"

#include <QLatin1String>

#include <algorithm>

namespace Tarno
{

// Access to the bands of a report that has been laid out.

inline const PlacedText& TextOf(const Band& band, const char* name)
{
    const auto found = std::find_if(band.texts.begin(), band.texts.end(),
                                    [&](const PlacedText& text) { return text.name == QLatin1String(name); });
    if (found == band.texts.end()) {
        qFatal("no text %s", name);
    }
    return *found;
}

/// Lays out `report` and returns its only row.
inline Band OnlyRow(Report& report)
{
    const auto document = LayOut(report);
    if (!document || document->details.size() != 1) {
        qFatal("not one row");
    }
    return document->details.front();
}

} // namespace Tarno
