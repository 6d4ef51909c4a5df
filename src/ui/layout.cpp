// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/layout.h"

#include <QBoxLayout>
#include <QWidget>

namespace quillfen {
namespace {

struct Adder {
    QBoxLayout *layout;

    void operator()(QWidget *widget) const { layout->addWidget(widget); }
    void operator()(QLayout *inner) const { layout->addLayout(inner); }
    void operator()(Stretch stretch) const { layout->addStretch(stretch.factor); }
    void operator()(Space space) const { layout->addSpacing(space.pixels); }
    void operator()(const Item &item) const { layout->addWidget(item.widget, item.factor, item.alignment); }
};

QBoxLayout *box(QBoxLayout::Direction direction, std::initializer_list<LayoutItem> items, int spacing, QMargins margins)
{
    auto *layout = new QBoxLayout(direction);
    layout->setSpacing(spacing);
    layout->setContentsMargins(margins);
    for (const LayoutItem &item : items) {
        std::visit(Adder{layout}, item);
    }
    return layout;
}

} // namespace

QBoxLayout *row(std::initializer_list<LayoutItem> items, int spacing, QMargins margins)
{
    return box(QBoxLayout::LeftToRight, items, spacing, margins);
}

QBoxLayout *column(std::initializer_list<LayoutItem> items, int spacing, QMargins margins)
{
    return box(QBoxLayout::TopToBottom, items, spacing, margins);
}

} // namespace quillfen
