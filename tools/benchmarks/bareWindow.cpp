// SPDX-License-Identifier: MIT
// The least that a program of our kind can be: what its start and its memory cost, nothing of ours can save.
#include <QApplication>
#include <QDBusConnection>
#include <QWidget>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    [[maybe_unused]] const QDBusConnection bus = QDBusConnection::sessionBus();
    QWidget window;
    window.resize(450, 64);
    window.show();
    return QApplication::exec();
}
