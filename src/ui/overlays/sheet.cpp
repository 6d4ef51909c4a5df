// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/overlays/sheet.h"

#include "ui/accessible.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/overlays/scrim.h"
#include "ui/paint/paint.h"
#include "ui/paint/shadow.h"
#include "ui/parts/scrollarea.h"
#include "ui/style/fade.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QApplication>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

namespace {

constexpr int panelWidth = 504;
constexpr int radius = 12;
constexpr int fromTop = 52;
constexpr int leastMargin = 24;
constexpr int formMargin = 28 - sheetOverhang;
constexpr int line = 1;
constexpr auto fadeTime = 180ms;

/// The sheet that `widget` stands in, if any.
const Sheet *sheetOf(const QWidget *widget)
{
    while (widget && !qobject_cast<const Sheet *>(widget)) {
        widget = widget->parentWidget();
    }
    return qobject_cast<const Sheet *>(widget);
}

} // namespace

Sheet::Sheet(QWidget *window, QWidget *content)
    : QWidget(window), m_scrim(new Scrim(window)), m_before(window->focusWidget()), m_form(new QWidget),
      m_scroll(new ScrollArea(this)), m_footBand(new QWidget(this)),
      m_footLayout(row({Stretch{}}, 8, {28, 16, 28, 20})), m_fade(new Fade(this, fadeTime))
{
    setModalDialog(this);
    setAccessibleName(content->accessibleName());
    m_form->setLayout(column({content}, 0, {formMargin, 24, formMargin, 20}));
    m_scroll->setWidget(m_form);
    m_form->setAutoFillBackground(false); // as the scroll area has given it: it would square the panel's corners
    m_footBand->setLayout(m_footLayout);
    QBoxLayout *parts = column({Item{m_scroll, 1}, m_footBand});
    parts->setContentsMargins(sheetShadow.margins() + line);
    setLayout(parts);

    window->installEventFilter(this);
    m_form->installEventFilter(this);
    m_footBand->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { keepFocus(now); });
    // Whoever makes the sheet may yet add buttons and choose where the focus starts.
    QMetaObject::invokeMethod(this, &Sheet::focusFirst, Qt::QueuedConnection);

    takeOver();
    place();
    raise();
    raiseAboveScrim(window);
    m_fade->fadeIn();
}

/// Takes from a screen reader what the scrim takes from the mouse.
void Sheet::takeOver()
{
    const auto children = window()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        const bool isOurs = child == this || child == m_scrim || child->property("aboveScrim").toBool();
        if (!isOurs && !child->isWindow() && !child->testAttribute(Qt::WA_TransparentForMouseEvents) &&
            !isInert(child)) {
            setInert(child, true);
            m_beneath.emplace_back(child);
        }
    }
}

void Sheet::giveBack()
{
    for (const QPointer<QWidget> &widget : std::exchange(m_beneath, {})) {
        if (widget) {
            setInert(widget, false);
        }
    }
    giveFocusBack();
}

Sheet::~Sheet()
{
    giveBack();
    if (m_scrim) {
        m_scrim->leave();
    }
}

void Sheet::leave()
{
    giveBack();
    if (m_scrim) {
        m_scrim->leave();
    }
    m_scrim.clear();
    setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(m_fade, &Fade::hidden, this, &QObject::deleteLater);
    m_fade->fadeOut();
    if (isHidden()) {
        deleteLater(); // the window itself is not on the screen
    }
}

void Sheet::giveFocusBack()
{
    if (m_leaving) {
        return;
    }
    m_leaving = true;
    const QWidget *focused = window()->focusWidget();
    if (focused && focused != this && !isAncestorOf(focused)) {
        return; // somebody else has it already
    }
    if (m_before && m_before->isEnabled() && m_before->isVisible()) {
        m_before->setFocus(Qt::PopupFocusReason);
    } else if (focused) {
        const_cast<QWidget *>(focused)->clearFocus();
    }
}

QRect Sheet::panelRect() const
{
    const QWidget *window = parentWidget();
    const int wide = std::min(scaled(panelWidth), window->width() - 2 * leastMargin);
    const int foot = m_footBand->isHidden() ? 0 : m_footBand->sizeHint().height();
    const int form = m_form->layout()->hasHeightForWidth() ? m_form->layout()->heightForWidth(wide - 2 * line)
                                                           : m_form->sizeHint().height();
    const int wanted = form + foot + 2 * line;
    const bool low = wanted > window->height() - fromTop - leastMargin;
    const int top = low ? leastMargin : fromTop;
    return {(window->width() - wide) / 2, top, wide, std::min(wanted, window->height() - 2 * leastMargin)};
}

void Sheet::place()
{
    m_footBand->setVisible(m_footLayout->count() > 1);
    setGeometry(panelRect().marginsAdded(sheetShadow.margins()));
    update();
}

bool Sheet::takesFocus(const QWidget *widget) const
{
    return isAncestorOf(widget) && (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isEnabled() &&
           widget->isVisibleTo(this) && !widget->focusProxy();
}

QWidget *Sheet::nextFocus(QWidget *from, bool forward) const
{
    for (QWidget *widget = forward ? from->nextInFocusChain() : from->previousInFocusChain(); widget != from;
         widget = forward ? widget->nextInFocusChain() : widget->previousInFocusChain()) {
        if (takesFocus(widget)) {
            return widget;
        }
    }
    return nullptr;
}

void Sheet::focusFirst()
{
    const QWidget *focused = window()->focusWidget();
    if (m_leaving || (focused && isAncestorOf(focused))) {
        return;
    }
    QWidget *first = nextFocus(this, true);
    (first ? first : this)->setFocus(Qt::TabFocusReason);
}

void Sheet::keepFocus(QWidget *now)
{
    if (m_leaving || !now || now == this || now->window() != window()) {
        return;
    }
    const Sheet *sheet = sheetOf(now);
    if (sheet == this) {
        m_inside = now;
    } else if (!sheet && m_inside && takesFocus(m_inside)) {
        m_inside->setFocus(Qt::OtherFocusReason);
    } else if (!sheet) {
        focusFirst();
    }
}

bool Sheet::focusNextPrevChild(bool next)
{
    QWidget *from = window()->focusWidget();
    QWidget *to = nextFocus(from && isAncestorOf(from) ? from : this, next);
    if (to) {
        to->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    }
    return true;
}

void Sheet::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        Q_EMIT dismissed();
    } else {
        QWidget::keyPressEvent(event);
    }
}

bool Sheet::eventFilter(QObject *watched, QEvent *event)
{
    const bool resized = watched == parentWidget() && event->type() == QEvent::Resize;
    const bool rearranged = (watched == m_form || watched == m_footBand) && event->type() == QEvent::LayoutRequest;
    const bool footChanged = watched == m_footBand && event->type() == QEvent::ChildAdded;
    if (resized || rearranged || footChanged) {
        QMetaObject::invokeMethod(this, &Sheet::place, resized ? Qt::DirectConnection : Qt::QueuedConnection);
    }
    return QWidget::eventFilter(watched, event);
}

void Sheet::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRectF panel = QRectF(rect()).marginsRemoved(sheetShadow.margins());
    paintShadow(painter, panel, radius, sheetShadow);
    paintSurface(painter, panel, radius, Theme::bg, Theme::line);
    if (!m_footBand->isHidden()) {
        paintHairline(painter, QRectF(panel.left(), m_footBand->y(), panel.width(), 1), Theme::line);
    }
}

} // namespace quillfen
