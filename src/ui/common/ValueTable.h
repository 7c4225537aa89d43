#pragma once

#include "analysis/TripDescription.h"

#include <vector>

class QTextCursor;
class QTextEdit;

namespace Tarno
{

/// The margin of a text box for reading, in device-independent pixels.
constexpr int readableMargin = 8;

/// Prepares a text box for reading: it can be scrolled, selected and copied, but not edited.
void MakeReadable(QTextEdit& box);

/// Inserts the values as a table with bold captions.
void InsertValues(QTextCursor& cursor, const std::vector<DescribedValue>& values);

} // namespace Tarno
