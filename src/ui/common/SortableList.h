#pragma once

#include "ui/common/TextTableModel.h"

#include <QTreeView>

#include <optional>
#include <vector>

namespace Tarno
{

/// A list of records in columns. A click on a heading sorts by that column's text, a second one reverses
/// the order; before the first the rows stand as given. New rows keep the order chosen and the selection.
class SortableList : public QTreeView
{
    Q_OBJECT

public:
    explicit SortableList(QWidget* parent = nullptr);

    /// To be called once, before rows are set.
    void SetHeadings(const QStringList& headings);
    /// Fits each column to its heading and a sample text; the column `stretched` takes what is left. The list
    /// is at least so wide that all of them fit.
    void FitColumns(const QStringList& samples, int stretched);

    /// Shows these rows instead. The row selected before, known by its key, is selected again, otherwise
    /// the first one.
    void SetRows(std::vector<TextTableModel::Row> rows);

    /// What an empty list says, in the middle; assistive tools read it as the list's description.
    void SetHint(const QString& hint);

    /// Goes to the next row whose text begins so, in the column that the list is sorted by, at first in the
    /// first.
    void keyboardSearch(const QString& typed) override;

    int RowCount() const;
    /// The key of the selected row; nothing when none is selected.
    std::optional<QString> SelectedKey() const;

    /// Enabled, or greyed while another window works on the same records.
    void SetUsable(bool usable);

Q_SIGNALS:
    /// The user asks to open the selected row: double click, Enter.
    void OpenRequested();
    /// The user pressed a mouse button in the list; the row under it, if any, is selected already. The menu
    /// key counts as the right button on the selected row.
    void Pressed(Qt::MouseButton button, const QPoint& globalPosition);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void SortBy(int column);
    void SetCHIcons();
    void DescribeHint();
    void SelectKey(const std::optional<QString>& key);

    TextTableModel* m_model = nullptr;
    QString m_hint;
};

} // namespace Tarno
