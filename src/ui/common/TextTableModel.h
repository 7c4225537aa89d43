#pragma once

#include <QAbstractTableModel>
#include <QCollator>
#include <QStringList>

#include <optional>
#include <vector>

/// Rows of texts, each known by a key. Reads like a list of records; it holds texts only, so thousands of
/// rows are cheap.
class TextTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct Row {
        QString key;
        QStringList cells;
    };

    /// The row's key.
    static constexpr int KeyRole = Qt::UserRole;

    TextTableModel(QStringList headings, QObject* parent);

    void SetRows(std::vector<Row> rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Shows the icon of `order` in the heading of `column` and in no other; nothing for no icon at all.
    void SetSortIcon(std::optional<int> column, Qt::SortOrder order);

    /// Whether the text in `left` comes before that in `right`, as the user's language orders them,
    /// case-blind.
    bool ComesBefore(const QModelIndex& left, const QModelIndex& right) const;

private:
    const QCollatorSortKey& SortKey(const QModelIndex& index) const;

    QStringList m_headings;
    std::vector<Row> m_rows;
    std::optional<int> m_sortedColumn;
    Qt::SortOrder m_order = Qt::AscendingOrder;
    QCollator m_collator;
    mutable std::vector<std::vector<QCollatorSortKey>>
        m_sortKeys; ///< by column, made when it is first sorted
};
