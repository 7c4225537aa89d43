// Use of every window without a mouse.

#include "EveryWindow.h"
#include "KeyboardStops.h"
#include "support/TestClass.h"
#include "ui/common/TextTableModel.h"
#include "ui/main/MainTest.h"

#include <QContextMenuEvent>

#include <algorithm>

using namespace Tarno;

namespace
{

struct Findings {
    QStringList repeatedShortcuts;
    QStringList unreachableTools;
    bool hasSearchableLists = false;
    bool hasSearchableChoices = false;
};

Findings Inspect(QWidget& window)
{
    return {RepeatedShortcuts(window), UnreachableTools(window), !SearchableLists(window).isEmpty(),
            !SearchableChoices(window).isEmpty()};
}

} // namespace

class tst_Keyboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void keys_areUnique_data() { AddEveryWindow(); }

    void keys_areUnique() { QCOMPARE(Joined(m_visits.Found().repeatedShortcuts), QString()); }

    void tab_reachesEveryControlOnce_data() { AddEveryWindow(TabCycles); }

    void tab_reachesEveryControlOnce()
    {
        const TabStops stops = m_tabStops.Found();
        QVERIFY(!stops.expected.isEmpty());
        QCOMPARE(Joined(Sorted(stops.byTab)), Joined(stops.expected));
    }

    void shiftTab_reversesTheTabOrder_data() { AddEveryWindow(TabCycles); }

    void shiftTab_reversesTheTabOrder()
    {
        TabStops stops = m_tabStops.Found();
        QVERIFY(!stops.byTab.isEmpty()); // empty if the window did not open
        std::reverse(stops.byTab.begin() + 1, stops.byTab.end());
        QCOMPARE(Joined(stops.byShiftTab), Joined(stops.byTab));
    }

    void tools_haveShortcutsOrMenuItems_data() { AddEveryWindow(); }

    void tools_haveShortcutsOrMenuItems() { QCOMPARE(Joined(m_visits.Found().unreachableTools), QString()); }

    void menuKey_inTheLog_opensTheMenu()
    {
        TestProgram program;
        program.UseSample();
        program.Start();
        ShownLog window(program);
        const QPoint place = PointInRow(window, 0);
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, place,
                                  List(window).viewport()->mapToGlobal(place));
        QApplication::sendEvent(window.focusWidget(), &menuKey);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu != nullptr);
        QCOMPARE(menu->objectName(), QStringLiteral("popPopup"));
        QVERIFY(window.frameGeometry().contains(menu->pos()));
        menu->close();
    }

    void escape_closesTheWindow_data()
    {
        AddEveryWindow([](const WindowState& state) { return state.escapes > 0; });
    }

    void escape_closesTheWindow()
    {
        QFETCH(QString, state);
        const int escapes = StateOf(state).escapes;
        StateOf(state).show([escapes](QWidget& window) {
            for (int escape = 0; escape < escapes; ++escape) {
                QVERIFY(window.isVisible());
                Press(window, Qt::Key_Escape);
            }
            QVERIFY(!window.isVisible());
        });
    }

    void escape_inTheLog_asks()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        program.messages.Expect(exitQuestion, Button::No);
        Press(window, Qt::Key_Escape);
        QVERIFY(window.isVisible());
    }

    void lists_findRowsByTyping_data() { AddEveryWindow(); }

    void lists_findRowsByTyping()
    {
        if (!m_visits.Found().hasSearchableLists) {
            return;
        }
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
            for (QAbstractItemView* list : SearchableLists(window)) {
                const auto* table = qobject_cast<TextTableModel*>(list->model());
                const int column = table == nullptr ? 0 : table->SortColumn().value_or(0);
                list->setCurrentIndex(list->model()->index(0, 0));
                const QString typed = TypeLastRow(*list, *list->model(), column);
                QVERIFY(!typed.isEmpty());
                QVERIFY2(list->currentIndex().siblingAtColumn(column).data().toString().startsWith(typed),
                         qPrintable(typed));
            }
        });
    }

    void choices_areFoundByTyping_data() { AddEveryWindow(); }

    void choices_areFoundByTyping()
    {
        if (!m_visits.Found().hasSearchableChoices) {
            return;
        }
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
            for (QComboBox* box : SearchableChoices(window)) {
                const QString typed = TypeLastRow(*box, *box->model(), box->modelColumn());
                QVERIFY(!typed.isEmpty());
                QVERIFY2(box->currentText().startsWith(typed), qPrintable(typed));
            }
        });
    }

private:
    SharedVisits<Findings> m_visits{Inspect};
    SharedVisits<TabStops> m_tabStops{FindTabStops};
};

TEST_CLASS(tst_Keyboard)
#include "tst_Keyboard.moc"
