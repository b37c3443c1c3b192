// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QTest>

#include <type_traits>

namespace tunedeck {

/// A test class of a test program. Each program holds the classes of one folder and runs one of them, the one that its
/// first argument names; the other arguments are Qt Test's.
struct RegisteredTest {
    const char *className;
    int (*run)(int argc, char **argv);
};

/// Adds `test` to the program. Returns true, so that it can initialise a variable before main() runs.
bool registerTest(const RegisteredTest &test);

/// The name of the test class that this process runs.
[[nodiscard]] QString runningTest();

/// In a run that lastWordsOfAbortedRun() started: the case to go through instead of the tests. Otherwise empty.
[[nodiscard]] QString fatalCase();

/// Runs `Test` under an `Application` of Qt. `runFatalCase` gets the name of a case that must end the process.
template <typename Application, typename Test>
int runTest(int argc, char **argv, void (*runFatalCase)(const QString &name) = nullptr)
{
    const Application application(argc, argv);
    if constexpr (!std::is_same_v<Application, QCoreApplication>) {
        QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
    }
    if (const QString name = fatalCase(); !name.isEmpty()) {
        if (runFatalCase) {
            runFatalCase(name);
        }
        return 0;
    }
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace tunedeck

/// Adds the class `Test`, which runs under `Application` (QCoreApplication, QGuiApplication or QApplication). It is
/// written once in a source, outside of any namespace. A third argument is the function that goes through a fatal case.
#define TUNEDECK_TEST(Test, Application, ...)                                                                          \
    [[maybe_unused]] static const bool isTestRegistered = tunedeck::registerTest(                                      \
        {Test::staticMetaObject.className(), [](int argc, char **argv) {                                               \
             return tunedeck::runTest<Application, Test>(argc, argv __VA_OPT__(, ) __VA_ARGS__);                       \
         }});
