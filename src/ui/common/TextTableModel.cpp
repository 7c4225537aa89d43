#include "TextTableModel.h"

#include "Icons.h"

#include <utility>

TextTableModel::TextTableModel(QStringList headings, QObject* parent)
    : QAbstractTableModel(parent), m_headings(std::move(headings))
{
}

void TextTableModel::SetRows(std::vector<Row> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    m_sortKeys.assign(static_cast<std::size_t>(m_headings.size()), {});
    endResetModel();
}

int TextTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int TextTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_headings.size());
}

QVariant TextTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return row.cells.value(index.column());
    case KeyRole:
        return row.key;
    default:
        return {};
    }
}

QVariant TextTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return m_headings.value(section);
    }
    if (role == Qt::TextAlignmentRole) {
        return {Qt::AlignLeft | Qt::AlignVCenter};
    }
    if (role == Qt::DecorationRole && m_sortedColumn == section) {
        return DrawnIcon(m_order == Qt::AscendingOrder ? QLatin1String("sort-ascending")
                                                       : QLatin1String("sort-descending"));
    }
    return {};
}

void TextTableModel::SetSortIcon(std::optional<int> column, Qt::SortOrder order)
{
    m_sortedColumn = column;
    m_order = order;
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

bool TextTableModel::ComesBefore(const QModelIndex& left, const QModelIndex& right) const
{
    return SortKey(left) < SortKey(right);
}

const QCollatorSortKey& TextTableModel::SortKey(const QModelIndex& index) const
{
    auto& keys = m_sortKeys[static_cast<std::size_t>(index.column())];
    if (keys.empty()) {
        keys.reserve(m_rows.size());
        for (const Row& row : m_rows) {
            keys.push_back(m_collator.sortKey(row.cells.value(index.column()).toCaseFolded()));
        }
    }
    return keys[static_cast<std::size_t>(index.row())];
}
