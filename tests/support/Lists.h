#pragma once

#include "qt/Strings.h"
#include "support/Windows.h"
#include "ui/common/SortableList.h"

#include <QLabel>

#include <string>
#include <vector>

namespace Tarno
{

// Functions that read the lists and labels of a window, and that double-click a row.

using Texts = std::vector<std::string>;

inline std::string LabelText(const QWidget& window, const char* name)
{
    return ToUtf8(Find<QLabel>(window, name).text());
}

/// Returns the rows of a list, with their cells separated by " | ".
inline Texts Rows(const QWidget& window, const char* list)
{
    const QAbstractItemModel* model = Find<SortableList>(window, list).model();
    Texts rows;
    for (int row = 0; row < model->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model->columnCount(); ++column) {
            cells << model->index(row, column).data().toString();
        }
        rows.push_back(ToUtf8(cells.join(QLatin1String(" | "))));
    }
    return rows;
}

inline void DoubleClickRow(const QWidget& window, const char* list, int row)
{
    const auto& rows = Find<SortableList>(window, list);
    QTest::mouseDClick(rows.viewport(), Qt::LeftButton, {},
                       rows.visualRect(rows.model()->index(row, 0)).center());
}

} // namespace Tarno
