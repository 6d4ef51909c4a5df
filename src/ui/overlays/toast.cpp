// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/overlays/toast.h"

#include "ui/accessible.h"
#include "ui/paint/paint.h"
#include "ui/paint/shadow.h"
#include "ui/style/fade.h"
#include "ui/text/agenttext.h"
#include "ui/text/paragraph.h"
#include "ui/text/tooltip.h"
#include "ui/theme.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int toastHeight = 40;
constexpr int radius = 10;
constexpr int padding = 18;
constexpr int fromBottom = 24;
constexpr int fromSides = 96; ///< both sides together
constexpr int fadeTime = 150;

Paragraph lineOf(const QString &text)
{
    return {.text = lineOfAgentText(text), .type = Type::Body};
}

} // namespace

/// Lies under the toast, so that a click beside the toast reaches what is there.
class ToastShadow final : public QWidget {
public:
    explicit ToastShadow(QWidget *window) : QWidget(window)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

    void setOpacity(qreal opacity)
    {
        m_opacity = opacity;
        setVisible(opacity > 0.0);
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setOpacity(m_opacity);
        paintShadow(painter, QRectF(rect()).marginsRemoved(popupShadow.margins()), radius, popupShadow);
    }

private:
    qreal m_opacity = 0.0;
};

Toast::Toast(QWidget *window) : QWidget(window), m_shadow(new ToastShadow(window))
{
    setFocusPolicy(Qt::NoFocus);
    setRole(this, QAccessible::AlertMessage);
    setProperty("aboveScrim", true); // an outcome stays readable when a sheet opens over it
    m_fade.setDuration(fadeTime);
    connect(&m_fade, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &opacity) { setOpacity(opacity.toReal()); });
    hide();
    window->installEventFilter(this);
}

void Toast::setText(const QString &text)
{
    if (m_text == text) {
        return;
    }
    m_text = text;
    if (text.isEmpty()) {
        fadeTo(0.0);
        return;
    }
    m_line = text;
    setAccessibleName(madeVisible(text));
    place();
    m_shadow->raise();
    raise();
    show();
    update();
    fadeTo(1.0);
    announce(this, text);
}

void Toast::fadeTo(qreal opacity)
{
    m_fade.stop();
    if (reducedMotion() || !isVisible() || m_opacity == opacity) {
        setOpacity(opacity);
        return;
    }
    m_fade.setStartValue(m_opacity);
    m_fade.setEndValue(opacity);
    m_fade.start();
}

void Toast::setOpacity(qreal opacity)
{
    m_opacity = opacity;
    m_shadow->setOpacity(opacity);
    setVisible(opacity > 0.0 || !m_text.isEmpty());
    update();
}

void Toast::place()
{
    const QWidget *window = parentWidget();
    const int room = std::max(2 * padding, window->width() - fromSides);
    const int wide = std::min(naturalWidth(lineOf(m_line), room) + 2 * padding, room);
    const int high = scaled(toastHeight);
    const QRect box((window->width() - wide) / 2, window->height() - fromBottom - high, wide, high);
    setGeometry(box);
    m_shadow->setGeometry(box.marginsAdded(popupShadow.margins()));
}

void Toast::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setOpacity(m_opacity);
    paintSurface(painter, rect(), radius, Theme::dPanel, Theme::dLine);
    paintParagraph(painter, lineOf(m_line), QRectF(rect()).adjusted(padding, 0, -padding, 0), Theme::dBright);
}

void Toast::mousePressEvent(QMouseEvent *event)
{
    event->accept(); // what lies below the toast is not what was meant
}

bool Toast::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const bool elided = isElided(lineOf(m_line), width() - 2 * padding);
        showPlainToolTip(static_cast<QHelpEvent *>(event)->globalPos(), elided ? m_text : QString(), this);
        return true;
    }
    return QWidget::event(event);
}

bool Toast::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize && !m_line.isEmpty()) {
        place();
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace quillfen
