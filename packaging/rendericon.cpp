// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// Renders a square drawing as a picture: quillfen-rendericon DRAWING SIZE PICTURE. A tool of the build.
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdlib>

int main(int argc, char **argv)
{
    if (argc != 4) {
        return EXIT_FAILURE;
    }
    QSvgRenderer renderer(QString::fromLocal8Bit(argv[1]));
    const int size = std::atoi(argv[2]);
    if (!renderer.isValid() || size <= 0) {
        return EXIT_FAILURE;
    }
    QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter);
    painter.end();
    return picture.save(QString::fromLocal8Bit(argv[3]), "PNG") ? EXIT_SUCCESS : EXIT_FAILURE;
}
