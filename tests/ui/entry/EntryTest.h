#pragma once

#include "qt/Strings.h"
#include "support/TestProgram.h"
#include "support/Windows.h"
#include "ui/entry/fEntry.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest>

namespace Tarno
{

// Helpers to operate the entry editor as its user does.

/// Returns an entry at location 1 with every value set, so that nothing is calculated.
inline Values CompleteEntry(const Values& others = {})
{
    Values entry{{EntryField::StartDate, "2003-02-05"},
                 {EntryField::EndDate, "2003-02-06"},
                 {EntryField::StartTime, "06:30"},
                 {EntryField::EndTime, "11:45"},
                 {EntryField::LocNo, "1"},
                 {EntryField::TideStart, "3"},
                 {EntryField::TideEnd, "0"},
                 {EntryField::HighTide, "09:10"},
                 {EntryField::HighTideHt, "1.6 m"},
                 {EntryField::LowTide, "03:05"},
                 {EntryField::LowTideHt, "0.4"},
                 {EntryField::SunRise, "06:11"},
                 {EntryField::SunSet, "19:58"},
                 {EntryField::MoonRise, "10:21"},
                 {EntryField::MoonSet, "21:43"},
                 {EntryField::MoonPhase, "-45"},
                 {EntryField::Prediction, "2"},
                 {EntryField::AirTemp, "24.5"},
                 {EntryField::WaterTemp, "21"},
                 {EntryField::WindDir, "7"},
                 {EntryField::WindStrength, "3"},
                 {EntryField::Weather, "6"},
                 {EntryField::WaterClarity, "2"},
                 {EntryField::TargetSpecies, "Flathead~CL~Squid"},
                 {EntryField::BaitUsed, "Prawn"},
                 {EntryField::Method, "Drifting~CL~Casting"},
                 {EntryField::FishAction, "3"},
                 {EntryField::FishCaught, "2 flathead"},
                 {EntryField::AirPressure, "1"},
                 {EntryField::PressureReading, "1013"},
                 {EntryField::Obbos, "First~CL~~CL~Last"},
                 {EntryField::Major1, "04:01"},
                 {EntryField::Major2, "16:26"},
                 {EntryField::Minor1, "10:13"},
                 {EntryField::Minor2, "22:37"}};
    for (const auto& [position, text] : others) {
        entry[position] = text;
    }
    return entry;
}

/// A started program with one location, at 33.8 south, 151.25 east.
class ProgramWithPlace : public TestProgram
{
public:
    ProgramWithPlace()
    {
        Start();
        AddLocation("Pittwater");
    }

    /// Stores CompleteEntry; returns its key.
    int AddCompleteEntry(const Values& others = {}) { return AddEntry(CompleteEntry(others)); }
};

/// Opens the editor for the entry `key`, or a new one for 0, and runs `steps`, which must close it.
template <typename Steps>
void Edit(TestProgram& program, int key, Steps&& steps)
{
    WhileOpen(
        "fEntry", [&] { fEntry(program.program, nullptr).SetData(static_cast<std::int16_t>(key), false); },
        std::forward<Steps>(steps));
}

inline QTabWidget& Pages(const QWidget& editor)
{
    return Find<QTabWidget>(editor, "sstEntry");
}

/// Clicks the tab of the page `index`.
inline void ClickPage(QWidget& editor, int index)
{
    const QTabBar* tabs = Pages(editor).tabBar();
    QTest::mouseClick(editor.windowHandle(), Qt::LeftButton, {},
                      tabs->mapTo(&editor, tabs->tabRect(index).center()));
}

/// Clicks the tab of the page that contains `control`.
inline void ShowPageOf(QWidget& editor, const QWidget& control)
{
    for (int index = 0; index < Pages(editor).count(); ++index) {
        if (Pages(editor).widget(index)->isAncestorOf(&control) && Pages(editor).currentIndex() != index) {
            ClickPage(editor, index);
        }
    }
}

/// Shows the page of the control `name` and clicks the control.
inline void GoTo(QWidget& editor, const char* name)
{
    auto& control = Find<QWidget>(editor, name);
    ShowPageOf(editor, control);
    Click(control);
}

/// Clicks the box and replaces its text by typing. The box keeps the focus.
inline void Enter(QWidget& editor, const char* box, const char* text)
{
    GoTo(editor, box);
    Press(editor, Qt::Key_A, Qt::ControlModifier);
    Press(editor, Qt::Key_Delete);
    Type(editor, text);
}

/// Types a date that does not exist into the first box.
inline void TypeRefusedDate(QDialog& editor)
{
    Enter(editor, "txtStart", "2003-02-31");
}

inline void Save(QWidget& editor)
{
    Click(editor, "cmdOK");
}

/// Clicks "Close". If the editor asks a question, the test must expect it.
inline void Close(QWidget& editor)
{
    Click(editor, "cmdCancel");
}

inline void SaveAndClose(QWidget& editor)
{
    Save(editor);
    Close(editor);
}

inline std::string BoxText(const QWidget& editor, const char* box)
{
    return ToUtf8(Find<QLineEdit>(editor, box).text());
}

inline std::string LinesText(const QWidget& editor, const char* box)
{
    return ToUtf8(Find<QPlainTextEdit>(editor, box).toPlainText());
}

inline std::string Place(const QWidget& editor)
{
    return ToUtf8(Find<QComboBox>(editor, "cboLocation").currentText());
}

inline bool IsChecked(const QWidget& editor, const char* button)
{
    return Find<QAbstractButton>(editor, button).isChecked();
}

inline bool IsSaveEnabled(const QWidget& editor)
{
    return Find<QWidget>(editor, "cmdOK").isEnabled();
}

inline bool IsRefused(const QWidget& editor, const char* box)
{
    const QPalette colours = Find<QWidget>(editor, box).palette();
    return colours.color(QPalette::Base) == QColor(255, 224, 192);
}

/// Returns the name of the focused control.
inline std::string Focused(const QWidget& editor)
{
    const QWidget* focused = editor.focusWidget();
    return focused == nullptr ? std::string() : ToUtf8(focused->objectName());
}

/// Returns the index of the chosen button of a group: -1 for none, -2 for more than one.
inline int Chosen(const QWidget& editor, const char* group)
{
    int chosen = -1;
    for (int index = 0;; ++index) {
        const auto* button = editor.findChild<QAbstractButton*>(QLatin1String(group) + QLatin1Char('_') +
                                                                QString::number(index));
        if (button == nullptr) {
            return chosen;
        }
        if (button->isChecked()) {
            chosen = chosen == -1 ? index : -2;
        }
    }
}

/// Leaves the first box without a change, which disables "Save".
inline void LeaveUnchanged(QDialog& editor)
{
    Press(editor, Qt::Key_Tab);
    QVERIFY(!IsSaveEnabled(editor));
}

inline const Question saveQuestion{.text = QStringLiteral("You have changed data in this screen.\r\n"
                                                          "Do you want to save the changes?"),
                                   .title = QStringLiteral("Save Changes"),
                                   .icon = Icon::Question,
                                   .buttons = Buttons::YesNo,
                                   .byDefault = Button::Yes};

inline const Question deleteQuestion{
    .text = QStringLiteral("Are you sure you want to delete this record from the log?"),
    .title = QStringLiteral("Delete Record?"),
    .icon = Icon::Question,
    .buttons = Buttons::YesNoCancel,
    .byDefault = Button::Cancel};

inline const QString dataMissingText =
    QStringLiteral("Required information for the location is missing:\r\n"
                   "to calculate sun/moon times, you need to fill in the\r\n"
                   "latitude, longitude and GMT difference");
inline const QString dataMissingTitle = QStringLiteral("Location Data Missing");

} // namespace Tarno
