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

#include <string>
#include <utility>

namespace Tarno
{

// Functions that find controls by name and drive them through the window system, so that events take the same
// path as those of a user.

/// Timeout in ms after which waiting fails a test. Long enough for any machine, however slow or busy.
inline constexpr int awaitTimeout = 300'000;

/// The line of a test that called a function below, for failure messages. A substitute for
/// std::source_location, which clang 14 lacks.
struct Caller {
    static Caller Current(const char* file = __builtin_FILE(), int line = __builtin_LINE())
    {
        return {file, line};
    }

    const char* file;
    int line;
};

inline void FailAt(const Caller& caller, const char* what)
{
    QTest::qFail(what, caller.file, caller.line);
}

/// Processes events until `isTrue` returns true. Fails the test with `what` on timeout.
template <typename Predicate>
bool Await(Predicate&& isTrue, const char* what, const Caller& caller = Caller::Current())
{
    const bool happened = QTest::qWaitFor(std::forward<Predicate>(isTrue), awaitTimeout);
    if (!happened) {
        FailAt(caller, what);
    }
    return happened;
}

/// Waits until `window` is active.
inline void AwaitActive(QWidget& window, const Caller& caller = Caller::Current())
{
    if (!QTest::qWaitForWindowActive(&window, awaitTimeout)) {
        FailAt(caller, "the window does not become active");
    }
}

/// Returns the control `name` of `window`. Aborts if it does not exist.
template <typename Control>
Control& Find(const QWidget& window, const char* name)
{
    auto* control = window.findChild<Control*>(QLatin1String(name));
    if (control == nullptr) {
        qFatal("control %s not found", name);
    }
    return *control;
}

/// Returns where a user would click `widget`: its centre, or the indicator of an option or check box.
inline QPoint ClickPoint(const QWidget& widget)
{
    constexpr int withinMark = 8;
    const bool marked = qobject_cast<const QRadioButton*>(&widget) != nullptr ||
                        qobject_cast<const QCheckBox*>(&widget) != nullptr;
    return marked ? QPoint(withinMark, widget.height() / 2) : widget.rect().center();
}

/// Wakes the event loop so that it notices a pending exit. Qt's dispatcher for Windows misses it if events
/// were processed inside the event that requested the exit.
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

/// Presses Alt and `key`, the mnemonic of `button`, and waits until the button is released.
inline void PressMnemonic(const QWidget& window, Qt::Key key, const char* button)
{
    Press(window, key, Qt::AltModifier);
    Await([&] { return !Find<QAbstractButton>(window, button).isDown(); }, "the button is still pressed");
}

/// Types into the control that has the focus.
inline void Type(const QWidget& window, const char* text)
{
    for (const char* letter = text; *letter != '\0'; ++letter) {
        QTest::keyClick(window.windowHandle(), *letter);
    }
}

/// Whether `name` is the object name or the class of `window`.
inline bool IsNamed(const QWidget& window, const char* name)
{
    return window.objectName() == QLatin1String(name) || window.inherits(name);
}

/// Fails the test because the modal `window` should not be open, and closes it.
inline void RejectWindow(QDialog& window, const char* what, const Caller& caller)
{
    if (!QTest::currentTestFailed()) {
        const QString name = window.objectName().isEmpty() ? QLatin1String(window.metaObject()->className())
                                                           : window.objectName();
        FailAt(caller,
               qPrintable(
                   QStringLiteral("%1 (\"%2\") %3").arg(name, window.windowTitle(), QLatin1String(what))));
    }
    window.done(QDialog::Rejected);
}

/// Runs `open`, which blocks until the modal window `name` (its object name or class) is closed, and runs
/// `steps` on that window, which must close it. Fails the test and closes the window if it does not open or
/// stays open, or if another modal window opens.
template <typename Open, typename Steps>
void WhileOpen(const char* name, Open&& open, Steps&& steps, const Caller& caller = Caller::Current())
{
    const QWidget* below = QApplication::activeModalWidget();
    bool isDone = false;
    QTimer driver;
    QObject::connect(&driver, &QTimer::timeout, &driver, [&] {
        auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (window == nullptr || window == below) {
            return;
        }
        if (isDone || !IsNamed(*window, name)) {
            RejectWindow(*window, "should not be open", caller);
            return;
        }
        isDone = true;
        driver.stop(); // `steps` handles the windows that it opens
        AwaitActive(*window, caller);
        steps(*window);
        if (window->isVisible()) {
            RejectWindow(*window, "was left open", caller);
        }
        EndLoop();
        driver.start(0);
    });
    driver.start(0);
    std::forward<Open>(open)();
    if (!isDone && !QTest::currentTestFailed()) {
        FailAt(caller, (std::string(name) + " was not opened").c_str());
    }
}

/// Runs `body`. Fails the test if it opens a modal window.
template <typename Body>
void WithoutWindow(Body&& body, const Caller& caller = Caller::Current())
{
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&caller] {
        if (auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget()); window != nullptr) {
            RejectWindow(*window, "should not be open", caller);
        }
    });
    watch.start(0);
    std::forward<Body>(body)();
}

} // namespace Tarno
