// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/style/hoverfade.h"

#include "ui/style/fade.h"

#include <QEvent>
#include <QWidget>

namespace quillfen {
namespace {

constexpr int duration = 100; // milliseconds

} // namespace

HoverFade::HoverFade(QWidget *widget) : QObject(widget), m_widget(widget)
{
    m_animation.setDuration(duration);
    m_animation.setStartValue(0.0);
    m_animation.setEndValue(1.0);
    connect(&m_animation, &QVariantAnimation::valueChanged, widget, qOverload<>(&QWidget::update));
    widget->installEventFilter(this);
}

qreal HoverFade::share() const
{
    return m_animation.currentValue().toReal();
}

bool HoverFade::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Enter) {
        run(true);
    } else if (event->type() == QEvent::Leave) {
        run(false);
    }
    return false;
}

void HoverFade::run(bool inside)
{
    m_animation.setDirection(inside ? QAbstractAnimation::Forward : QAbstractAnimation::Backward);
    if (reducedMotion() || !m_widget->isEnabled()) {
        m_animation.stop();
        m_animation.setCurrentTime(inside ? duration : 0);
        m_widget->update();
    } else if (m_animation.state() != QAbstractAnimation::Running) {
        m_animation.start();
    }
}

} // namespace quillfen
