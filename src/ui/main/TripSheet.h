#pragma once

#include "analysis/TripText.h"
#include "ui/common/Program.h"

class QWidget;

namespace Tarno
{

/// Shows the sheet of a trip, with its picture, in a preview over `parent` until the preview is closed. If
/// the picture cannot be read, the sheet says so instead.
void ShowTripSheet(const Program& program, const RecordView& trip, const PlaceNames& places, QWidget* parent);

} // namespace Tarno
