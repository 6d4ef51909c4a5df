// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/overlays/scrim.h"

#include "ui/style/fade.h"
#include "ui/theme.h"

#include <QEvent>
#include <QPainter>

namespace quillfen {

namespace {

constexpr int fadeTime = 150;
constexpr float strength = 0.42F;

} // namespace

Scrim::Scrim(QWidget *window) : QWidget(window)
{
    setGeometry(window->rect());
    window->installEventFilter(this);
    connect(&m_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant &opacity) {
        m_opacity = opacity.toReal();
        update();
    });
    connect(&m_fade, &QVariantAnimation::finished, this, [this] {
        if (m_leaving) {
            deleteLater();
        }
    });
    raise();
    raiseAboveScrim(window);
    show();
    fadeTo(1.0);
}

void Scrim::leave()
{
    if (m_leaving) {
        return;
    }
    m_leaving = true;
    setAttribute(Qt::WA_TransparentForMouseEvents);
    fadeTo(0.0);
}

void Scrim::fadeTo(qreal opacity)
{
    m_fade.stop();
    m_fade.setStartValue(m_opacity);
    m_fade.setEndValue(opacity);
    m_fade.setDuration(reducedMotion() ? 0 : fadeTime); // at once, and it still tells that it has finished
    m_fade.start();
}

void Scrim::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::faded(Theme::dBg, strength * static_cast<float>(m_opacity)));
}

bool Scrim::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::ToolTip:
        event->accept(); // ends here, instead of going on to the window
        return true;
    default:
        return QWidget::event(event);
    }
}

bool Scrim::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
    }
    return QWidget::eventFilter(watched, event);
}

void raiseAboveScrim(QWidget *window)
{
    const auto children = window->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        if (child->property("aboveScrim").toBool()) {
            child->raise();
        }
    }
}

} // namespace quillfen
