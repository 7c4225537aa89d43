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

/// Splits the contents of a pick-list file into lines. The file is UTF-8 with or without a byte order mark.
/// If it is not valid UTF-8, it is decoded with the ANSI code page on Windows and as Windows-1252 elsewhere.
/// Lines end with CR LF or LF. Empty lines are included, because indexes count them.
QStringList PickListLines(const QByteArray& bytes);

/// Returns the lines of the pick-list file, or an empty list if it does not exist. Throws the errors of
/// ReadWholeFile.
QStringList ReadPickList(const ProgramFolder& folder, const char* file);

/// A file with lines for a box, and the controls that belong to it.
struct PickList {
    enum class Side { Left, Right };

    const char* file;
    ClickLabel* editLabel;
    ClickLabel* dropDownLabel;
    QPlainTextEdit* box;
    Side side; ///< the side of the drop-down label's frame
};

/// The pick lists of the page "Comments", shown in one floating list over the page. A click or the space bar
/// selects a line. When the list closes, the selected lines are appended to the box.
class PickLists : public QObject
{
    Q_OBJECT

public:
    /// `list` is the floating list. Its parent, the page, owns the object.
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
    PickList m_opened{}; ///< the pick list that was opened last
};

} // namespace Tarno
