// SPDX-License-Identifier: MIT
// The least that a program of our kind can be: what its start and its memory cost, nothing of ours can save.
#include <QApplication>
#include <QWidget>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(450, 64);
    window.show();
    return QApplication::exec();
}
