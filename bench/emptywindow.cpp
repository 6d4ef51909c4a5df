// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// The floor of the benchmarks of start and rest: the least that a Qt Widgets program can put on the screen, at the
// client's size, or keep ready behind it with the option "--hidden".
#include <QApplication>
#include <QWidget>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(1180, 760);
    if (QApplication::arguments().contains(QStringLiteral("--hidden"))) {
        window.winId(); // it has been made, and waits
    } else {
        window.show();
    }
    return QApplication::exec();
}
