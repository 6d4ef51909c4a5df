// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/text/label.h"

#include "ui/accessible.h"
#include "ui/text/paragraph.h"
#include "ui/text/tooltip.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMenu>
#include <QPainter>

namespace quillfen {
namespace {

/// More characters than a line of any screen holds, narrow letters included; what is longer is never measured or drawn.
constexpr qsizetype mostOnALine = 2048;

/// The widest a label asks to be. It gets more where a layout has more to give.
constexpr int widestHint = 1600;

/// `text` cut to what can be seen of it, from both ends where the middle gives way.
QString cut(const QString &text, Qt::TextElideMode elide, qsizetype most)
{
    if (text.size() <= most) {
        return text;
    }
    if (elide == Qt::ElideMiddle) {
        return text.left(most / 2) + u'…' + text.right(most / 2);
    }
    return elide == Qt::ElideLeft ? u'…' + text.right(most) : text.left(most) + u'…';
}

} // namespace

Label::Label(const QString &text, Type type, const QColor &colour, QWidget *parent) : QLabel(parent), m_type(type)
{
    setTextFormat(Qt::PlainText);
    setFont(quillfen::font(type));
    setText(text);
    setColour(colour);
    setFocusPolicy(Qt::NoFocus);
}

void Label::setColour(const QColor &colour)
{
    if (palette().color(QPalette::WindowText) == colour) {
        return;
    }
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, colour);
    setPalette(colours);
}

void Label::setWrap(int width)
{
    setWordWrap(true);
    setMaximumWidth(scaled(width));
    // A wrapping QLabel asks for a square; a paragraph wants its whole width.
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

Paragraph Label::paragraph() const
{
    return {text(), m_type, alignment(), Qt::ElideRight, wordWrap() ? 1000 : static_cast<int>(text().count(u'\n')) + 1};
}

bool Label::paintsItself() const
{
    // Text that can be selected is QLabel's own business: only it knows the selection.
    return !(textInteractionFlags() & Qt::TextSelectableByMouse);
}

QSize Label::sizeHint() const
{
    if (!paintsItself()) {
        return QLabel::sizeHint();
    }
    const int width = std::min(naturalWidth(paragraph(), QWIDGETSIZE_MAX), maximumWidth());
    return {width, heightForWidth(width)};
}

QSize Label::minimumSizeHint() const
{
    if (!paintsItself()) {
        return QLabel::minimumSizeHint();
    }
    if (wordWrap()) {
        return {std::min(scaled(80), sizeHint().width()), lineHeight(m_type)};
    }
    return sizeHint();
}

int Label::heightForWidth(int width) const
{
    if (!paintsItself()) {
        return QLabel::heightForWidth(width);
    }
    return lineCount(paragraph(), width) * lineHeight(m_type);
}

void Label::paintEvent(QPaintEvent *event)
{
    if (!paintsItself()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    const auto group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    paintParagraph(painter, paragraph(), contentsRect(), palette().color(group, QPalette::WindowText));
}

AgentLabel::AgentLabel(const QString &text, Type type, const QColor &colour, QWidget *parent)
    : QWidget(parent), m_type(type), m_colour(colour)
{
    setRole(this, QAccessible::StaticText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setText(text);
}

void AgentLabel::setText(const QString &text)
{
    if (m_text == text && m_text.isNull() == text.isNull()) {
        return;
    }
    m_text = text;
    setAccessibleName(madeVisible(m_text));
    showText();
}

void AgentLabel::showText()
{
    const qsizetype most = mostOnALine * m_maximumLines;
    // Twice, since signs are longer than what they stand for.
    m_visible = cut(madeVisible(cut(m_text, m_elide, most)), m_elide, most);
    updateGeometry();
    update();
}

void AgentLabel::setColour(const QColor &colour)
{
    if (m_colour == colour) {
        return;
    }
    m_colour = colour;
    update();
}

void AgentLabel::setType(Type type)
{
    if (m_type == type) {
        return;
    }
    m_type = type;
    updateGeometry();
    update();
}

void AgentLabel::setElideMode(Qt::TextElideMode mode)
{
    m_elide = mode;
    showText();
}

void AgentLabel::setAlignment(Qt::Alignment alignment)
{
    m_alignment = alignment;
    update();
}

void AgentLabel::setMaximumLines(int lines)
{
    m_maximumLines = lines;
    QSizePolicy policy(QSizePolicy::Preferred, lines > 1 ? QSizePolicy::Minimum : QSizePolicy::Fixed);
    policy.setHeightForWidth(lines > 1);
    setSizePolicy(policy);
    showText();
}

Paragraph AgentLabel::paragraph() const
{
    return {m_visible, m_type, m_alignment, m_elide, m_maximumLines};
}

QSize AgentLabel::sizeHint() const
{
    const int width = std::min(naturalWidth(paragraph(), widestHint), maximumWidth());
    return {width, heightForWidth(width)};
}

QSize AgentLabel::minimumSizeHint() const
{
    return {std::min(sizeHint().width(), scaled(24)), lineHeight(m_type)};
}

bool AgentLabel::hasHeightForWidth() const
{
    return m_maximumLines > 1;
}

int AgentLabel::heightForWidth(int width) const
{
    return lineCount(paragraph(), width) * lineHeight(m_type);
}

bool AgentLabel::isElided() const
{
    return m_text.size() > mostOnALine * m_maximumLines || quillfen::isElided(paragraph(), width());
}

void AgentLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintParagraph(painter, paragraph(), rect(), m_colour);
}

bool AgentLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip) {
        return QWidget::event(event);
    }
    if (!isElided()) {
        event->ignore();
        return true;
    }
    showPlainToolTip(static_cast<QHelpEvent *>(event)->globalPos(), m_text, this);
    return true;
}

void AgentLabel::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu->addAction(tr("Copy")), &QAction::triggered, this,
            [this] { QGuiApplication::clipboard()->setText(m_text); });
    menu->popup(event->globalPos());
}

} // namespace quillfen
