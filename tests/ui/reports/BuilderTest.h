#pragma once

#include "qt/Strings.h"
#include "support/TestProgram.h"
#include "support/Windows.h"
#include "ui/reports/fRptLog.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QtTest/QTest>
#include <pugixml.hpp>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace Tarno
{

// Helpers for tests that use the report builder like a user, on data files that the test writes.

/// The values of a record in file order.
using Line = std::vector<std::string>;

/// Six fields; the first, third and fifth are on the default report.
inline const std::vector<Line> sixFields{{"1", "StartDate", "Date", "From", "20", "8", "0", "1"},
                                         {"2", "EndDate", "Until", "To", "20", "8", "0", "0"},
                                         {"3", "StartTime", "Time", "Start", "20", "8", "0", "1"},
                                         {"4", "EndTime", "End", "Stop", "20", "8", "0", "0"},
                                         {"5", "LocNo", "Place", "Where", "40", "8", "1", "1"},
                                         {"6", "TideStart", "Tide", "Water", "20", "8", "0", "0"}};

/// Writes a data file. `names` contains the element names of a record and of its values.
inline void WriteRecords(const TestProgram& program, const char* file, const std::vector<const char*>& names,
                         const std::vector<Line>& records)
{
    pugi::xml_document document;
    pugi::xml_node data = document.append_child("data");
    for (const Line& record : records) {
        pugi::xml_node node = data.append_child(names[0]);
        for (std::size_t value = 0; value < record.size(); ++value) {
            node.append_child(names[value + 1]).text().set(record[value].c_str());
        }
    }
    std::ostringstream bytes;
    document.save(bytes, "\t", pugi::format_default | pugi::format_no_declaration);
    program.folder.Write(file, bytes.str());
}

inline void WriteFields(const TestProgram& program, const std::vector<Line>& fields)
{
    WriteRecords(program, "field.xml",
                 {"field", "FieldNo", "FieldName", "Desc", "Label", "Width", "Font", "Grow", "DefaultFlag"},
                 fields);
}

/// Writes saved reports: number, name, data names and field numbers of each.
inline void WriteReports(const TestProgram& program, std::vector<Line> reports)
{
    for (Line& report : reports) {
        report.resize(5);
    }
    WriteRecords(program, "Rpt.xml", {"report", "RptNo", "RptName", "Fields", "FieldKeys", "Options"},
                 reports);
}

/// A started program whose log has six fields and the given saved reports.
class ProgramWithSixFields : public TestProgram
{
public:
    explicit ProgramWithSixFields(const std::vector<Line>& reports = {})
    {
        WriteFields(*this, sixFields);
        if (!reports.empty()) {
            WriteReports(*this, reports);
        }
        Start();
    }
};

/// Shows the builder and runs `steps` on it.
template <typename Steps>
void ShowBuilder(TestProgram& program, Steps&& steps)
{
    fRptLog builder(program.program, nullptr);
    builder.show();
    AwaitActive(builder);
    steps(builder);
}

inline QListWidget& List(const QWidget& window, const char* name)
{
    return Find<QListWidget>(window, name);
}

/// Returns the texts of a list, separated by "|".
inline std::string Items(const QWidget& window, const char* list)
{
    QStringList texts;
    for (int row = 0; row < List(window, list).count(); ++row) {
        texts << List(window, list).item(row)->text();
    }
    return ToUtf8(texts.join(QLatin1Char('|')));
}

/// Returns the numbers of the fields in a list, separated by ",".
inline std::string Numbers(const QWidget& window, const char* list)
{
    QStringList numbers;
    for (int row = 0; row < List(window, list).count(); ++row) {
        numbers << List(window, list).item(row)->data(Qt::UserRole).toString();
    }
    return ToUtf8(numbers.join(QLatin1Char(',')));
}

/// Returns the selected row of a list, or -1.
inline int SelectedRow(const QWidget& window, const char* list)
{
    const QList<QListWidgetItem*> selected = List(window, list).selectedItems();
    return selected.isEmpty() ? -1 : List(window, list).row(selected.front());
}

/// Scrolls to a row of a list and returns the centre of its visible part in window coordinates.
inline QPoint PlaceOf(const QWidget& window, const char* name, int row)
{
    QListWidget& list = List(window, name);
    list.scrollToItem(list.item(row));
    const QRect inSight = list.visualItemRect(list.item(row)) & list.viewport()->rect();
    return list.viewport()->mapTo(&window, inSight.center());
}

inline void ClickItem(QWidget& window, const char* list, int row)
{
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, PlaceOf(window, list, row));
}

inline void DoubleClickItem(QWidget& window, const char* list, int row)
{
    ClickItem(window, list, row);
    QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, PlaceOf(window, list, row));
}

/// Opens the list of a combo box and clicks an item in it.
inline void Choose(const QWidget& window, const char* name, int row)
{
    auto& box = Find<QComboBox>(window, name);
    if (!box.isEnabled()) {
        QTest::qFail("the combo box is disabled", __FILE__, __LINE__);
        return;
    }
    box.showPopup();
    QAbstractItemView* list = box.view();
    if (!QTest::qWaitForWindowExposed(list->window(), awaitTimeout)) {
        QTest::qFail("the list does not open", __FILE__, __LINE__);
    }
    const QModelIndex index = box.model()->index(row, box.modelColumn());
    list->scrollTo(index);
    // an immediate click would count as part of the press that opened the list
    Await(
        [&] {
            QTest::mouseMove(list->viewport(), list->visualRect(index).center());
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(index).center());
            return !list->isVisible();
        },
        "the list stays open");
}

/// Returns the selected item of a combo box, or "(none)".
inline std::string Chosen(const QWidget& window, const char* name)
{
    const auto& box = Find<QComboBox>(window, name);
    return box.currentIndex() < 0 ? "(none)" : ToUtf8(box.currentText());
}

/// Returns the items of a combo box, separated by "|".
inline std::string Choices(const QWidget& window, const char* name)
{
    const auto& box = Find<QComboBox>(window, name);
    QStringList texts;
    for (int row = 0; row < box.count(); ++row) {
        texts << box.itemText(row);
    }
    return ToUtf8(texts.join(QLatin1Char('|')));
}

/// Returns `caption` as it is drawn: without the mnemonic mark, and with "&" instead of "&&".
inline std::string Drawn(const QString& caption)
{
    QString drawn;
    for (int at = 0; at < caption.size(); ++at) {
        at += caption[at] == QLatin1Char('&') ? 1 : 0;
        drawn += caption.mid(at, 1);
    }
    return ToUtf8(drawn);
}

/// Returns the caption of a button, check box or label without the mnemonic mark.
inline std::string Caption(const QWidget& window, const char* name)
{
    const auto* button = window.findChild<QAbstractButton*>(QLatin1String(name));
    return Drawn(button != nullptr ? button->text() : Find<QLabel>(window, name).text());
}

/// Returns the texts of both lists of the builder, with " -> " between the lists.
inline std::string Lists(const QWidget& builder)
{
    return Items(builder, "lstAvail") + " -> " + Items(builder, "lstRpt");
}

inline std::string SortCaption(const QWidget& builder)
{
    return Caption(builder, "chkDesc");
}

inline bool IsEnabled(const QWidget& window, const char* name)
{
    return Find<QWidget>(window, name).isEnabled();
}

inline bool IsTicked(const QWidget& window, const char* name)
{
    return Find<QAbstractButton>(window, name).isChecked();
}

/// Returns the names of the disabled controls, of those that the builder enables and disables.
inline std::string Disabled(const QWidget& builder)
{
    QStringList disabled;
    for (const char* name : {"cmdPreview", "chkDesc", "cmdSave", "cmdDelete", "cmdCustom", "cmdClose",
                             "chkSaved", "cboSaved", "lstAvail", "lstRpt"}) {
        if (!IsEnabled(builder, name)) {
            disabled << QLatin1String(name);
        }
    }
    return ToUtf8(disabled.join(QLatin1Char(' ')));
}

inline std::string BoxText(const QWidget& window, const char* box)
{
    return ToUtf8(Find<QLineEdit>(window, box).text());
}

/// Replaces the text of a box as if pasted.
inline void Retype(QWidget& window, const char* name, const std::string& text)
{
    auto& box = Find<QLineEdit>(window, name);
    Click(box);
    box.selectAll();
    box.insert(FromUtf8(text));
}

/// Presses a shortcut and waits until the button is no longer down.
inline void PressShortcut(const QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers,
                          const char* button)
{
    Press(window, key, modifiers);
    Await([&] { return !Find<QAbstractButton>(window, button).isDown(); }, "the button stays down");
}

/// Returns the name of the control that has the focus.
inline std::string Focused(const QWidget& window)
{
    const QWidget* focus = window.focusWidget();
    return focus == nullptr ? "(none)" : ToUtf8(focus->objectName());
}

/// Returns the controls in tab order, starting with the one that has the focus.
inline std::string TabOrder(const QWidget& window)
{
    const std::string first = Focused(window);
    std::string order = first;
    for (int step = 0; step < 50; ++step) {
        Press(window, Qt::Key_Tab);
        if (Focused(window) == first) {
            return order;
        }
        order += " " + Focused(window);
    }
    return order + " ...";
}

/// Returns the sorted mnemonic letters of the controls of a window.
inline std::string Mnemonics(const QWidget& window)
{
    std::string letters;
    const auto add = [&](const QString& caption) {
        const QKeySequence key = QKeySequence::mnemonic(caption);
        if (!key.isEmpty()) {
            letters += ToUtf8(key.toString().right(1));
        }
    };
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        add(button->text());
    }
    for (const auto* label : window.findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) {
            add(label->text());
        }
    }
    std::sort(letters.begin(), letters.end());
    return letters;
}

} // namespace Tarno
