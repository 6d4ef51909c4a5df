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

/// Qt turns a row round where it is read from right to left, but leaves its margins as they are.
class MirroringBox final : public QBoxLayout {
public:
    using QBoxLayout::QBoxLayout;

    void setGeometry(const QRect &rect) override
    {
        const QMargins margins = contentsMargins();
        const bool mirrored = parentWidget() != nullptr && parentWidget()->isRightToLeft();
        QBoxLayout::setGeometry(mirrored ? rect.translated(margins.right() - margins.left(), 0) : rect);
    }
};

QBoxLayout *box(QBoxLayout::Direction direction, std::initializer_list<LayoutItem> items, int spacing, QMargins margins)
{
    auto *layout = new MirroringBox(direction);
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
