#pragma once

#include "support/Pictures.h"
#include "ui/entry/EntryTest.h"
#include "ui/locations/dlgLocMaint.h"

// The windows of the locations as their user sees them.

/// A location in which every value but the picture is set.
inline const Values completeLocation{{LocationField::LocDirections, "Left~CL~then right"},
                                     {LocationField::LocDescription, "Deep"},
                                     {LocationField::LocAccess, "1"},
                                     {LocationField::LocLatt, "-33.8"},
                                     {LocationField::LocLong, "151.25"},
                                     {LocationField::LocGMT, "10"},
                                     {LocationField::LocDST, "1"}};

/// Opens the dialog for the location `key`, a new one for 0, and runs `steps` in it, which have to close it.
template <typename Steps>
void EditLocation(TestProgram& program, int key, Steps&& steps)
{
    WhileOpen(
        "dlgLocMaint",
        [&] { dlgLocMaint(program.program, nullptr).SetData(static_cast<std::int16_t>(key), false); },
        std::forward<Steps>(steps));
}

/// Goes to the box on the page that is shown and replaces its text by typing; the box keeps the focus.
inline void Retype(QWidget& window, const char* box, const char* text)
{
    Click(window, box);
    Press(window, Qt::Key_A, Qt::ControlModifier);
    Press(window, Qt::Key_Delete);
    Type(window, text);
}

/// The values of the stored location with that key; none when there is no such location.
inline std::vector<std::string> StoredLocation(const TestProgram& program, int key)
{
    for (const std::vector<std::string>& location : program.Stored("location.xml")) {
        if (!location.empty() && location[0] == std::to_string(key)) {
            return location;
        }
    }
    return {};
}

inline const Question deleteLocationQuestion{
    .text = QStringLiteral("Are you sure you want to delete this location from the log?"),
    .title = QStringLiteral("Delete Location?"),
    .icon = Icon::Question,
    .buttons = Buttons::YesNoCancel,
    .byDefault = Button::Cancel};
