// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/style/focusring.h"

#include "ui/paint/paint.h"
#include "ui/theme.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QFocusEvent>
#include <QPainter>
#include <QPointer>
#include <QVariant>

#include <algorithm>
#include <vector>

namespace quillfen {
namespace {

constexpr int gap = 2;
constexpr int lineWidth = 2;
constexpr int reach = gap + lineWidth;
constexpr int usualRadius = 6;

bool isOnDark(const QWidget *widget)
{
    for (; widget != nullptr; widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
        const QVariant dark = widget->property("darkSurface");
        if (dark.isValid()) {
            return dark.toBool();
        }
    }
    return false;
}

/// The part of its window in which a widget can be seen: what the scroll areas around it show.
QRect visiblePart(const QWidget *widget)
{
    const QWidget *window = widget->window();
    QRect part = window->rect();
    for (const QWidget *each = widget->parentWidget(); each != nullptr && each != window; each = each->parentWidget()) {
        const auto *area = qobject_cast<QAbstractScrollArea *>(each->parentWidget());
        if (area != nullptr && area->viewport() == each) {
            part &= QRect(each->mapTo(window, QPoint(0, 0)), each->size());
        }
    }
    return part;
}

/// The ring itself, above everything else in the window of its widget, as large as what can be seen of it.
class Ring final : public QWidget {
public:
    explicit Ring(QWidget *window) : QWidget(window)
    {
        setObjectName(QStringLiteral("focusRing"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        setFocusPolicy(Qt::NoFocus);
    }

    void surround(const QWidget *widget)
    {
        const QPoint place = widget->mapTo(widget->window(), QPoint(0, 0));
        m_outline = QRect(place, widget->size()).adjusted(-reach, -reach, reach, reach);
        const QVariant radius = widget->property("focusRadius");
        m_radius = (radius.isValid() ? radius.toInt() : usualRadius) + 3;
        m_colour = isOnDark(widget) ? Theme::accent : Theme::ok;
        const QRect part = m_outline & visiblePart(widget);
        setVisible(!part.isEmpty());
        setGeometry(part);
        raise();
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        paintSurface(painter, m_outline.translated(-pos()), m_radius, {}, m_colour, lineWidth);
    }

private:
    QRect m_outline; ///< in the window
    int m_radius = usualRadius + 3;
    QColor m_colour;
};

/// Knows which widget has focus and whether it came by keyboard, and keeps the ring on it.
class RingKeeper final : public QObject {
public:
    explicit RingKeeper(QApplication &application) : QObject(&application)
    {
        application.installEventFilter(this);
        connect(&application, &QApplication::focusChanged, this, &RingKeeper::follow);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::KeyPress:
            m_byKeyboard = true;
            break;
        case QEvent::MouseButtonPress:
        case QEvent::TouchBegin:
            m_byKeyboard = false;
            break;
        case QEvent::FocusIn:
            noteReason(static_cast<QFocusEvent *>(event)->reason());
            break;
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::Show:
        case QEvent::Hide:
        case QEvent::ParentChange:
        case QEvent::ZOrderChange:
        case QEvent::DynamicPropertyChange:
            if (m_shown && isOnTheWay(watched)) {
                replaceSoon();
            }
            break;
        default:
            break;
        }
        return false;
    }

private:
    /// Focus that a program gives away (a sheet opens, an arrow key moves on) belongs to the hand that made it do so.
    void noteReason(Qt::FocusReason reason)
    {
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason) {
            m_byKeyboard = true;
        } else if (reason == Qt::MouseFocusReason) {
            m_byKeyboard = false;
        }
    }

    void follow(QWidget *, QWidget *now)
    {
        // A window that comes back shows its ring again when it had one, whatever brought it back.
        const bool shows = m_byKeyboard || (now != nullptr && now == m_lastShown);
        m_widget = now;
        m_shown = now != nullptr && shows && !now->property("ownFocus").toBool() && !now->isWindow();
        if (m_shown) {
            m_lastShown = now;
        } else if (now != nullptr) {
            m_lastShown = nullptr;
        }
        noteAncestors();
        replace();
    }

    void noteAncestors()
    {
        m_way.clear();
        if (!m_shown) {
            return;
        }
        for (QWidget *each = m_widget; each != nullptr; each = each->isWindow() ? nullptr : each->parentWidget()) {
            m_way.push_back(each);
        }
    }

    [[nodiscard]] bool isOnTheWay(const QObject *object) const
    {
        return std::find(m_way.begin(), m_way.end(), object) != m_way.end();
    }

    /// After the event: what it tells of has happened by then, and a layout moves many widgets at once.
    void replaceSoon()
    {
        if (m_waiting) {
            return;
        }
        m_waiting = true;
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_waiting = false;
                noteAncestors();
                replace();
            },
            Qt::QueuedConnection);
    }

    void replace()
    {
        const bool visible = m_shown && m_widget != nullptr && m_widget->isVisible();
        if (m_ring != nullptr && (!visible || m_ring->parentWidget() != m_widget->window())) {
            m_ring->hide();
        }
        if (!visible) {
            return;
        }
        if (m_ring == nullptr || m_ring->parentWidget() != m_widget->window()) {
            delete m_ring;
            m_ring = new Ring(m_widget->window());
        }
        m_ring->surround(m_widget);
    }

    bool m_byKeyboard = false;
    bool m_shown = false;
    bool m_waiting = false;
    QPointer<QWidget> m_widget;
    QPointer<QWidget> m_lastShown;
    QPointer<Ring> m_ring;
    std::vector<const QObject *> m_way; ///< the widget and its parents: whose moves move the ring
};

} // namespace

void installFocusRing(QApplication &application)
{
    new RingKeeper(application); // the application's own
}

} // namespace quillfen
