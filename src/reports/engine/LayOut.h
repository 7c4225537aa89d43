#pragma once

#include "reports/engine/Document.h"
#include "reports/engine/Report.h"

#include <functional>
#include <optional>

namespace Tarno
{

/// Told how many rows have been laid out; returns false to stop.
using LayOutProgress = std::function<bool(int rows)>;

/// Runs `report` and lays its bands out on pages. A band that does not fit moves to the next page; one that
/// is higher than a page is cut between lines of text. Needs fonts, but neither window nor printer.
/// Nothing when `progress` stopped it. What an event throws passes through; the report's design is as
/// before in every case.
std::optional<Document> LayOut(Report& report, const LayOutProgress& progress = nullptr);

} // namespace Tarno
