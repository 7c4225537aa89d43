#pragma once

#include "ui/common/Program.h"

#include <QObject>
#include <QStringList>

class LeaveGuard;
class QListWidget;
class QPlainTextEdit;
class QWidget;

/// The lines of a pick-list file, in its order: UTF-8 with or without its mark when it is valid, the ANSI
/// code page otherwise (Windows-1252 off Windows). A line ends with CR LF or LF; empty lines stay in, so
/// that an index counts them.
QStringList PickListLines(const QByteArray& bytes);

/// The lists from which the boxes of the page "Comments" can be filled: a floating list over the page, in
/// which a click or the space bar selects; the selected lines are appended to the box when it closes.
class PickLists : public QObject
{
    Q_OBJECT

public:
    /// Finds the labels, the boxes and the list below `page`, which owns the object.
    PickLists(QWidget* page, const Program& program, LeaveGuard& guard);

    /// Appends what is selected to the box that the list was opened for, and hides the list. Does nothing
    /// when no list is open.
    void Close();

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    struct Binding;

    void Bind(const Binding& binding);
    void Open(const Binding& binding);
    void Fill(const Binding& binding);
    void Place(const Binding& binding);
    void lstList_LostFocus();
    QPlainTextEdit* OpenBox() const;
    void GoToLine(const QString& typed);

    QWidget* m_page;
    const Program& m_program;
    LeaveGuard& m_guard;
    QListWidget* m_list;
    const Binding* m_open = nullptr; ///< whose list is or was shown last
};
