#pragma once

#include <QCoreApplication>
#include <QTest>

/// A test class. A test program contains all classes of one folder of tests/, and each class runs in a
/// separate process: `tests_core tst_Text [options of Qt Test]`.
struct TestClass {
    const char* name;
    int (*run)(int argc, char** argv);
};

/// Registers `test` with this program. Returns true.
bool RegisterTestClass(const TestClass& test);

/// Runs all slots of `Class` with the kind of application that the linked layers need. Returns the exit code.
/// Calls the static function `initMain` of the class, if it exists, before creating the application.
template <typename Class>
int RunTestClass(int argc, char** argv)
{
    if constexpr (requires { Class::initMain(); }) {
        Class::initMain();
    }
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
#if defined(QT_WIDGETS_LIB)
    const QApplication application(argc, argv);
    QApplication::setKeyboardInputInterval(3600 *
                                           1000); // keyboard search never starts over between key presses
#elif defined(QT_GUI_LIB)
    const QGuiApplication application(argc, argv);
#else
    const QCoreApplication application(argc, argv);
#endif
    Class test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

/// Registers `Class` as a test class of this program.
#define TEST_CLASS(Class)                                                                                    \
    [[maybe_unused]] static const bool isRegistered = RegisterTestClass({#Class, RunTestClass<Class>});
