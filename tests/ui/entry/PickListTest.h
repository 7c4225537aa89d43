#pragma once

#include "EntryTest.h"

#include <QListWidget>
#include <QStringList>

#include <initializer_list>

namespace Tarno
{

// Helpers to operate the pick lists of the page "Comments" as their user does.

/// A program with short pick lists and an entry whose comment boxes are empty.
class ProgramWithLists : public ProgramWithPlace
{
public:
    ProgramWithLists()
    {
        folder.Write("Species.txt", "Bream\r\n\r\nSnapper\r\nFlathead\r\n");
        folder.Write("Bait.txt", "Prawn\r\nSquid\r\n");
        folder.Write("Methods.txt", "Casting\r\nTrolling\r\n");
        entry = AddCompleteEntry({{EntryField::TargetSpecies, ""},
                                  {EntryField::BaitUsed, ""},
                                  {EntryField::Method, ""},
                                  {EntryField::FishCaught, ""}});
    }

    int entry = 0;
};

inline QListWidget& List(const QWidget& editor)
{
    return Find<QListWidget>(editor, "lstList");
}

inline bool IsOpen(const QWidget& editor)
{
    return List(editor).isVisible();
}

inline QStringList Items(const QWidget& editor)
{
    QStringList items;
    for (int row = 0; row < List(editor).count(); ++row) {
        items.append(List(editor).item(row)->text());
    }
    return items;
}

inline QStringList SelectedItems(const QWidget& editor)
{
    QStringList items;
    for (int row = 0; row < List(editor).count(); ++row) {
        if (List(editor).item(row)->isSelected()) {
            items.append(List(editor).item(row)->text());
        }
    }
    return items;
}

/// Clicks the item `text` of the open list.
inline void Pick(QWidget& editor, const char* text)
{
    QListWidget& list = List(editor);
    const QList<QListWidgetItem*> found = list.findItems(QLatin1String(text), Qt::MatchExactly);
    QVERIFY2(!found.isEmpty(), text);
    list.scrollToItem(found.first());
    QTest::mouseClick(editor.windowHandle(), Qt::LeftButton, {},
                      list.viewport()->mapTo(&editor, list.visualItemRect(found.first()).center()));
}

/// Opens the list by its label and clicks the items.
inline void OpenAndPick(QWidget& editor, const char* label, std::initializer_list<const char*> items)
{
    GoTo(editor, label);
    QVERIFY(IsOpen(editor));
    for (const char* item : items) {
        Pick(editor, item);
    }
}

} // namespace Tarno
