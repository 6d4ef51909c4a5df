// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/card.h"

#include "ui/paint/paint.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QChildEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int cornerRadius = 12;

/// The body between its bands: rounded where it ends the card.
QPainterPath bodyPath(const QRectF &rect, bool roundAbove, bool roundBelow)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRoundedRect(rect, cornerRadius, cornerRadius);
    const QSizeF half(rect.width(), rect.height() / 2);
    if (!roundAbove) {
        path.addRect(QRectF(rect.topLeft(), half));
    }
    if (!roundBelow) {
        path.addRect(QRectF(QPointF(rect.left(), rect.center().y()), half));
    }
    return path;
}

/// Whether a child is meant to show, also while its parent does not.
bool isWanted(const QWidget *child)
{
    return !child->isHidden() || !child->testAttribute(Qt::WA_WState_ExplicitShowHide);
}

/// A part of the card that is there while it has something to show.
class Part : public QWidget {
public:
    using QWidget::QWidget;

protected:
    /// After the event: a child that is only just being added must not be shown yet, and a layout that is hidden asks
    /// for nothing at all, so the children themselves are listened to.
    void fitSoon()
    {
        QMetaObject::invokeMethod(
            this, [this] { fit(); }, Qt::QueuedConnection);
    }

    virtual void fit()
    {
        const auto children = findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
        setVisible(std::any_of(children.begin(), children.end(), isWanted));
        update();
    }

    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::ChildAdded) {
            static_cast<QChildEvent *>(event)->child()->installEventFilter(this);
        }
        if (event->type() == QEvent::ChildAdded || event->type() == QEvent::ChildRemoved) {
            fitSoon();
        } else if (event->type() == QEvent::LayoutRequest) {
            fit();
        }
        return QWidget::event(event);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent) {
            fitSoon();
        }
        return QWidget::eventFilter(watched, event);
    }
};

/// The title or the foot.
class Band final : public Part {
public:
    Band(int height, int heightWithButtons, const QMargins &margins, QWidget *parent)
        : Part(parent), m_height(height), m_heightWithButtons(heightWithButtons)
    {
        auto *layout = new QHBoxLayout(this);
        layout->setContentsMargins(margins);
        layout->setSpacing(8);
        hide();
    }

protected:
    void fit() override
    {
        const auto buttons = findChildren<QAbstractButton *>();
        const bool withButtons = std::any_of(buttons.begin(), buttons.end(), isWanted);
        setMinimumHeight(scaled(withButtons ? m_heightWithButtons : m_height));
        Part::fit();
    }

private:
    int m_height;
    int m_heightWithButtons;
};

/// The rows, and the hairlines between those that show.
class Body final : public Part {
public:
    Body(const QColor &line, QWidget *parent) : Part(parent), m_line(line)
    {
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins({});
        layout->setSpacing(1);
        hide();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        bool first = true;
        for (int i = 0; i < layout()->count(); ++i) {
            const QWidget *row = layout()->itemAt(i)->widget();
            if (!row || row->isHidden()) {
                continue;
            }
            if (!first) {
                paintHairline(painter, QRectF(0, row->y() - 1, width(), 1), m_line);
            }
            first = false;
        }
    }

private:
    QColor m_line;
};

} // namespace

Card::Card(bool dark, QWidget *parent)
    : QWidget(parent), m_band(new Band(44, 52, {16, 6, 16, 6}, this)),
      m_body(new Body(dark ? Theme::dLine : Theme::line, this)), m_foot(new Band(44, 52, {16, 8, 16, 8}, this)),
      m_bandLayout(qobject_cast<QBoxLayout *>(m_band->layout())),
      m_bodyLayout(qobject_cast<QBoxLayout *>(m_body->layout())),
      m_footLayout(qobject_cast<QBoxLayout *>(m_foot->layout())), m_dark(dark)
{
    setProperty("darkSurface", dark);
    auto *parts = new QVBoxLayout(this);
    parts->setContentsMargins(1, 1, 1, 1);
    parts->setSpacing(1);
    parts->addWidget(m_band);
    parts->addWidget(m_body, 1);
    parts->addWidget(m_foot);
}

void Card::addRow(QWidget *row)
{
    m_bodyLayout->addWidget(row);
}

void Card::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QColor bandFill = m_dark ? Theme::dPanel : Theme::panel;
    const QColor bodyFill = m_dark ? Theme::dBg : Theme::panel2;
    const QColor line = m_dark ? Theme::dLine : Theme::line;
    const bool withBand = !m_band->isHidden();
    const bool withFoot = !m_foot->isHidden();
    paintSurface(painter, rect(), cornerRadius, bandFill);
    if (!m_body->isHidden()) {
        const qreal below = withBand ? m_body->y() : 0;
        const qreal above = withFoot ? m_foot->y() - 1 : height();
        const QRectF body = snapped(painter, QRectF(0, below, width(), above - below));
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(bodyPath(body, !withBand, !withFoot), bodyFill);
        painter.setRenderHint(QPainter::Antialiasing, false);
        if (withBand) {
            paintHairline(painter, QRectF(0, m_body->y() - 1, width(), 1), line);
        }
    }
    if (withFoot && (withBand || !m_body->isHidden())) {
        paintHairline(painter, QRectF(0, m_foot->y() - 1, width(), 1), line);
    }
    paintSurface(painter, rect(), cornerRadius, QColor(), m_dark ? Theme::dPanel : Theme::line);
}

bool Card::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest) {
        update(); // a part came or went, and with it a hairline
    }
    return QWidget::event(event);
}

} // namespace quillfen
