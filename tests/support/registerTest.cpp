// SPDX-License-Identifier: MIT
#include "support/registerTest.h"

#include "support/abortedRun.h"

#include <QList>

#include <cstdio>

namespace tunedeck {

namespace {
QList<RegisteredTest> &tests()
{
    static QList<RegisteredTest> tests;
    return tests;
}

QString running;

QString nameOf(const RegisteredTest &test)
{
    return QString::fromLatin1(test.className).section(QStringLiteral("::"), -1);
}
} // namespace

bool registerTest(const RegisteredTest &test)
{
    tests().append(test);
    return true;
}

QString runningTest()
{
    return running;
}

QString fatalCase()
{
    return qEnvironmentVariable(fatalCaseVariable);
}

namespace {
int runNamedTest(int argc, char **argv)
{
    const QString name = QString::fromLocal8Bit(argc > 1 ? argv[1] : "");
    for (const RegisteredTest &test : std::as_const(tests())) {
        if (name == nameOf(test)) {
            running = name;
            argv[1] = argv[0];
            return test.run(argc - 1, argv + 1);
        }
    }
    std::fprintf(stderr, "Usage: %s TEST [argument of Qt Test...]\nTests:\n", argv[0]);
    for (const RegisteredTest &test : std::as_const(tests())) {
        std::fprintf(stderr, "    %s\n", qPrintable(nameOf(test)));
    }
    return 2;
}
} // namespace

} // namespace tunedeck

int main(int argc, char **argv)
{
    return tunedeck::runNamedTest(argc, argv);
}
