#include "SortableList.h"

#include "IconAtEndHeader.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <numeric>
#include <utility>

namespace Tarno
{

SortableList::SortableList(QWidget* parent) : QTreeView(parent)
{
    setHeader(new IconAtEndHeader(this));
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    header()->setSectionsClickable(true);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(true);
    connect(header(), &QHeaderView::sectionClicked, this, [this](int column) {
        Trap(ToUtf8(window()->objectName()), ToUtf8(objectName()) + "_ColumnClick", [&] { SortBy(column); });
    });
}

void SortableList::SetHeadings(const QStringList& headings)
{
    m_model = new TextTableModel(headings, this);
    setModel(m_model);
    connect(m_model, &TextTableModel::dataChanged, this, &SortableList::ChecksChanged);
}

void SortableList::FitColumns(const QStringList& samples, int stretched)
{
    const int margins = 4 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header()) +
                        style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, header());
    int widths = 2 * frameWidth() + verticalScrollBar()->sizeHint().width();
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const QString heading = m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        const int width = std::max(fontMetrics().horizontalAdvance(samples.value(column)),
                                   header()->fontMetrics().horizontalAdvance(heading));
        setColumnWidth(column, width + margins);
        widths += width + margins;
    }
    setMinimumWidth(widths);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(stretched, QHeaderView::Stretch);
    m_fittedWidths = ColumnWidths();
}

/// Returns the widths of all columns, 0 for the stretched one.
QList<int> SortableList::ColumnWidths() const
{
    QList<int> widths;
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const bool isStretched = header()->sectionResizeMode(column) == QHeaderView::Stretch;
        widths << (isStretched ? 0 : columnWidth(column));
    }
    return widths;
}

QList<int> SortableList::ChangedColumnWidths() const
{
    const QList<int> widths = ColumnWidths();
    return widths == m_fittedWidths ? QList<int>() : widths;
}

void SortableList::SetColumnWidths(const QList<int>& widths)
{
    const int room = screen()->availableGeometry().width();
    const bool isForColumns = std::equal(
        widths.begin(), widths.end(), m_fittedWidths.begin(), m_fittedWidths.end(),
        [&](int width, int fitted) {
            return fitted == 0 ? width == 0 : width >= header()->minimumSectionSize() && width <= room;
        });
    if (!isForColumns || std::accumulate(widths.begin(), widths.end(), 0) > room) {
        return;
    }
    for (int column = 0; column < widths.size(); ++column) {
        if (widths[column] > 0) {
            setColumnWidth(column, widths[column]);
        }
    }
}

void SortableList::SetRows(std::vector<TextTableModel::Row> rows,
                           std::vector<TextTableModel::RowState> states)
{
    ReplaceRows([&] { m_model->SetRows(std::move(rows), std::move(states)); });
}

void SortableList::SetLazyRows(TextTableModel::LazyRows rows, std::vector<TextTableModel::RowState> states)
{
    ReplaceRows([&] { m_model->SetLazyRows(std::move(rows), std::move(states)); });
}

void SortableList::ReplaceRows(const std::function<void()>& change)
{
    const std::optional<QString> selected = SelectedKey();
    const int place = currentIndex().row();
    change();
    if (!selected || !SelectKey(*selected)) {
        setCurrentIndex(m_model->index(std::min(std::max(place, 0), RowCount() - 1), 0));
    }
    DescribeHint();
}

void SortableList::SetStates(std::vector<TextTableModel::RowState> states)
{
    const std::optional<QString> selected = m_hiddenSelection ? m_hiddenSelection : SelectedKey();
    m_model->SetStates(std::move(states));
    if (!selected || !SelectKey(*selected)) {
        setCurrentIndex(m_model->index(0, 0));
        m_hiddenSelection = selected;
    }
    DescribeHint();
}

void SortableList::SetRemark(const QString& remark)
{
    m_model->SetRemark(remark);
}

void SortableList::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTreeView::currentChanged(current, previous);
    m_hiddenSelection.reset();
    if (current.isValid() && current.row() != previous.row()) {
        Q_EMIT SelectionChanged();
    }
}

void SortableList::focusInEvent(QFocusEvent* event)
{
    QTreeView::focusInEvent(event);
    m_hiddenSelection.reset();
}

void SortableList::SetHint(const QString& hint)
{
    m_hint = hint;
    DescribeHint();
    viewport()->update();
}

void SortableList::DescribeHint()
{
    setAccessibleDescription(RowCount() == 0 ? m_hint : QString());
}

/// Keeps the selected row visible, for example if a bar is opened below the list.
void SortableList::resizeEvent(QResizeEvent* event)
{
    const bool wasVisible = QRect(QPoint(), event->oldSize()).intersects(visualRect(currentIndex()));
    QTreeView::resizeEvent(event);
    if (wasVisible) {
        scrollTo(currentIndex());
    }
}

void SortableList::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    if (RowCount() == 0) {
        constexpr int margin = 24;
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(viewport()->rect().marginsRemoved({margin, margin, margin, margin}),
                         Qt::AlignCenter | Qt::TextWordWrap, m_hint);
    }
}

/// Shows the whole text of a shortened cell in a tool tip.
bool SortableList::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QModelIndex cell = indexAt(help->pos());
        if (cell.isValid() && sizeHintForIndex(cell).width() > visualRect(cell).width()) {
            QToolTip::showText(help->globalPos(), cell.data().toString(), viewport(), visualRect(cell));
            return true;
        }
    }
    return QTreeView::viewportEvent(event);
}

void SortableList::keyboardSearch(const QString& typed)
{
    // QTreeView searches the column of the current cell, which depends on the last click
    selectionModel()->setCurrentIndex(currentIndex().siblingAtColumn(m_model->SortColumn().value_or(0)),
                                      QItemSelectionModel::NoUpdate);
    QTreeView::keyboardSearch(typed);
}

int SortableList::RowCount() const
{
    return m_model->rowCount();
}

std::optional<QString> SortableList::SelectedKey() const
{
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? std::nullopt
                          : std::optional(rows.first().data(TextTableModel::keyRole).toString());
}

void SortableList::SetUsable(bool usable)
{
    setEnabled(usable);
    QPalette colours;
    if (!usable) {
        colours.setBrush(QPalette::Base, palette().brush(QPalette::Window));
        colours.setBrush(QPalette::AlternateBase, palette().brush(QPalette::Window));
        // the selected row is as grey as the others
        colours.setBrush(QPalette::Highlight, palette().brush(QPalette::Window));
        colours.setBrush(QPalette::HighlightedText, palette().brush(QPalette::Disabled, QPalette::Text));
    }
    setPalette(colours);
}

void SortableList::SortBy(int column)
{
    const bool again = m_model->SortColumn() == column;
    m_model->sort(column, again && m_model->SortOrder() == Qt::AscendingOrder ? Qt::DescendingOrder
                                                                              : Qt::AscendingOrder);
    SetCHIcons();
    if (currentIndex().isValid()) {
        scrollTo(currentIndex());
    }
}

/// Shows the sort icon in the heading of the sorted column only. Errors are reported with the window as the
/// module.
void SortableList::SetCHIcons()
{
    Trap(ToUtf8(window()->objectName()), "SetCHIcons", [this] { m_model->ShowSortIcon(); });
}

bool SortableList::SelectKey(const QString& key)
{
    const QModelIndex found = m_model->Find(key);
    if (found.isValid()) {
        setCurrentIndex(found);
    }
    return found.isValid();
}

QItemSelectionModel::SelectionFlags SortableList::selectionCommand(const QModelIndex& index,
                                                                   const QEvent* event) const
{
    const QItemSelectionModel::SelectionFlags command = QTreeView::selectionCommand(index, event);
    return command.testFlag(QItemSelectionModel::Deselect) ? QItemSelectionModel::NoUpdate : command;
}

void SortableList::mousePressEvent(QMouseEvent* event)
{
    // a click on empty space keeps the selection
    if (indexAt(event->position().toPoint()).isValid()) {
        QTreeView::mousePressEvent(event);
    }
    Q_EMIT Pressed(event->button(), event->globalPosition().toPoint());
}

void SortableList::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && SelectedKey()) {
        Q_EMIT OpenRequested();
    }
}

void SortableList::keyPressEvent(QKeyEvent* event)
{
    // QTreeView changes a box only if it is in the current cell, which depends on the last click
    const QModelIndex box = currentIndex().siblingAtColumn(0);
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && SelectedKey()) {
        Q_EMIT OpenRequested();
    } else if (event->key() == Qt::Key_Space && box.flags().testFlag(Qt::ItemIsUserCheckable)) {
        const bool isChecked = box.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        m_model->setData(box, isChecked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void SortableList::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() != QContextMenuEvent::Keyboard) {
        QTreeView::contextMenuEvent(event);
        return;
    }
    const QRect row = visualRect(currentIndex()) & viewport()->rect();
    Q_EMIT Pressed(Qt::RightButton, viewport()->mapToGlobal(row.center()));
}

} // namespace Tarno
