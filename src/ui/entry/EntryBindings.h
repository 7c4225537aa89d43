#pragma once

#include "store/EntryFields.h"
#include "ui/common/RecordBinder.h"

#include <initializer_list>

namespace Tarno
{

// Binding of the controls on the entry editor's pages. The kind of a field decides which texts its box
// accepts.

struct EntryBox {
    EntryField::Position field;
    QLineEdit* box;
};

/// Checks dates and times and filters their input. Other boxes accept any text.
void BindEntryBoxes(RecordBinder& binder, std::initializer_list<EntryBox> boxes);

struct EntryOptions {
    EntryField::Position field;
    const char* group;
};

/// Binds groups of option buttons on `page`.
void BindEntryOptions(RecordBinder& binder, QWidget* page, std::initializer_list<EntryOptions> groups);

struct EntryLines {
    EntryField::Position field;
    QPlainTextEdit* box;
};

void BindEntryLines(RecordBinder& binder, std::initializer_list<EntryLines> boxes);

} // namespace Tarno
