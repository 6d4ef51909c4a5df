// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/policy/presetrow.h"

#include "ui/accessible.h"
#include "ui/paint/icons.h"
#include "ui/paint/paint.h"
#include "ui/parts/pill.h"
#include "ui/text/paragraph.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QStringList>
#include <QStyle>

namespace quillfen {

namespace {

constexpr int sidePadding = 16;
constexpr int verticalPadding = 12;
constexpr int radioSize = 18;
constexpr int gap = 12;
constexpr int textLeft = sidePadding + radioSize + gap;
constexpr int lineGap = 2; // between name and description
constexpr int tagGap = 8;
constexpr int narrowest = 160;
constexpr int usualWidth = 306;
constexpr int mostLines = 6;
/// Of the card around the rows, inside its line.
constexpr qreal cornerRadius = 11;

Paragraph nameOf(const QString &text)
{
    return {.text = text, .type = Type::BodySemibold};
}

Paragraph descriptionOf(const QString &text)
{
    return {.text = text, .type = Type::Caption, .alignment = Qt::AlignLeft | Qt::AlignTop, .maximumLines = mostLines};
}

} // namespace

PresetRow::PresetRow(const QString &name, const QString &description, const QString &tag, QWidget *parent)
    : QAbstractButton(parent), m_name(name), m_description(description)
{
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setProperty("focusRadius", 6);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    QStringList parts{name, tag, description};
    parts.removeAll(QString());
    setAccessible(this, QAccessible::RadioButton, parts.join(QStringLiteral(", ")));
    if (!tag.isEmpty()) {
        m_tag = new Pill(tag, Theme::okBg, Theme::okText, this);
        m_tag->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
}

void PresetRow::setChosen(bool chosen)
{
    if (chosen == isChecked()) {
        return;
    }
    setAutoExclusive(chosen); // the chosen one of several would not let go
    setChecked(chosen);
    setAutoExclusive(true);
}

QSize PresetRow::sizeHint() const
{
    return {usualWidth, heightForWidth(usualWidth)};
}

QSize PresetRow::minimumSizeHint() const
{
    return {narrowest, heightForWidth(usualWidth)};
}

bool PresetRow::hasHeightForWidth() const
{
    return true;
}

int PresetRow::heightForWidth(int width) const
{
    const int lines = lineCount(descriptionOf(m_description), width - textLeft - sidePadding);
    return 2 * verticalPadding + lineHeight(Type::BodySemibold) + lineGap + lines * lineHeight(Type::Caption);
}

void PresetRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const auto mirrored = [this](const QRect &part) { return QStyle::visualRect(layoutDirection(), rect(), part); };
    if (isChecked()) {
        paintChosen(painter);
    }
    const int nameHeight = lineHeight(Type::BodySemibold);
    const QRect radio(sidePadding, verticalPadding + (nameHeight - radioSize) / 2, radioSize, radioSize);
    const bool lively = isChecked() || isDown() || underMouse();
    paintIcon(painter, isChecked() ? Icon::RadioOn : Icon::RadioOff, mirrored(radio), lively ? Theme::ok : Theme::text);
    const int room = width() - textLeft - sidePadding;
    paintParagraph(painter, nameOf(m_name), mirrored({textLeft, verticalPadding, room, nameHeight}), Theme::heading);
    const int below = verticalPadding + nameHeight + lineGap;
    paintParagraph(painter, descriptionOf(m_description), mirrored({textLeft, below, room, height() - below}),
                   Theme::text);
}

/// The row lies edge to edge in its card, so the first and the last one have the card's corners.
void PresetRow::paintChosen(QPainter &painter)
{
    const QRectF area = rect();
    const QRectF half(0, 0, area.width(), area.height() / 2);
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRoundedRect(area, cornerRadius, cornerRadius);
    if (y() > 0) {
        path.addRect(half);
    }
    if (geometry().bottom() < parentWidget()->rect().bottom()) {
        path.addRect(half.translated(0, area.height() / 2));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, Theme::bg);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const int markTop = verticalPadding + (lineHeight(Type::BodySemibold) - scaled(18)) / 2;
    const QRect mark(4, markTop + 1, 3, scaled(18));
    paintSurface(painter, QStyle::visualRect(layoutDirection(), rect(), mark), 2, Theme::accent);
}

void PresetRow::resizeEvent(QResizeEvent *event)
{
    QAbstractButton::resizeEvent(event);
    placeTag();
}

void PresetRow::placeTag()
{
    if (m_tag == nullptr) {
        return;
    }
    const int nameWidth = QFontMetrics(quillfen::font(Type::BodySemibold)).horizontalAdvance(m_name);
    const QSize size = m_tag->sizeHint();
    const int top = verticalPadding + (lineHeight(Type::BodySemibold) - size.height()) / 2;
    m_tag->setGeometry(
        QStyle::visualRect(layoutDirection(), rect(), {QPoint(textLeft + nameWidth + tagGap, top), size}));
}

} // namespace quillfen
