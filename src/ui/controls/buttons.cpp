// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/buttons.h"

#include "ui/accessible.h"
#include "ui/controls/buttonlook.h"
#include "ui/controls/enterkey.h"
#include "ui/controls/spinner.h"
#include "ui/paint/direction.h"
#include "ui/paint/paint.h"
#include "ui/style/hoverfade.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>

namespace quillfen {
namespace {

constexpr int radius = 6;
constexpr int pictureSize = 16;
constexpr int iconGap = 5;
constexpr int iconPadding = 8;
constexpr int leastPadding = 6; ///< of a button that is narrower than it asks for
constexpr int spinnerSize = 14;
constexpr int spinnerGap = 6;

/// The room beside the label, with the line at the edge.
int sidePadding(int height)
{
    return 1 + (height <= 28 ? 10 : height <= 32 ? 14 : 18);
}

} // namespace

Button::Button(const QString &text, ButtonStyle style, QWidget *parent) : Button(std::nullopt, text, style, parent) {}

Button::Button(Icon icon, const QString &text, ButtonStyle style, QWidget *parent)
    : Button(std::optional<Icon>(icon), text, style, parent)
{}

Button::Button(std::optional<Icon> icon, const QString &text, ButtonStyle style, QWidget *parent)
    : QAbstractButton(parent), m_style(style), m_icon(icon), m_height(heightOf(style)), m_hover(new HoverFade(this))
{
    setRole(this, QAccessible::PushButton);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    if (isDark(style)) {
        setProperty("darkSurface", true);
    }
    setText(text);
}

void Button::setText(const QString &text)
{
    if (this->text() == text) {
        return;
    }
    QAbstractButton::setText(text);
    setShortcut({});
    updateGeometry();
}

void Button::setControlHeight(int height)
{
    m_height = height;
    updateGeometry();
    update();
}

void Button::setRunning(bool running)
{
    if (m_running == running) {
        return;
    }
    if (running) {
        m_enabled = isEnabledTo(parentWidget());
    }
    m_running = running;
    if (running && m_spinner == nullptr) {
        m_spinner = new Spinner(spinnerSize, this);
        m_spinner->setColour(looksOf(m_style).disabled.label);
    }
    if (m_spinner != nullptr) {
        m_spinner->setVisible(running);
        m_spinner->move(spinnerPlace()); // a wide button keeps its size
    }
    // What is disabled hands the keyboard on, and there a second Enter would do something else: the window leaves it.
    setProperty("keepsFocus", running);
    QAbstractButton::setEnabled(m_enabled && !running);
    setProperty("keepsFocus", {});
    // Where the window was left meanwhile, it could not give the keyboard back.
    if (isEnabled() && isActiveWindow() && window()->focusWidget() == this && !hasFocus()) {
        setFocus(Qt::OtherFocusReason);
    }
    updateGeometry();
    update();
}

void Button::setEnabled(bool enabled)
{
    m_enabled = enabled;
    QAbstractButton::setEnabled(enabled && !m_running);
}

void Button::setDefault(bool isDefault)
{
    m_default = isDefault;
    watchWindow();
}

QSize Button::sizeHint() const
{
    const int label = QFontMetrics(labelFont()).horizontalAdvance(text());
    const int left = m_icon && !m_running ? 1 + iconPadding : sidePadding(m_height);
    return {left + leadingWidth() + label + sidePadding(m_height), scaled(m_height)};
}

QSize Button::minimumSizeHint() const
{
    return sizeHint();
}

const QFont &Button::labelFont() const
{
    if (m_height <= 28) {
        return quillfen::font(isStrong(m_style) ? Type::CaptionSemibold : Type::CaptionMedium);
    }
    return quillfen::font(isStrong(m_style) ? Type::BodySemibold : Type::BodyMedium);
}

int Button::leadingWidth() const
{
    if (m_running) {
        return spinnerSize + spinnerGap;
    }
    return m_icon ? pictureSize + iconGap : 0;
}

/// Picture and label, centred as one where the button is wider than it asks for. Where it is narrower the padding gives
/// way before the label does.
QRect Button::contents() const
{
    const int surplus = std::max(width() - sizeHint().width(), -2 * (sidePadding(m_height) - leastPadding));
    const int left = m_icon && !m_running ? 1 + iconPadding : sidePadding(m_height);
    const int more = surplus / 2;
    return rect().adjusted(std::max(left + more, 0), 0, -sidePadding(m_height) - (surplus - more), 0);
}

QPoint Button::spinnerPlace() const
{
    const QRect place(contents().left(), (height() - spinnerSize) / 2, spinnerSize, spinnerSize);
    return mirrored(*this, place).toRect().topLeft();
}

void Button::paintEvent(QPaintEvent *)
{
    const ButtonLooks all = looksOf(m_style);
    const ButtonLook look = !isEnabled() ? all.disabled
                            : isDown()   ? all.pressed
                                         : between(all.normal, all.hover, m_hover->share());
    QPainter painter(this);
    paintSurface(painter, rect(), radius, look.fill, look.line);
    if (look.innerLine.isValid()) {
        paintSurface(painter, rect().adjusted(1, 1, -1, -1), radius - 1, {}, look.innerLine, 2);
    }

    QRect area = contents();
    if (m_icon && !m_running) {
        const QColor colour = !isEnabled() || isDark(m_style) || isStrong(m_style) ? look.label : Theme::text;
        const QRect picture(area.left(), (height() - pictureSize) / 2, pictureSize, pictureSize);
        paintIcon(painter, *m_icon, mirrored(*this, picture), colour);
    }
    area.setLeft(area.left() + leadingWidth());
    painter.setFont(labelFont());
    painter.setPen(look.label);
    const QFontMetrics metrics(labelFont());
    const QString label = metrics.horizontalAdvance(text()) <= area.width()
                              ? text()
                              : metrics.elidedText(text(), Qt::ElideRight, area.width());
    drawLine(painter, mirrored(*this, area), Qt::AlignLeft | Qt::AlignVCenter, label);
}

void Button::changeEvent(QEvent *event)
{
    QAbstractButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange) {
        update();
    }
}

void Button::keyPressEvent(QKeyEvent *event)
{
    if (!pressByEnter(*this, *event)) {
        QAbstractButton::keyPressEvent(event);
    }
}

void Button::resizeEvent(QResizeEvent *event)
{
    QAbstractButton::resizeEvent(event);
    if (m_spinner != nullptr) {
        m_spinner->move(spinnerPlace());
    }
}

void Button::showEvent(QShowEvent *event)
{
    QAbstractButton::showEvent(event);
    watchWindow();
}

void Button::hideEvent(QHideEvent *event)
{
    QAbstractButton::hideEvent(event);
    watchWindow();
}

/// The default button hears of every Enter that nobody else in its window takes.
void Button::watchWindow()
{
    if (m_window != nullptr) {
        m_window->removeEventFilter(this);
    }
    m_window = m_default && isVisible() ? window() : nullptr;
    if (m_window != nullptr) {
        m_window->installEventFilter(this);
    }
}

bool Button::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_window || event->type() != QEvent::KeyPress) {
        return QAbstractButton::eventFilter(watched, event);
    }
    return isEnabled() && pressByEnter(*this, *static_cast<QKeyEvent *>(event));
}

} // namespace quillfen
