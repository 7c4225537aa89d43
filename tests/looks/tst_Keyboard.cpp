// Every window without a mouse.

#include "EveryWindow.h"
#include "KeyboardStops.h"
#include "support/TestClass.h"
#include "ui/common/TextTableModel.h"
#include "ui/main/MainTest.h"

#include <QAbstractItemView>
#include <QContextMenuEvent>

#include <algorithm>

class tst_Keyboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void keys_areUnique_data() { AddEveryWindow(); }

    void keys_areUnique()
    {
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
            QStringList keys = Sorted(Shortcuts(window));
            QStringList unique = keys;
            unique.removeDuplicates();
            QCOMPARE(Listed(keys), Listed(unique));
        });
    }

    void tab_reachesEveryControlOnce_data() { AddEveryWindow(TabGoesRound); }

    void tab_reachesEveryControlOnce()
    {
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
            StopsBy(window, Qt::Key_Tab); // a box that is left decides whether there is something to save
            const QStringList expected = ExpectedStops(window);
            QVERIFY(!expected.isEmpty());
            QCOMPARE(Listed(Sorted(StopsBy(window, Qt::Key_Tab))), Listed(expected));
        });
    }

    void shiftTab_goesTheSameWayBack_data() { AddEveryWindow(TabGoesRound); }

    void shiftTab_goesTheSameWayBack()
    {
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
            StopsBy(window, Qt::Key_Tab);
            QStringList forth = StopsBy(window, Qt::Key_Tab);
            const QStringList back = StopsBy(window, Qt::Key_Backtab);
            std::reverse(forth.begin() + 1, forth.end());
            QCOMPARE(Listed(back), Listed(forth));
        });
    }

    void tools_haveKeysOrStandInTheMenu_data() { AddEveryWindow(); }

    void tools_haveKeysOrStandInTheMenu()
    {
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
            const auto* menu = window.findChild<QMenu*>(QStringLiteral("popPopup"));
            QStringList unreachable;
            for (const QToolButton* tool : ControlsOfKind<QToolButton>(window)) {
                const QAction* action = tool->defaultAction();
                QVERIFY(action != nullptr);
                if (action->shortcut().isEmpty() && (menu == nullptr || !HasItem(*menu, action->text()))) {
                    unreachable << NameOf(*tool);
                }
            }
            QCOMPARE(Listed(unreachable), QString());
        });
    }

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
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
            for (QAbstractItemView* list : ControlsOfKind<QAbstractItemView>(window)) {
                if (!list->isEnabled() || list->model()->rowCount() == 0) {
                    continue;
                }
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
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
            for (QComboBox* box : ControlsOfKind<QComboBox>(window)) {
                if (!box->isEnabled() || box->isEditable() || box->count() == 0) {
                    continue;
                }
                const QString typed = TypeLastRow(*box, *box->model(), box->modelColumn());
                QVERIFY(!typed.isEmpty());
                QVERIFY2(box->currentText().startsWith(typed), qPrintable(typed));
            }
        });
    }
};

TEST_CLASS(tst_Keyboard)
#include "tst_Keyboard.moc"
