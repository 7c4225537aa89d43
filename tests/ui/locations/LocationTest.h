#pragma once

#include "ui/entry/EntryTest.h"
#include "ui/locations/dlgLocMaint.h"

#include <QStringList>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Tarno
{

// Helpers to operate the windows of the locations as their user does.

/// A location in which every value but the picture is set.
inline const Values completeLocation{{LocationField::LocDirections, "Left~CL~then right"},
                                     {LocationField::LocDescription, "Deep"},
                                     {LocationField::LocAccess, "1"},
                                     {LocationField::LocLatt, "-33.8"},
                                     {LocationField::LocLong, "151.25"},
                                     {LocationField::LocGMT, "10"},
                                     {LocationField::LocDST, "1"}};

/// Opens the dialog for the location `key`, or a new one for 0, and runs `steps`, which must close it.
template <typename Steps>
void EditLocation(TestProgram& program, int key, Steps&& steps)
{
    WhileOpen(
        "dlgLocMaint",
        [&] { dlgLocMaint(program.program, nullptr).SetData(static_cast<std::int16_t>(key), false); },
        std::forward<Steps>(steps));
}

/// Clicks the box and replaces its text by typing. The box keeps the focus.
inline void Retype(QWidget& window, const char* box, const char* text)
{
    Click(window, box);
    Press(window, Qt::Key_A, Qt::ControlModifier);
    Press(window, Qt::Key_Delete);
    Type(window, text);
}

/// Returns the values of the stored location with that key, or none if it does not exist.
inline std::vector<std::string> StoredLocation(const TestProgram& program, int key)
{
    for (const std::vector<std::string>& location : program.Stored("location.xml")) {
        if (!location.empty() && location[0] == std::to_string(key)) {
            return location;
        }
    }
    return {};
}

/// A started program whose first location is completeLocation, "Pittwater".
class ProgramWithLocation : public TestProgram
{
public:
    explicit ProgramWithLocation(const Values& others = {})
    {
        Start();
        Values values = completeLocation;
        for (const auto& [position, text] : others) {
            values[position] = text;
        }
        AddLocation("Pittwater", values);
    }
};

inline QTabWidget& Tabs(const QWidget& window)
{
    return Find<QTabWidget>(window, "sstLocs");
}

inline void ClickTab(QWidget& window, int index)
{
    const QTabBar* tabs = Tabs(window).tabBar();
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                      tabs->mapTo(&window, tabs->tabRect(index).center()));
}

/// Clicks the indicator of a check box or radio button.
inline void ClickMark(QWidget& window, const char* name)
{
    const auto& button = Find<QAbstractButton>(window, name);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                      button.mapTo(&window, QPoint(8, button.height() / 2)));
}

/// Returns the names of the enabled picture controls.
inline QStringList EnabledControls(const QWidget& window)
{
    QStringList enabled;
    for (const char* control : {"cmdLoad", "cmdRemove", "sldZoom", "hscPic", "vscPic"}) {
        if (Find<QWidget>(window, control).isEnabled()) {
            enabled.append(QLatin1String(control));
        }
    }
    return enabled;
}

/// Expects the file dialog for a picture. Chooses `path`, or cancels the dialog without one.
inline void ExpectChosenPicture(TestProgram& program, const std::optional<std::string>& path)
{
    program.files.ExpectOpen(
        {.title = QStringLiteral("Select the image to display"),
         .filter = QStringLiteral("*.bmp,*.jpg,*.tif,*.gif,*.ico,*.wmf "
                                  "(*.bmp *.jpg *.tif *.gif *.ico *.wmf);;All Files (*)"),
         .folder = FromUtf8(program.folder.Path() + '/'),
         .fileName = QStringLiteral("Image Files")},
        path ? std::optional(FromUtf8(*path)) : std::nullopt);
}

inline const Question deleteLocationQuestion{
    .text = QStringLiteral("Are you sure you want to delete this location from the log?"),
    .title = QStringLiteral("Delete Location?"),
    .icon = Icon::Question,
    .buttons = Buttons::YesNoCancel,
    .byDefault = Button::Cancel};

} // namespace Tarno
