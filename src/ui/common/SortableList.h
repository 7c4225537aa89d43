#pragma once

#include "ui/common/TextTableModel.h"

#include <QTreeView>

#include <functional>
#include <optional>
#include <vector>

namespace Tarno
{

/// A list of records in columns. A click on a heading sorts by the text of that column; a second click
/// reverses the order. Until the first click, rows are in the given order. New rows keep the sort order and
/// selection.
class SortableList : public QTreeView
{
    Q_OBJECT

public:
    explicit SortableList(QWidget* parent = nullptr);

    /// Call once, before SetRows.
    void SetHeadings(const QStringList& headings);
    /// Fits each column to its heading and a sample text. The column `stretched` takes the remaining space.
    /// The minimum width of the list is the sum of the columns.
    void FitColumns(const QStringList& samples, int stretched);

    /// Returns the widths of all columns, 0 for the stretched one, or an empty list if the user has not
    /// changed any of them.
    QList<int> ChangedColumnWidths() const;
    /// Sets the widths of all columns but the stretched one. Does nothing if `widths` do not belong to these
    /// columns or do not fit on the screen.
    void SetColumnWidths(const QList<int>& widths);

    /// Replaces the rows and keeps the selected key. If that key is gone, selects the row that is now at its
    /// place, or the last row. Without a selection, selects the first row. `states` is as in SetStates.
    void SetRows(std::vector<TextTableModel::Row> rows, std::vector<TextTableModel::RowState> states = {});
    void SetLazyRows(TextTableModel::LazyRows rows, std::vector<TextTableModel::RowState> states = {});

    /// Hides and marks rows, see TextTableModel. If the selected row is hidden, selects the first row until
    /// the hidden one is shown again, unless the user selects another one or goes to the list.
    void SetStates(std::vector<TextTableModel::RowState> states);
    /// Sets the remark on marked rows.
    void SetRemark(const QString& remark);

    /// Sets the text shown in the middle of an empty list. It is also the accessible description.
    void SetHint(const QString& hint);

    /// Selects the next row whose text in the sorted column starts with `typed`. Searches the first column if
    /// the list is not sorted.
    void keyboardSearch(const QString& typed) override;

    /// Returns the number of rows that are not hidden.
    int RowCount() const;
    /// Returns the key of the selected row. If there are rows, one of them is selected.
    std::optional<QString> SelectedKey() const;
    /// Selects the row with that key and scrolls to it. Returns false and keeps the selection if no row has
    /// the key.
    bool SelectKey(const QString& key);

    /// Checks or clears the boxes of all rows, see TextTableModel::Row.
    void CheckAll(bool isChecked) { m_model->CheckAll(isChecked); }

    std::vector<QString> CheckedKeys() const { return m_model->CheckedKeys(); }

    /// Enables the list, or disables and greys it while another window works on the same records.
    void SetUsable(bool usable);

Q_SIGNALS:
    /// Another row was selected. Not emitted when the list becomes empty.
    void SelectionChanged();
    /// Boxes of rows were checked or cleared.
    void ChecksChanged();
    /// The user double-clicked the selected row or pressed Enter.
    void OpenRequested();
    /// The user pressed a mouse button in the list. The row at that position, if any, is already selected.
    /// The menu key counts as the right button on the selected row.
    void Pressed(Qt::MouseButton button, const QPoint& globalPosition);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void focusInEvent(QFocusEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    /// Like QTreeView, but Ctrl+click and Ctrl+Space keep the selected row selected.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

private:
    /// Calls `change`, which replaces the rows, and keeps the selected key as described for SetRows.
    void ReplaceRows(const std::function<void()>& change);
    void SortBy(int column);
    void SetCHIcons();
    void DescribeHint();
    QList<int> ColumnWidths() const;

    TextTableModel* m_model = nullptr;
    QList<int> m_fittedWidths;
    QString m_hint;
    std::optional<QString> m_hiddenSelection; ///< key of the selected row that SetStates has hidden
};

} // namespace Tarno
