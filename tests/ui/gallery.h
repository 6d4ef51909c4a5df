// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QWidget>

#include <vector>

/// One picture of the gallery. A source file adds its own by a `const GalleryPage` of its file.
struct GalleryPage {
    using Make = QWidget *(*)();

    GalleryPage(const char *pageName, Make pageMake) : name(QString::fromLatin1(pageName)), make(pageMake)
    {
        all().push_back(*this);
    }

    static std::vector<GalleryPage> &all()
    {
        static std::vector<GalleryPage> pages;
        return pages;
    }

    QString name;
    Make make;
};

/// A heading with the hairline under it, as the pictures of the design have.
[[nodiscard]] QWidget *gallerySection(const QString &title, QLayout *contents);

/// Makes `widget` look as if the pointer were over it, for good.
void showHovered(QWidget *widget);
