#include "TextTableModel.h"

#include "qt/Icons.h"

#include <QCollator>
#include <QFont>
#include <QHash>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <utility>

namespace Tarno
{

namespace
{

/// Returns the rank of each key, equal for equal keys.
template <typename Key>
std::vector<int> RanksOf(const std::vector<Key>& keys)
{
    std::vector<std::size_t> sorted(keys.size());
    std::iota(sorted.begin(), sorted.end(), 0);
    std::sort(sorted.begin(), sorted.end(),
              [&](std::size_t left, std::size_t right) { return keys[left] < keys[right]; });
    std::vector<int> ranks(keys.size());
    int rank = 0;
    for (std::size_t place = 0; place < sorted.size(); ++place) {
        const bool higher = place > 0 && keys[sorted[place - 1]] < keys[sorted[place]];
        rank += higher ? 1 : 0;
        ranks[sorted[place]] = rank;
    }
    return ranks;
}

} // namespace

TextTableModel::TextTableModel(QStringList headings, QObject* parent)
    : QAbstractTableModel(parent), m_headings(std::move(headings))
{
}

void TextTableModel::SetRows(std::vector<Row> rows, std::vector<RowState> states)
{
    Show(std::move(rows), {}, std::move(states));
}

void TextTableModel::SetLazyRows(LazyRows rows, std::vector<RowState> states)
{
    Show({}, std::move(rows), std::move(states));
}

void TextTableModel::Show(std::vector<Row> rows, LazyRows lazyRows, std::vector<RowState> states)
{
    beginResetModel();
    m_rows = std::move(rows);
    m_lazyRows = std::move(lazyRows);
    m_states = std::move(states);
    m_ranks.assign(static_cast<std::size_t>(m_headings.size()), {});
    Arrange();
    endResetModel();
}

void TextTableModel::SetStates(std::vector<RowState> states)
{
    beginResetModel();
    m_states = std::move(states);
    Arrange();
    endResetModel();
}

int TextTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_order.size());
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
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(GivenRow(index), index.column());
    case keyRole:
        return KeyOf(GivenRow(index));
    case Qt::CheckStateRole:
        return HasBox(index) ? QVariant(*m_rows[GivenRow(index)].isChecked ? Qt::Checked : Qt::Unchecked)
                             : QVariant();
    case Qt::FontRole: {
        QFont italic;
        italic.setItalic(true);
        return IsMarked(index.row()) ? QVariant(italic) : QVariant();
    }
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
        return IsMarked(index.row()) ? QVariant(m_remark) : QVariant();
    default:
        return {};
    }
}

Qt::ItemFlags TextTableModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return HasBox(index) ? flags | Qt::ItemIsUserCheckable : flags;
}

bool TextTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole || !HasBox(index)) {
        return false;
    }
    m_rows[GivenRow(index)].isChecked = value.toInt() == Qt::Checked;
    Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

void TextTableModel::CheckAll(bool isChecked)
{
    for (Row& row : m_rows) {
        row.isChecked = isChecked;
    }
    if (rowCount() > 0) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::CheckStateRole});
    }
}

std::vector<QString> TextTableModel::CheckedKeys() const
{
    std::vector<QString> keys;
    for (const Row& row : m_rows) {
        if (row.isChecked.value_or(false)) {
            keys.push_back(row.key);
        }
    }
    return keys;
}

QModelIndex TextTableModel::Find(const QString& key) const
{
    const auto found = std::find_if(m_order.begin(), m_order.end(),
                                    [&](std::size_t givenRow) { return KeyOf(givenRow) == key; });
    return found == m_order.end() ? QModelIndex() : index(static_cast<int>(found - m_order.begin()), 0);
}

QString TextTableModel::TextOf(std::size_t givenRow, int column) const
{
    return m_lazyRows.text ? m_lazyRows.text(givenRow, column) : m_rows[givenRow].cells.value(column);
}

QString TextTableModel::KeyOf(std::size_t givenRow) const
{
    return m_lazyRows.key ? m_lazyRows.key(givenRow) : m_rows[givenRow].key;
}

bool TextTableModel::IsMarked(int row) const
{
    return !m_states.empty() && m_states[m_order[static_cast<std::size_t>(row)]] == RowState::Marked;
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
    if (role == Qt::DecorationRole && m_iconColumn == section) {
        return DrawnIcon(m_sortOrder == Qt::AscendingOrder ? QLatin1String("sort-ascending")
                                                           : QLatin1String("sort-descending"));
    }
    return {};
}

void TextTableModel::sort(int column, Qt::SortOrder order)
{
    const QList<QPersistentModelIndex> all;
    Q_EMIT layoutAboutToBeChanged(all, VerticalSortHint);
    const std::vector<std::size_t> before = m_order;
    m_sortColumn = column;
    m_sortOrder = order;
    Arrange();
    std::vector<int> shown(Count()); // where each given row is now
    for (std::size_t row = 0; row < m_order.size(); ++row) {
        shown[m_order[row]] = static_cast<int>(row);
    }
    const QModelIndexList old = persistentIndexList();
    QModelIndexList moved;
    for (const QModelIndex& index : old) {
        moved << createIndex(shown[before[static_cast<std::size_t>(index.row())]], index.column());
    }
    changePersistentIndexList(old, moved);
    Q_EMIT layoutChanged(all, VerticalSortHint);
}

void TextTableModel::ShowSortIcon()
{
    m_iconColumn = m_sortColumn;
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void TextTableModel::Arrange()
{
    m_order.resize(Count());
    std::iota(m_order.begin(), m_order.end(), 0);
    if (!m_states.empty()) {
        std::erase_if(m_order, [this](std::size_t row) { return m_states[row] == RowState::Hidden; });
    }
    if (!m_sortColumn) {
        return;
    }
    const std::vector<int>& ranks = Ranks(*m_sortColumn);
    if (m_sortOrder == Qt::AscendingOrder) {
        std::stable_sort(m_order.begin(), m_order.end(),
                         [&](std::size_t left, std::size_t right) { return ranks[left] < ranks[right]; });
    } else {
        std::stable_sort(m_order.begin(), m_order.end(),
                         [&](std::size_t left, std::size_t right) { return ranks[left] > ranks[right]; });
    }
}

/// Returns the rank of each row in the order of `column`. They are calculated once per column and cached.
const std::vector<int>& TextTableModel::Ranks(int column)
{
    std::vector<int>& ranks = m_ranks[static_cast<std::size_t>(column)];
    if (ranks.empty() && Count() > 0) {
        const auto position = static_cast<std::size_t>(column);
        const std::vector<double> order = m_rows.empty() ? std::vector<double>() : m_rows.front().order;
        if (position < order.size() && !std::isnan(order[position])) {
            std::vector<double> numbers;
            std::transform(m_rows.begin(), m_rows.end(), std::back_inserter(numbers),
                           [position](const Row& row) { return row.order.at(position); });
            ranks = RanksOf(numbers);
        } else {
            ranks = RanksOfTexts(column);
        }
    }
    return ranks;
}

std::vector<int> TextTableModel::RanksOfTexts(int column) const
{
    const QCollator collator;          // its comparison is slow, so each text gets its key once
    QHash<QString, std::size_t> known; // many rows have the same text
    std::vector<QCollatorSortKey> keys;
    std::vector<std::size_t> keyOf;
    keyOf.reserve(Count());
    for (std::size_t row = 0; row < Count(); ++row) {
        const QString text = TextOf(row, column).toCaseFolded();
        const auto found = known.constFind(text);
        if (found != known.constEnd()) {
            keyOf.push_back(*found);
        } else {
            keyOf.push_back(keys.size());
            known.insert(text, keys.size());
            keys.push_back(collator.sortKey(text));
        }
    }
    const std::vector<int> rankOf = RanksOf(keys);
    std::vector<int> ranks;
    ranks.reserve(keyOf.size());
    for (const std::size_t key : keyOf) {
        ranks.push_back(rankOf[key]);
    }
    return ranks;
}

} // namespace Tarno
