// SPDX-License-Identifier: MIT
// A program that has started another one while it had two threads, and then has a race on a thread of Qt, which the
// thread sanitizer must report.

#include <QCoreApplication>
#include <QProcess>
#include <QString>
#include <QThread>

#include <cstdio>
#include <memory>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QThread idle;
    idle.start();
    QProcess::execute(QStringLiteral("true"));
    idle.quit();
    idle.wait();

    int shared = 0;
    const std::unique_ptr<QThread> thread(QThread::create([&shared] { ++shared; }));
    thread->start();
    ++shared;
    thread->wait();
    std::printf("%d\n", shared);
    return 0;
}
