#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include <cstddef>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace Tarno
{

/// A model of rows of plain texts, each identified by a key. Sorting by a column is stable. Texts are
/// compared locale-aware and case-insensitively; a column for which the rows have numbers is sorted by them.
/// Rows can be hidden, for example because a search does not find them.
class TextTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct Row {
        QString key;
        QStringList cells;
        std::vector<double> order = {}; ///< numbers by which the first columns are sorted, in all rows or in
                                        ///< none; not-a-number for a column that is sorted by its texts
        std::optional<bool> isChecked = {}; ///< the state of the check box in the first column, if it has one
    };

    /// Marked rows are in italics and have a remark as their tool tip and accessible description.
    enum class RowState : char { Hidden, Shown, Marked };

    /// Rows whose keys and texts are made when they are needed. The functions get the index of a row and must
    /// not show or change anything.
    struct LazyRows {
        std::size_t count = 0;
        std::function<QString(std::size_t row)> key;
        std::function<QString(std::size_t row, int column)> text;
    };

    static constexpr int keyRole = Qt::UserRole;

    TextTableModel(QStringList headings, QObject* parent);

    /// Replaces the rows and keeps the sort order. `states` is as in SetStates.
    void SetRows(std::vector<Row> rows, std::vector<RowState> states = {});
    void SetLazyRows(LazyRows rows, std::vector<RowState> states = {});
    /// Sets the state of each row, in the order of SetRows. If `states` is empty, all rows are shown.
    void SetStates(std::vector<RowState> states);

    void SetRemark(const QString& remark) { m_remark = remark; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    /// Checks or clears all check boxes.
    void CheckAll(bool isChecked);
    /// Returns the keys of the rows whose boxes are checked, in the order of SetRows.
    std::vector<QString> CheckedKeys() const;

    /// Returns the index of the row with the key, or an invalid one if it is not shown.
    QModelIndex Find(const QString& key) const;

    /// Returns the sort column, or nothing if the rows were never sorted.
    std::optional<int> SortColumn() const { return m_sortColumn; }

    Qt::SortOrder SortOrder() const { return m_sortOrder; }

    /// Shows the sort icon in the heading of the sorted column only.
    void ShowSortIcon();

private:
    std::size_t GivenRow(const QModelIndex& index) const
    {
        return m_order[static_cast<std::size_t>(index.row())];
    }

    bool HasBox(const QModelIndex& index) const
    {
        return index.isValid() && index.column() == 0 && !m_rows.empty() &&
               m_rows[GivenRow(index)].isChecked.has_value();
    }

    bool IsMarked(int row) const;
    void Show(std::vector<Row> rows, LazyRows lazyRows, std::vector<RowState> states);

    std::size_t Count() const { return m_rows.size() + m_lazyRows.count; }

    QString KeyOf(std::size_t givenRow) const;
    QString TextOf(std::size_t givenRow, int column) const;

    void Arrange();
    const std::vector<int>& Ranks(int column);
    std::vector<int> RanksOfTexts(int column) const;

    QStringList m_headings;
    std::vector<Row> m_rows; ///< in the given order; empty if they are lazy
    LazyRows m_lazyRows;
    std::vector<RowState> m_states;   ///< of the given rows; empty if all are shown
    std::vector<std::size_t> m_order; ///< for each displayed row, its index among the given ones
    QString m_remark;
    std::optional<int> m_sortColumn;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    std::optional<int> m_iconColumn;
    std::vector<std::vector<int>> m_ranks; ///< by column: the rank of each given row, equal for equal texts
};

} // namespace Tarno
