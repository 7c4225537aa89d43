#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include <cstddef>
#include <optional>
#include <vector>

namespace Tarno
{

/// Rows of texts, each known by a key. It holds texts only, so thousands of rows are cheap, and puts them
/// into the order of a column itself: as the user's language orders texts, case-blind, equal ones in the
/// order in which they were given.
class TextTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct Row {
        QString key;
        QStringList cells;
    };

    /// The row's key.
    static constexpr int keyRole = Qt::UserRole;

    TextTableModel(QStringList headings, QObject* parent);

    /// Takes these rows instead, in the order chosen last.
    void SetRows(std::vector<Row> rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    /// The column that the rows are sorted by; nothing before the first time.
    std::optional<int> SortColumn() const { return m_sortColumn; }

    Qt::SortOrder SortOrder() const { return m_sortOrder; }

    /// Shows the icon of the current direction in the heading of the sorted column and in no other.
    void ShowSortIcon();

private:
    const Row& RowAt(int row) const { return m_rows[m_order[static_cast<std::size_t>(row)]]; }

    void Arrange();
    const std::vector<int>& Ranks(int column);

    QStringList m_headings;
    std::vector<Row> m_rows;          ///< as they were given
    std::vector<std::size_t> m_order; ///< for each row shown, where it stands in m_rows
    std::optional<int> m_sortColumn;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    std::optional<int> m_iconColumn;
    std::vector<std::vector<int>>
        m_ranks; ///< by column: each given row's place in its order, equal for equal texts
};

} // namespace Tarno
