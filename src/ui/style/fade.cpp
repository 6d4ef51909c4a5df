// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/style/fade.h"

#include "ui/system/systemmotion.h"

#include <QGraphicsOpacityEffect>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

namespace quillfen {
namespace {

std::optional<bool> &chosenMotion()
{
    static std::optional<bool> chosen;
    return chosen;
}

/// The picture of what was there, above what is there now.
class Afterimage final : public QWidget {
public:
    Afterimage(QWidget *area, std::chrono::milliseconds duration) : QWidget(area), m_picture(area->grab())
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(area->rect());
        m_animation.setDuration(static_cast<int>(duration.count()));
        m_animation.setStartValue(1.0);
        m_animation.setEndValue(0.0);
        connect(&m_animation, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
        connect(&m_animation, &QVariantAnimation::finished, this, &QObject::deleteLater);
        show();
        raise();
        m_animation.start();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setOpacity(m_animation.currentValue().toReal());
        painter.drawPixmap(0, 0, m_picture);
    }

private:
    QPixmap m_picture;
    QVariantAnimation m_animation;
};

} // namespace

bool reducedMotion()
{
    return chosenMotion() ? *chosenMotion() : systemReducesMotion();
}

void setReducedMotion(std::optional<bool> reduced)
{
    chosenMotion() = reduced;
}

Fade::Fade(QWidget *target, std::chrono::milliseconds duration) : QObject(target), m_target(target)
{
    m_animation.setDuration(static_cast<int>(duration.count()));
    connect(&m_animation, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &value) { setOpacity(value.toReal()); });
    connect(&m_animation, &QVariantAnimation::finished, this, &Fade::finish);
}

void Fade::fadeIn()
{
    if (m_target->isHidden()) {
        setOpacity(0.0);
    }
    m_target->show();
    run(1.0);
}

void Fade::fadeOut()
{
    if (!m_target->isHidden()) {
        run(0.0);
    }
}

void Fade::run(qreal to)
{
    m_animation.stop();
    m_animation.setStartValue(m_opacity);
    m_animation.setEndValue(to);
    // A target nobody sees has nothing to show on the way.
    if (reducedMotion() || !m_target->isVisible()) {
        setOpacity(to);
        finish();
        return;
    }
    m_animation.start();
}

void Fade::finish()
{
    const bool gone = m_animation.endValue().toReal() == 0.0;
    if (gone) {
        m_target->hide();
        setOpacity(1.0);
        Q_EMIT hidden();
    } else {
        Q_EMIT shown();
    }
}

void Fade::setOpacity(qreal opacity)
{
    m_opacity = opacity;
    if (opacity >= 1.0) {
        m_target->setGraphicsEffect(nullptr);
        return;
    }
    auto *effect = qobject_cast<QGraphicsOpacityEffect *>(m_target->graphicsEffect());
    if (effect == nullptr) {
        effect = new QGraphicsOpacityEffect(m_target);
        m_target->setGraphicsEffect(effect);
    }
    effect->setOpacity(opacity);
}

void crossFade(QWidget *area, std::chrono::milliseconds duration)
{
    if (area->isVisible() && !reducedMotion()) {
        new Afterimage(area, duration); // deletes itself when it has faded
    }
}

} // namespace quillfen
