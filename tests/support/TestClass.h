#pragma once

#include <QCoreApplication>
#include <QTest>

/// A test class of a test program, which holds all classes of one folder of tests/. Each runs in a process of
/// its own: `tests_core tst_Text [options of Qt Test]`.
struct TestClass {
    const char* name;
    int (*run)(int argc, char** argv);
};

/// Adds `test` to the classes of this program; returns true.
bool RegisterTestClass(const TestClass& test);

/// Runs all slots of `Class` under the application that the linked layers need; returns the exit code. A
/// static function `initMain` of the class is called before there is an application.
template <typename Class>
int RunTestClass(int argc, char** argv)
{
    if constexpr (requires { Class::initMain(); }) {
        Class::initMain();
    }
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
#if defined(QT_WIDGETS_LIB)
    const QApplication application(argc, argv);
    QApplication::setKeyboardInputInterval(3600 * 1000); // letters typed by a test always belong together
#elif defined(QT_GUI_LIB)
    const QGuiApplication application(argc, argv);
#else
    const QCoreApplication application(argc, argv);
#endif
    Class test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

/// Makes `Class` a test class of this program.
#define TEST_CLASS(Class)                                                                                    \
    [[maybe_unused]] static const bool isRegistered = RegisterTestClass({#Class, RunTestClass<Class>});
