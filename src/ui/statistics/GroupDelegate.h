#pragma once

#include "analysis/TripGroups.h"

#include <QStyledItemDelegate>

#include <vector>

namespace Tarno
{

/// Paints groups of trips: the actions as a stacked bar with figures, the share of Good and Hot! with its
/// interval on a scale from 0 to 100 percent. Groups of few trips are grey.
class GroupDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// `groups` are those of GroupRows; they must outlive the object.
    GroupDelegate(const std::vector<TripGroup>& groups, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Shows the actions in words as a tool tip.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    const std::vector<TripGroup>& m_groups;
};

} // namespace Tarno
