#pragma once

#include "reports/engine/Document.h"
#include "reports/engine/Report.h"

#include <functional>
#include <optional>

namespace Tarno
{

/// Called with the number of rows that have been laid out. Returns false to cancel.
using LayOutProgress = std::function<bool(int rows)>;

/// Runs `report` and lays its bands out on pages. Returns nothing if `progress` cancelled.
/// A band that does not fit moves to the next page; a band higher than a page is split between lines of text.
/// Needs fonts, but neither a window nor a printer. Propagates exceptions from the report's events. Always
/// restores the report's design.
std::optional<Document> LayOut(Report& report, const LayOutProgress& progress = nullptr);

} // namespace Tarno
