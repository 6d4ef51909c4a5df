// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/dates/calendarpopup.h"

#include "ui/layout.h"
#include "ui/paint/icons.h"
#include "ui/paint/paint.h"
#include "ui/paint/roundmask.h"
#include "ui/system/compositing.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <QTextCharFormat>
#include <QToolButton>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int padding = 8;
constexpr int radius = 10;
constexpr int gap = 4; // between the field and its calendar
constexpr int arrowSize = 16;
constexpr int dayWidth = 36;
constexpr int dayHeight = 30;

struct Look {
    QColor surface;
    QColor line;
    QColor text;
    QColor quiet;
};

Look look(bool dark)
{
    return dark ? Look{Theme::dPanel, Theme::dLine, Theme::dBright, Theme::dText}
                : Look{Theme::bg, Theme::line, Theme::heading, Theme::text};
}

QTextCharFormat coloured(const QColor &text, const QColor &surface)
{
    QTextCharFormat format;
    format.setForeground(text);
    format.setBackground(surface);
    return format;
}

/// The drawing of a chevron that points to the left or to the right.
QIcon arrow(bool left, const QColor &colour)
{
    QPixmap pixmap(arrowSize * 2, arrowSize * 2);
    pixmap.fill(Qt::transparent);
    {
        QPainter painter(&pixmap);
        paintIcon(painter, Icon::ChevronRight, QRectF(pixmap.rect()), colour);
    }
    if (left) {
        pixmap = pixmap.transformed(QTransform::fromScale(-1, 1));
    }
    pixmap.setDevicePixelRatio(2);
    return QIcon(pixmap);
}

/// Days are drawn by hand: the calendar's own cells know neither hover nor round corners.
class Month final : public QCalendarWidget {
public:
    explicit Month(const Look &colours) : m_look(colours)
    {
        setVerticalHeaderFormat(NoVerticalHeader);
        setHorizontalHeaderFormat(SingleLetterDayNames);
        setGridVisible(false);
        setFont(quillfen::font(Type::Body));
        setHeaderTextFormat(coloured(m_look.quiet, m_look.surface));
        for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) {
            setWeekdayTextFormat(day, coloured(m_look.text, m_look.surface));
        }
        setMinimumSize(scaled(7 * dayWidth), scaled(8 * dayHeight));
        colourAll();
        giveArrows();
    }

protected:
    void paintCell(QPainter *painter, const QRect &rect, QDate date) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->fillRect(rect, m_look.surface);
        const bool chosen = date == selectedDate();
        QColor text = date.month() == monthShown() ? m_look.text : Theme::faded(m_look.quiet, 0.6F);
        if (chosen || date == QDate::currentDate()) {
            paintSurface(*painter, QRectF(rect).adjusted(2, 2, -2, -2), 6, chosen ? Theme::accent : QColor(),
                         chosen ? QColor() : m_look.quiet);
            text = chosen ? Theme::onAccent : text;
        }
        painter->setPen(text);
        painter->drawText(rect, Qt::AlignCenter, locale().toString(date.day()));
        painter->restore();
    }

private:
    void colourAll()
    {
        QPalette colours = palette();
        for (const auto role : {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button}) {
            colours.setColor(role, m_look.surface);
        }
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
            colours.setColor(role, m_look.text);
        }
        // The bar above the days is drawn in the colour of a selection.
        colours.setColor(QPalette::Highlight, m_look.surface);
        colours.setColor(QPalette::HighlightedText, m_look.text);
        setPalette(colours);
        for (QWidget *const part : findChildren<QWidget *>()) {
            part->setPalette(colours);
        }
    }

    void giveArrows()
    {
        const auto give = [this](const QString &name, bool left, const QString &accessibleName) {
            if (auto *const button = findChild<QToolButton *>(name)) {
                button->setIcon(arrow(left, m_look.quiet));
                button->setIconSize({arrowSize, arrowSize});
                button->setAccessibleName(accessibleName);
                button->setToolTip(accessibleName);
            }
        };
        give(QStringLiteral("qt_calendar_prevmonth"), !isRightToLeft(), CalendarPopup::tr("Previous month"));
        give(QStringLiteral("qt_calendar_nextmonth"), isRightToLeft(), CalendarPopup::tr("Next month"));
    }

    Look m_look;
};

} // namespace

CalendarPopup::CalendarPopup(const QDate &day, bool dark, QWidget *field)
    : QFrame(field, Qt::Popup | Qt::FramelessWindowHint), m_month(new Month(look(dark))), m_dark(dark)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_TranslucentBackground, isComposited()); // else its corners would be black
    setProperty("ownFocus", true);
    m_month->setSelectedDate(day);
    setLayout(column({m_month}, 0, QMargins(padding, padding, padding, padding)));
    connect(m_month, &QCalendarWidget::activated, this, &CalendarPopup::chosen);
    connect(m_month, &QCalendarWidget::clicked, this, &CalendarPopup::chosen);
    connect(this, &CalendarPopup::chosen, this, &QWidget::close);
    place(field);
    m_month->setFocus();
}

void CalendarPopup::place(const QWidget *field)
{
    adjustSize();
    const QRect screen = field->screen()->availableGeometry();
    const int left = isRightToLeft() ? 0 : field->width() - width(); // below the field's own picture
    QPoint corner = field->mapToGlobal(QPoint(left, field->height() + gap));
    if (corner.y() + height() > screen.bottom()) {
        corner.setY(field->mapToGlobal(QPoint(0, -gap)).y() - height());
    }
    corner.setX(std::clamp(corner.x(), screen.left(), std::max(screen.left(), screen.right() - width())));
    move(corner);
}

void CalendarPopup::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_F4) {
        close();
        return;
    }
    QFrame::keyPressEvent(event);
}

void CalendarPopup::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    if (!testAttribute(Qt::WA_TranslucentBackground)) {
        cutRoundCorners(this, radius);
    }
}

void CalendarPopup::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const Look colours = look(m_dark);
    if (!testAttribute(Qt::WA_TranslucentBackground)) {
        painter.fillRect(rect(), colours.line); // where the mask's steps lie outside the smooth corner
    }
    paintSurface(painter, rect(), radius, colours.surface, colours.line);
}

} // namespace quillfen
