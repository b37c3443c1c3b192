// SPDX-License-Identifier: MIT
// The least that a program of our kind can be which shows a text: beside the bare window, it needs the fonts.
#include <QApplication>
#include <QDBusConnection>
#include <QLabel>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    [[maybe_unused]] const QDBusConnection bus = QDBusConnection::sessionBus();
    QLabel window(QStringLiteral("One line of text"));
    window.resize(450, 64);
    window.show();
    return QApplication::exec();
}
