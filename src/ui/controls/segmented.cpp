// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/segmented.h"

#include "ui/accessible.h"
#include "ui/paint/direction.h"
#include "ui/paint/paint.h"
#include "ui/text/label.h"
#include "ui/text/tooltip.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int padding = 14;
constexpr int leastPadding = 6; ///< where a part is narrower than it asks for
constexpr int leastWidth = 64;
constexpr int underlineInset = 12;

/// One word of the choice.
class Part final : public QAbstractButton {
public:
    Part(const QString &text, QWidget *parent) : QAbstractButton(parent)
    {
        setText(text);
        setShortcut({}); // an "&" is no mnemonic here
        setCheckable(true);
        setFocusPolicy(Qt::TabFocus);
        setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Expanding);
        setAttribute(Qt::WA_Hover);
        setProperty("focusRadius", 4);
        setAccessible(this, QAccessible::RadioButton, text);
    }

    // As wide as the chosen look needs, so that choosing moves nothing.
    [[nodiscard]] QSize sizeHint() const override
    {
        return {QFontMetrics(quillfen::font(Type::BodySemibold)).horizontalAdvance(text()) + 2 * padding,
                lineHeight(Type::BodySemibold)};
    }

    // Where a window has no room for the whole, the words give way, and tell themselves in a tooltip.
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        return {std::min(sizeHint().width(), scaled(leastWidth)), lineHeight(Type::BodySemibold)};
    }

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::ToolTip) {
            const bool whole = shownText() == text();
            showPlainToolTip(static_cast<QHelpEvent *>(event)->globalPos(), whole ? QString() : text(), this);
            return true;
        }
        return QAbstractButton::event(event);
    }

    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        if (isChecked()) {
            paintSurface(painter, rect(), 4, Theme::bg, Theme::line);
        } else if (isEnabled() && (underMouse() || isDown())) {
            paintSurface(painter, rect(), 4, isDown() ? Theme::line : Theme::panel2);
        }
        painter.setFont(quillfen::font(isChecked() ? Type::BodySemibold : Type::Body));
        painter.setPen(isEnabled() ? Theme::heading : Theme::muted);
        drawLine(painter, rect(), Qt::AlignCenter, shownText());
        if (isChecked()) {
            paintSurface(painter, QRectF(underlineInset, height() - 4, width() - 2 * underlineInset, 2), 1,
                         isEnabled() ? Theme::accent : Theme::muted);
        }
    }

private:
    [[nodiscard]] QString shownText() const
    {
        const QFont &face = quillfen::font(isChecked() ? Type::BodySemibold : Type::Body);
        return QFontMetrics(face).elidedText(text(), Qt::ElideRight, width() - 2 * leastPadding);
    }
};

} // namespace

Segmented::Segmented(const QString &accessibleName, QWidget *parent)
    : QWidget(parent), m_layout(new QHBoxLayout(this)), m_parts(new QButtonGroup(this))
{
    setAccessible(this, QAccessible::Grouping, accessibleName);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    setControlHeight(32);
    m_layout->setContentsMargins(2, 2, 2, 2);
    m_layout->setSpacing(0);
    connect(m_parts, &QButtonGroup::idToggled, this, [this](int index, bool chosen) {
        if (chosen) {
            Q_EMIT currentChanged(index);
        }
    });
}

void Segmented::setControlHeight(int height)
{
    setFixedHeight(scaled(height));
}

int Segmented::addPart(const QString &text)
{
    const int index = count();
    auto *part = new Part(text, this);
    m_parts->addButton(part, index);
    m_layout->addWidget(part);
    if (index == 0) {
        part->setChecked(true);
    } else {
        part->setFocusPolicy(Qt::NoFocus); // the chosen part stands for all of them in the tab order
    }
    return index;
}

int Segmented::count() const
{
    return static_cast<int>(m_parts->buttons().size());
}

int Segmented::currentIndex() const
{
    return m_parts->checkedId();
}

void Segmented::setCurrentIndex(int index)
{
    if (QAbstractButton *part = m_parts->button(index)) {
        part->setChecked(true);
    }
}

void Segmented::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintSurface(painter, rect(), 6, Theme::panel, Theme::line);
}

} // namespace quillfen
