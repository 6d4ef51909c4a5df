// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/dates/datetimefield.h"

#include "ui/dates/calendarpopup.h"
#include "ui/paint/icons.h"
#include "ui/paint/paint.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace quillfen {

namespace {

constexpr int iconSize = 16;
constexpr int gap = 8;
constexpr int padding = 12;

QString formatWith(const QString &note)
{
    const QString format = u"MMM d, yyyy · HH:mm"_s;
    QString quoted = note;
    quoted.remove(u'\'');
    return quoted.isEmpty() ? format : format + u" '"_s + quoted + u"'"_s;
}

/// The moment at which the clock shows this. Where it does so twice, at the end of summer time, the one in the same
/// half of the year as `before`: a minute more is a minute later, and not an hour earlier.
QDateTime momentAt(const QDate &date, const QTime &time, const QDateTime &before)
{
    const QDateTime moment(date, time);
    const QDateTime other = moment.addSecs(moment.offsetFromUtc() - before.offsetFromUtc());
    const bool isThereTwice = other.date() == date && other.time() == time;
    return isThereTwice && other.offsetFromUtc() == before.offsetFromUtc() ? other : moment;
}

} // namespace

DateTimeField::DateTimeField(const QString &accessibleName, int height, QWidget *parent)
    : QDateTimeEdit(parent), m_height(height)
{
    setAccessibleName(accessibleName);
    setFont(quillfen::font(Type::Body));
    setButtonSymbols(NoButtons);
    setFrame(false);
    setKeyboardTracking(false);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_MacShowFocusRect, false);
    setMouseTracking(true);
    setProperty("ownFocus", true);
    // Qt turns the parts of the format round with the layout; what counts is the language that the parts are in.
    setLayoutDirection(locale().textDirection());
    setDisplayFormat(formatWith({}));
    setFixedHeight(scaled(height));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    lineEdit()->setFrame(false);
    applyColours();
    connect(this, &QDateTimeEdit::dateTimeChanged, this, &DateTimeField::take);
}

void DateTimeField::setDark(bool dark)
{
    m_dark = dark;
    setProperty("darkSurface", dark);
    applyColours();
}

void DateTimeField::showMoment(const QDateTime &moment)
{
    m_moment = moment;
    const QSignalBlocker silent(this);
    setDateTime(moment);
}

void DateTimeField::setNote(const QString &note)
{
    if (m_note != note) {
        m_note = note;
        const QSignalBlocker silent(this);
        const int part = currentSectionIndex();
        const bool isSelected = lineEdit()->hasSelectedText();
        setDisplayFormat(formatWith(note));
        goTo(part, isSelected);
    }
}

/// Another format begins at its first part. The field believes in a part when the cursor moves there, and so the cursor
/// comes from where no part is.
void DateTimeField::goTo(int part, bool select)
{
    {
        const QSignalBlocker unnoticed(lineEdit());
        lineEdit()->setCursorPosition(static_cast<int>(text().size()));
    }
    setCurrentSectionIndex(part);
    if (select) {
        setSelectedSection(sectionAt(part));
    }
}

QSize DateTimeField::sizeHint() const
{
    const int text = fontMetrics().horizontalAdvance(QDateTimeEdit::text());
    return {2 * padding + text + gap + iconSize, height()};
}

QSize DateTimeField::minimumSizeHint() const
{
    return {2 * padding + iconSize + scaled(80), height()};
}

bool DateTimeField::isMirrored() const
{
    return parentWidget() != nullptr && parentWidget()->isRightToLeft();
}

QRect DateTimeField::iconRect() const
{
    const int x = isMirrored() ? padding : width() - padding - iconSize;
    return {x, (height() - iconSize) / 2, iconSize, iconSize};
}

void DateTimeField::applyColours()
{
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Qt::transparent);
    colours.setColor(QPalette::Text, m_dark ? Theme::dBright : Theme::heading);
    setPalette(colours);
    lineEdit()->setPalette(colours);
    update();
}

void DateTimeField::take(const QDateTime &shown)
{
    QTime time = shown.time();
    // The field knows minutes only: the second stays what it was.
    time = QTime(time.hour(), time.minute(), m_moment.time().second(), m_moment.time().msec());
    const bool isSame = shown.date() == m_moment.date() && time == m_moment.time();
    if (!isSame) {
        Q_EMIT edited(momentAt(shown.date(), time, m_moment));
    }
}

void DateTimeField::showCalendar()
{
    if (m_calendar && m_calendar->isVisible()) {
        return;
    }
    m_calendar = new CalendarPopup(date(), m_dark, this);
    connect(m_calendar, &CalendarPopup::chosen, this, [this](const QDate &day) { setDate(day); });
    m_calendar->show();
}

void DateTimeField::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QColor border = m_dark ? Theme::dMuted : Theme::muted;
    const bool focused = hasFocus() || lineEdit()->hasFocus();
    if (focused) {
        border = m_dark ? Theme::accent : Theme::ok;
    } else if (underMouse()) {
        border = m_dark ? Theme::dText : Theme::text;
    }
    paintSurface(painter, rect(), 6, m_dark ? Theme::dPanel : Theme::bg, border, focused ? 2 : 1);
    paintIcon(painter, Icon::Calendar, iconRect(), m_dark ? Theme::dText : Theme::text);
}

void DateTimeField::resizeEvent(QResizeEvent *event)
{
    QDateTimeEdit::resizeEvent(event);
    const QRect icon = iconRect();
    const int left = isMirrored() ? icon.right() + gap : padding - 2;
    const int right = isMirrored() ? width() - padding + 2 : icon.left() - gap;
    lineEdit()->setGeometry(left, 2, right - left, height() - 4);
}

void DateTimeField::keyPressEvent(QKeyEvent *event)
{
    const bool alt = (event->modifiers() & Qt::AltModifier) != 0;
    if (event->key() == Qt::Key_F4 || (alt && event->key() == Qt::Key_Down)) {
        showCalendar();
        return;
    }
    const QString text = event->text();
    m_typed = text.isEmpty() ? QChar() : text.front();
    const int before = currentSectionIndex();
    m_inKey = true;
    QDateTimeEdit::keyPressEvent(event);
    m_inKey = false;
    m_arrived = m_typed.isPrint() && (currentSectionIndex() > before || (m_arrived && !m_typed.isLetterOrNumber()));
}

void DateTimeField::mousePressEvent(QMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    const int edge = iconRect().center().x();
    const bool onIcon = qAbs(static_cast<int>(event->position().x()) - edge) <= padding + iconSize / 2;
    if (event->button() == Qt::LeftButton && onIcon) {
        showCalendar();
    }
}

void DateTimeField::mouseMoveEvent(QMouseEvent *)
{
    setCursor(Qt::ArrowCursor);
}

/// Tab leaves: the field is one stop, not five. A colon or a space that is typed asks for the same, and means the next
/// part, unless that was reached already, by the part before being complete or by the comma before the space.
bool DateTimeField::focusNextPrevChild(bool next)
{
    if (!m_inKey) {
        return QWidget::focusNextPrevChild(next); // NOLINT(bugprone-parent-virtual-call): past the five parts
    }
    const int section = currentSectionIndex() + (next ? 1 : -1);
    const bool isThere = m_arrived && m_typed.isPrint();
    return isThere || section < 0 || section >= sectionCount() || QDateTimeEdit::focusNextPrevChild(next);
}

void DateTimeField::wheelEvent(QWheelEvent *event)
{
    event->ignore(); // scrolling the board over it does no harm
}

} // namespace quillfen
