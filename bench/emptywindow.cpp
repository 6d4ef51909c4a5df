// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// The floor of the start benchmark: the least that a Qt Widgets program can put on the screen, at the client's size.
#include <QApplication>
#include <QWidget>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(1180, 760);
    window.show();
    return QApplication::exec();
}
