#include "qt/Strings.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/common/LeaveGuard.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <functional>
#include <utility>

using namespace Tarno;

namespace
{

/// A window with two guarded boxes, an unguarded box, a combo box, a check box, two buttons, pages and a
/// label.
class GuardedWindow : public QWidget
{
public:
    GuardedWindow()
    {
        auto* column = new QVBoxLayout(this);
        for (QWidget* widget : std::initializer_list<QWidget*>{&box, &lines, &other, &list, &tick, &button,
                                                               &again, &label, &pages}) {
            column->addWidget(widget);
        }
        list.addItems({QStringLiteral("one"), QStringLiteral("two")});
        pages.addTab(new QWidget, QStringLiteral("A"));
        pages.addTab(new QWidget, QStringLiteral("B"));
        button.setText(QStringLiteral("&Go"));
        connect(&button, &QPushButton::clicked, this, [this] { ++clicks; });
        again.setText(QStringLiteral("Again"));
        again.setShortcut(QKeySequence(Qt::Key_F5));
        connect(&again, &QPushButton::clicked, this, [this] { ++shortcuts; });
        for (QWidget* guardedBox : std::initializer_list<QWidget*>{&box, &lines}) {
            guard.Add(
                guardedBox,
                [this] {
                    ++checks;
                    if (whileChecked) {
                        std::exchange(whileChecked, nullptr)();
                    }
                    return allows;
                },
                QStringLiteral("Not allowed"));
        }
        show();
        AwaitActive(*this);
        box.setFocus();
    }

    void closeEvent(QCloseEvent* /*event*/) override { closed = true; }

    void ClickTab(int index)
    {
        const QTabBar* tabs = pages.tabBar();
        QTest::mouseClick(windowHandle(), Qt::LeftButton, {},
                          tabs->mapTo(this, tabs->tabRect(index).center()));
    }

    void Wheel(const QPoint& position)
    {
        QWheelEvent turn(position, mapToGlobal(position), {}, QPoint(0, -120), Qt::NoButton, {},
                         Qt::NoScrollPhase, false);
        QApplication::sendEvent(windowHandle(), &turn);
    }

    /// Returns the state that the actions change.
    std::string Outcome() const
    {
        return "focus " + std::to_string(box.hasFocus()) + ", clicks " + std::to_string(clicks) +
               ", ticked " + std::to_string(tick.isChecked()) + ", page " +
               std::to_string(pages.currentIndex()) + ", shortcuts " + std::to_string(shortcuts) +
               ", closed " + std::to_string(closed) + ", text " + ToUtf8(box.text());
    }

    QLineEdit box;
    QPlainTextEdit lines;
    QLineEdit other;
    QComboBox list;
    QCheckBox tick;
    QPushButton button;
    QPushButton again;
    QLabel label{QStringLiteral("text")};
    QTabWidget pages;
    LeaveGuard guard{this};
    bool allows = true;
    std::function<void()> whileChecked;
    int checks = 0;
    int clicks = 0;
    int shortcuts = 0;
    bool closed = false;
};

using Action = void (*)(GuardedWindow& window);

void AddActions()
{
    QTest::addColumn<Action>("action");
    const auto row = [](const char* name, Action action) { QTest::newRow(name) << action; };
    row("Tab", [](GuardedWindow& window) { Press(window, Qt::Key_Tab); });
    row("Shift+Tab", [](GuardedWindow& window) { Press(window, Qt::Key_Backtab, Qt::ShiftModifier); });
    row("click on another box", [](GuardedWindow& window) { Click(window.other); });
    row("click on a list", [](GuardedWindow& window) { Click(window.list); });
    row("click on a check box", [](GuardedWindow& window) { Click(window.tick); });
    row("click on a button", [](GuardedWindow& window) { Click(window.button); });
    row("click on a page tab", [](GuardedWindow& window) { window.ClickTab(1); });
    row("mnemonic", [](GuardedWindow& window) {
        Press(window, Qt::Key_G, Qt::AltModifier);
        Await([&] { return !window.button.isDown(); }, "the button stays down");
    });
    row("shortcut of a button", [](GuardedWindow& window) {
        Press(window, Qt::Key_F5);
        Await([&] { return !window.again.isDown(); }, "the button stays down");
    });
    row("close box", [](GuardedWindow& window) { window.close(); });
}

/// Shows a message while the user, who has pressed the mouse button over `pressed`, releases it.
void ReleaseOverMessage(GuardedWindow& window, const QWidget& pressed)
{
    QDialog message(&window);
    QTimer::singleShot(0, [&] {
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, pressed.geometry().center());
        message.accept();
    });
    message.exec();
}

} // namespace

Q_DECLARE_METATYPE(Action)

class tst_LeaveGuard : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void click_withMessageInTheCheck_acts()
    {
        GuardedWindow window;
        window.whileChecked = [&] { ReleaseOverMessage(window, window.button); };
        QWindow* handle = window.windowHandle();
        QTest::mousePress(handle, Qt::LeftButton, {}, window.button.geometry().center());
        Await([&] { return !window.button.isDown(); }, "the button stays down");
        QCOMPARE(window.clicks, 1);
        // the next click works as usual
        Click(window.button);
        QCOMPARE(window.clicks, 2);
    }

    void mnemonic_withMessageInTheCheck_acts()
    {
        GuardedWindow window;
        window.whileChecked = [&] { ReleaseOverMessage(window, window.button); };
        Press(window, Qt::Key_G, Qt::AltModifier);
        Await([&] { return window.clicks == 1; }, "the button is not clicked");
    }

    void editedBox_focusMovedFromOutside_isCheckedLater()
    {
        GuardedWindow window;
        window.guard.Edited(&window.box);
        QCOMPARE(window.checks, 0);
        window.other.setFocus();
        Await([&] { return window.checks > 0; }, "the box is not checked");
    }

    void editedBox_refused_isFocusedByLeaveAll()
    {
        GuardedWindow window;
        window.allows = false;
        window.guard.Edited(&window.box);
        window.other.setFocus();
        QVERIFY(!window.guard.LeaveAll());
        QVERIFY(window.box.hasFocus());
        window.other.setFocus();
        window.allows = true;
        QVERIFY(window.guard.LeaveAll());
        QVERIFY(window.other.hasFocus());
    }

    void refusal_isShownAtTheBoxUntilItChanges()
    {
        GuardedWindow window;
        window.allows = false;
        const auto& note = Find<QLabel>(window, "lblRefusal");
        QVERIFY(!note.isVisible());
        Click(window.button); // press and release
        QVERIFY(note.isVisible());
        QCOMPARE(note.text(), QStringLiteral("Not allowed"));
        QCOMPARE(window.box.accessibleDescription(), note.text());
        QVERIFY(window.rect().contains(note.geometry()));
        QVERIFY(!note.geometry().intersects(window.box.geometry()));
        window.guard.Edited(&window.box);
        QVERIFY(!note.isVisible());
        QCOMPARE(window.box.accessibleDescription(), QString());
    }

    void action_refused_isDiscarded_data() { AddActions(); }

    void action_refused_isDiscarded()
    {
        QFETCH(Action, action);
        GuardedWindow window;
        window.allows = false;
        const std::string before = window.Outcome();
        action(window);
        QCOMPARE(window.Outcome(), before);
        QVERIFY(window.checks > 0);
        QVERIFY(window.box.hasFocus());
        QVERIFY(QApplication::activePopupWidget() == nullptr);
    }

    void action_allowed_happensAfterTheCheck_data() { AddActions(); }

    void action_allowed_happensAfterTheCheck()
    {
        QFETCH(Action, action);
        GuardedWindow window;
        const std::string before = window.Outcome();
        action(window);
        QVERIFY(window.Outcome() != before);
        QVERIFY(window.checks > 0);
        window.list.hidePopup();
    }

    void action_elsewhere_runsNoCheck()
    {
        GuardedWindow window;
        window.other.setFocus();
        window.allows = false;
        Click(window.button);
        Press(window, Qt::Key_Tab);
        window.ClickTab(1);
        QCOMPARE(window.checks, 0);
        QCOMPARE(window.clicks, 1);
        QCOMPARE(window.pages.currentIndex(), 1);
    }

    void keyOfTheBox_runsNoCheck()
    {
        GuardedWindow window;
        window.allows = false;
        Type(window, "abc");
        Press(window, Qt::Key_Left);
        Press(window, Qt::Key_Backspace);
        QCOMPARE(ToUtf8(window.box.text()), "ac");
        QCOMPARE(window.checks, 0);
    }

    void shortcutOfTheBox_runsNoCheck()
    {
        GuardedWindow window;
        window.allows = false;
        int steps = 0;
        QShortcut up(QKeySequence(Qt::Key_Up), &window.box, nullptr, nullptr, Qt::WidgetShortcut);
        connect(&up, &QShortcut::activated, this, [&] { ++steps; });
        Press(window, Qt::Key_Up);
        QCOMPARE(steps, 1);
        QCOMPARE(window.checks, 0);
    }

    void enter_inABoxOfSeveralLines_isALineBreak()
    {
        GuardedWindow window;
        window.lines.setFocus();
        window.allows = false;
        Type(window, "a");
        Press(window, Qt::Key_Return);
        Press(window, Qt::Key_Enter);
        QCOMPARE(ToUtf8(window.lines.toPlainText()), "a\n\n");
        QCOMPARE(window.checks, 0);
        window.box.setFocus();
        Press(window, Qt::Key_Return); // in a single-line box Enter presses a button
        QCOMPARE(window.checks, 1);
    }

    void clickIntoTheBoxItself_runsNoCheck()
    {
        GuardedWindow window;
        window.allows = false;
        Click(window.box);
        window.lines.setFocus();
        Click(window.lines); // hits its viewport
        QCOMPARE(window.checks, 0);
    }

    void clickOnALabel_runsNoCheck()
    {
        GuardedWindow window;
        window.allows = false;
        Click(window.label);
        QCOMPARE(window.checks, 0);
    }

    void clickOnADisabledBox_runsNoCheck()
    {
        GuardedWindow window;
        window.allows = false;
        window.other.setEnabled(false);
        Click(window.other);
        QCOMPARE(window.checks, 0);
    }

    void disabledSave_actsIfTheCheckEnablesIt_data()
    {
        QTest::addColumn<bool>("byMnemonic");
        QTest::newRow("click") << false;
        QTest::newRow("mnemonic") << true;
    }

    void disabledSave_actsIfTheCheckEnablesIt()
    {
        QFETCH(bool, byMnemonic);
        for (const bool enables : {true, false}) {
            GuardedWindow window;
            window.guard.SetSaveButton(&window.button);
            window.guard.Add(&window.box, [&] {
                window.button.setEnabled(enables);
                return true;
            });
            window.button.setEnabled(false);
            if (byMnemonic) {
                Press(window, Qt::Key_G, Qt::AltModifier);
                Await([&] { return !window.button.isDown(); }, "the button stays down");
            } else {
                Click(window.button);
            }
            QCOMPARE(window.clicks, enables ? 1 : 0);
        }
    }

    void disabledSave_refused_typesNothing()
    {
        GuardedWindow window;
        window.guard.SetSaveButton(&window.button);
        window.button.setEnabled(false);
        window.allows = false;
        Press(window, Qt::Key_G, Qt::AltModifier);
        QCOMPARE(ToUtf8(window.box.text()), "");
        QCOMPARE(window.clicks, 0);
        QVERIFY(window.checks > 0);
        Type(window, "g"); // later keys reach the box again
        QCOMPARE(ToUtf8(window.box.text()), "g");
    }

    void wheel_overTabs_refused_keepsThePage()
    {
        GuardedWindow window;
        const QPoint overTabs =
            window.pages.tabBar()->mapTo(&window, window.pages.tabBar()->tabRect(0).center());
        window.allows = false;
        window.Wheel(overTabs);
        QCOMPARE(window.pages.currentIndex(), 0);
        window.allows = true;
        window.Wheel(overTabs);
        QCOMPARE(window.pages.currentIndex(), 1);
    }

    void wheel_overAListWithoutFocus_changesNothing()
    {
        GuardedWindow window;
        const QPoint overList = window.list.mapTo(&window, window.list.rect().center());
        window.Wheel(overList);
        QCOMPARE(window.list.currentIndex(), 0);
        window.list.setFocus();
        window.Wheel(overList);
        QCOMPARE(window.list.currentIndex(), 1);
    }

    void leave_runsTheCheckOfTheFocusedBoxOnly()
    {
        GuardedWindow window;
        QVERIFY(window.guard.Leave());
        QCOMPARE(window.checks, 1);
        window.allows = false;
        QVERIFY(!window.guard.Leave());
        window.other.setFocus();
        QVERIFY(window.guard.Leave());
        QCOMPARE(window.checks, 2);
    }

    void anotherWindow_isNotGuarded()
    {
        GuardedWindow window;
        window.allows = false;
        QPushButton elsewhere(QStringLiteral("Elsewhere"));
        int clicks = 0;
        connect(&elsewhere, &QPushButton::clicked, this, [&] { ++clicks; });
        elsewhere.show();
        AwaitActive(elsewhere);
        QTest::mouseClick(elsewhere.windowHandle(), Qt::LeftButton, {}, elsewhere.rect().center());
        elsewhere.close();
        QCOMPARE(clicks, 1);
        QVERIFY(!elsewhere.isVisible());
        QCOMPARE(window.checks, 0);
    }

    void hiddenWindow_isNotGuarded()
    {
        GuardedWindow window;
        window.allows = false;
        window.hide();
        window.close();
        QTest::keyClick(&window.box, Qt::Key_Tab);
        QCOMPARE(window.checks, 0);
    }
};

TEST_CLASS(tst_LeaveGuard)
#include "tst_LeaveGuard.moc"
