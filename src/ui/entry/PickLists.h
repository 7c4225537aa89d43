#pragma once

#include "ui/common/Program.h"

#include <QObject>
#include <QStringList>

class QListWidget;
class QPlainTextEdit;
class QWidget;

namespace Tarno
{

class ClickLabel;
class LeaveGuard;

/// The lines of a pick-list file, in its order: UTF-8 with or without its mark when it is valid, the ANSI
/// code page otherwise (Windows-1252 off Windows). A line ends with CR LF or LF; empty lines stay in, so
/// that an index counts them.
QStringList PickListLines(const QByteArray& bytes);

/// A file of lines from which a box can be filled, and the controls that belong to it.
struct PickList {
    enum class Opens { Left, Right };

    const char* file;
    ClickLabel* editLabel;
    ClickLabel* dropDownLabel;
    QPlainTextEdit* box;
    Opens opens; ///< to which side of the drop-down label's frame
};

/// The lists from which the boxes of the page "Comments" can be filled: a floating list over the page, in
/// which a click or the space bar selects; the selected lines are appended to the box when it closes.
class PickLists : public QObject
{
    Q_OBJECT

public:
    /// `list` is the floating list. Its parent is the page, which owns the object.
    PickLists(QListWidget* list, const Program& program, LeaveGuard& guard);

    void Add(const PickList& pickList);

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    void Open(const PickList& pickList);
    void Fill(const PickList& pickList);
    void Place(const PickList& pickList);
    void Close();
    void lstList_LostFocus();
    void GoToLine(const QString& typed);

    QWidget* m_page;
    const Program& m_program;
    LeaveGuard& m_guard;
    QListWidget* m_list;
    QPlainTextEdit* m_box = nullptr; ///< that the list was opened for last
};

} // namespace Tarno
