#pragma once

#include "store/EntryFields.h"
#include "ui/common/RecordBinder.h"

#include <initializer_list>

namespace Tarno
{

// How the pages of the entry editor bind their controls: the kind of a field decides which texts its box
// accepts.

struct EntryBox {
    EntryField::Position field;
    QLineEdit* box;
};

/// Dates and times are checked and their keys are filtered; any other text is accepted.
void BindEntryBoxes(RecordBinder& binder, std::initializer_list<EntryBox> boxes);

struct EntryOptions {
    EntryField::Position field;
    const char* group;
};

/// The option buttons of each group are on `page`.
void BindEntryOptions(RecordBinder& binder, QWidget* page, std::initializer_list<EntryOptions> groups);

struct EntryLines {
    EntryField::Position field;
    QPlainTextEdit* box;
};

void BindEntryLines(RecordBinder& binder, std::initializer_list<EntryLines> boxes);

} // namespace Tarno
