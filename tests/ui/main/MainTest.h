#pragma once

#include "qt/Strings.h"
#include "support/TestProgram.h"
#include "support/Windows.h"
#include "ui/common/SortableList.h"
#include "ui/main/fTarno.h"

#include <QAction>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QToolBar>
#include <QtTest>

namespace Tarno
{

// Helpers to operate the main window as its user does.

/// The main window on the screen.
class ShownLog : public fTarno
{
public:
    explicit ShownLog(const TestProgram& program) : fTarno(program.program)
    {
        show();
        AwaitActive(*this);
    }
};

inline SortableList& List(const QWidget& window)
{
    return Find<SortableList>(window, "lvwEntry");
}

inline QAction& Command(const QWidget& window, const char* key)
{
    auto* action = window.findChild<QAction*>(QLatin1String(key));
    if (action == nullptr) {
        qFatal("no command %s", key);
    }
    return *action;
}

inline QAction& MenuItem(const QWidget& window, int index)
{
    return Command(window, ("miPopUp_" + std::to_string(index)).c_str());
}

/// Clicks the toolbar's button `key`.
inline void ClickCommand(const QWidget& window, const char* key)
{
    auto* button = Find<QToolBar>(window, "tlbTarno").widgetForAction(&Command(window, key));
    QTest::mouseClick(button, Qt::LeftButton);
}

/// Returns the cells of the displayed row `row`, separated by " | ".
inline std::string RowText(const QWidget& window, int row)
{
    const QAbstractItemModel* model = List(window).model();
    QStringList cells;
    for (int column = 0; column < model->columnCount(); ++column) {
        cells << model->index(row, column).data().toString();
    }
    return ToUtf8(cells.join(QLatin1String(" | ")));
}

/// The texts of a column from top to bottom.
inline std::vector<std::string> ColumnTexts(const QWidget& window, int column)
{
    const QAbstractItemModel* model = List(window).model();
    std::vector<std::string> texts;
    for (int row = 0; row < model->rowCount(); ++row) {
        texts.push_back(ToUtf8(model->index(row, column).data().toString()));
    }
    return texts;
}

/// The keys of the rows from top to bottom.
inline std::vector<std::string> Keys(const QWidget& window)
{
    const QAbstractItemModel* model = List(window).model();
    std::vector<std::string> keys;
    for (int row = 0; row < model->rowCount(); ++row) {
        keys.push_back(ToUtf8(model->index(row, 0).data(TextTableModel::keyRole).toString()));
    }
    return keys;
}

/// Returns the key of the selected row, or an empty text.
inline std::string Selected(const QWidget& window)
{
    return ToUtf8(List(window).SelectedKey().value_or(QString()));
}

inline QPoint PointInRow(const QWidget& window, int row)
{
    return List(window).visualRect(List(window).model()->index(row, 0)).center();
}

/// A point of the list below its last row.
inline QPoint EmptySpace(const QWidget& window)
{
    return List(window).viewport()->rect().bottomLeft() + QPoint(20, -4);
}

inline void ClickRow(const QWidget& window, int row)
{
    QTest::mouseClick(List(window).viewport(), Qt::LeftButton, {}, PointInRow(window, row));
}

inline void ClickHeading(const QWidget& window, int column)
{
    const QHeaderView* header = List(window).header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(column) + 10, header->height() / 2));
}

namespace Column
{
enum { From, To, Location, Start, End, TideStart, TideEnd, Rating, Action };
}

inline const Question exitQuestion{.text = QStringLiteral("Are you sure you want to exit Tarno?"),
                                   .title = QStringLiteral("Going Fishing Again?"),
                                   .icon = Icon::Question,
                                   .buttons = Buttons::YesNoCancel,
                                   .byDefault = Button::No};

inline const Question deleteQuestion{
    .text = QStringLiteral("Are you sure you want to delete this record from the log?"),
    .title = QStringLiteral("Delete Record?"),
    .icon = Icon::Question,
    .buttons = Buttons::YesNoCancel,
    .byDefault = Button::Cancel};

} // namespace Tarno
