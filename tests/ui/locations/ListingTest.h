#pragma once

#include "LocationTest.h"
#include "qt/Icons.h"
#include "ui/common/SortableList.h"
#include "ui/locations/fLocs.h"

#include <QHeaderView>
#include <QIcon>

#include <string>
#include <utility>
#include <vector>

namespace Tarno
{

// Helpers to operate the listing of locations as its user does.

/// Opens the listing and runs `steps`, which must close it.
template <typename Steps>
void ShowListing(TestProgram& program, Steps&& steps)
{
    WhileOpen(
        "fLocs", [&] { fLocs(program.program, nullptr).exec(); }, std::forward<Steps>(steps));
}

inline SortableList& List(const QWidget& listing)
{
    return Find<SortableList>(listing, "lvwLocs");
}

/// The text in a cell of the list.
inline std::string Cell(const QWidget& listing, int row, int column)
{
    return ToUtf8(List(listing).model()->index(row, column).data().toString());
}

inline std::vector<std::string> Column(const QWidget& listing, int column)
{
    std::vector<std::string> texts;
    for (int row = 0; row < List(listing).RowCount(); ++row) {
        texts.push_back(Cell(listing, row, column));
    }
    return texts;
}

inline std::vector<std::string> LocationNames(const QWidget& listing)
{
    return Column(listing, 0);
}

inline std::string Selected(const QWidget& listing)
{
    return ToUtf8(List(listing).SelectedKey().value_or(QString()));
}

inline void ClickHeading(QWidget& listing, int column)
{
    const QHeaderView* header = List(listing).header();
    const QPoint middle(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                        header->height() / 2);
    QTest::mouseClick(listing.windowHandle(), Qt::LeftButton, {},
                      header->viewport()->mapTo(&listing, middle));
}

inline QPoint PlaceOf(const QWidget& listing, int row)
{
    const SortableList& list = List(listing);
    return list.viewport()->mapTo(&listing, list.visualRect(list.model()->index(row, 0)).center());
}

inline void ClickRow(QWidget& listing, int row)
{
    QTest::mouseClick(listing.windowHandle(), Qt::LeftButton, {}, PlaceOf(listing, row));
}

/// Returns the columns with a sort icon in the heading, each followed by "+" for ascending or "-" for
/// descending.
inline std::string Arrows(const QWidget& listing)
{
    const auto drawn = [](const QIcon& icon) { return icon.pixmap(32).toImage(); };
    std::string arrows;
    const QAbstractItemModel* model = List(listing).model();
    for (int column = 0; column < model->columnCount(); ++column) {
        const auto icon = model->headerData(column, Qt::Horizontal, Qt::DecorationRole).value<QIcon>();
        if (!icon.isNull()) {
            const bool up = drawn(icon) == drawn(DrawnIcon(QLatin1String("sort-ascending")));
            const bool down = drawn(icon) == drawn(DrawnIcon(QLatin1String("sort-descending")));
            arrows += std::to_string(column) + (up && !down ? "+" : down && !up ? "-" : "?");
        }
    }
    return arrows;
}

inline bool IsEnabled(const QWidget& listing, const char* button)
{
    return Find<QWidget>(listing, button).isEnabled();
}

inline void CloseListing(QWidget& listing)
{
    Click(listing, "cmdOK");
}

} // namespace Tarno
