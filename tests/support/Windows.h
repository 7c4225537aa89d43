#pragma once

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QRadioButton>
#include <QTimer>
#include <QWindow>
#include <QtTest/QTest>

#include <utility>

// Windows from outside: found by the names of their controls, driven through the window system, so that an
// event takes the way that it takes when a user raises it.

/// The control `name` of `window`; the test ends when there is none.
template <typename Control>
Control& Find(const QWidget& window, const char* name)
{
    auto* control = window.findChild<Control*>(QLatin1String(name));
    if (control == nullptr) {
        qFatal("no control %s", name);
    }
    return *control;
}

/// Where a user would click `widget`: in its middle, or on the mark of an option or check box.
inline QPoint ClickPoint(const QWidget& widget)
{
    constexpr int withinMark = 8;
    const bool marked = qobject_cast<const QRadioButton*>(&widget) != nullptr ||
                        qobject_cast<const QCheckBox*>(&widget) != nullptr;
    return marked ? QPoint(withinMark, widget.height() / 2) : widget.rect().center();
}

/// Lets the event loop look whether it is to end: Qt's dispatcher for Windows forgets it when events were
/// processed within the one that has ended it, and then sleeps on.
inline void EndLoop()
{
    QAbstractEventDispatcher::instance()->wakeUp();
}

/// Presses and releases a mouse button over `widget`.
inline void Click(QWidget& widget, Qt::MouseButton button = Qt::LeftButton)
{
    QWidget* window = widget.window();
    QTest::mouseClick(window->windowHandle(), button, {}, widget.mapTo(window, ClickPoint(widget)));
}

inline void Click(const QWidget& window, const char* name)
{
    Click(Find<QWidget>(window, name));
}

/// Presses and releases a key in `window`, wherever its focus is.
inline void Press(const QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(window.windowHandle(), key, modifiers);
}

/// Presses Alt and `key`, the mnemonic of `button`, and waits until the button has come up again.
inline void PressMnemonic(const QWidget& window, Qt::Key key, const char* button)
{
    Press(window, key, Qt::AltModifier);
    if (!QTest::qWaitFor([&] { return !Find<QAbstractButton>(window, button).isDown(); })) {
        QTest::qFail("the button stays down", __FILE__, __LINE__);
    }
}

/// Types into the control that has the focus.
inline void Type(const QWidget& window, const char* text)
{
    for (const char* letter = text; *letter != '\0'; ++letter) {
        QTest::keyClick(window.windowHandle(), *letter);
    }
}

/// Runs `open`, which blocks until a modal window is closed, and meanwhile `steps` on that window, which have
/// to close it. A window that does not open or stays open fails the test. It may open over the modal window
/// `below`.
template <typename Open, typename Steps>
void WhileOpen(Open&& open, Steps&& steps, const QWidget* below = nullptr)
{
    bool opened = false;
    QTimer driver;
    QObject::connect(&driver, &QTimer::timeout, &driver, [&] {
        auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (window == nullptr || window == below) {
            return;
        }
        opened = true;
        driver.stop();
        if (!QTest::qWaitForWindowActive(window)) {
            QTest::qFail("the window does not become active", __FILE__, __LINE__);
        }
        steps(*window);
        if (window->isVisible()) {
            if (!QTest::currentTestFailed()) {
                QTest::qFail("the window was left open", __FILE__, __LINE__);
            }
            window->done(QDialog::Rejected);
        }
        EndLoop();
    });
    driver.start(0);
    std::forward<Open>(open)();
    if (!opened) {
        QTest::qFail("no window was opened", __FILE__, __LINE__);
    }
}

/// Runs `body`; a modal window that it opens fails the test.
template <typename Body>
void WithoutWindow(Body&& body)
{
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [] {
        if (auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget()); window != nullptr) {
            QTest::qFail("a window was opened", __FILE__, __LINE__);
            window->done(QDialog::Rejected);
        }
    });
    watch.start(0);
    std::forward<Body>(body)();
}
