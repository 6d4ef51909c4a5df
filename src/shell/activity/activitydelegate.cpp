// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/activity/activitydelegate.h"

#include "shell/activity/activitylist.h"
#include "ui/controls/spinner.h"
#include "ui/paint/direction.h"
#include "ui/paint/paint.h"
#include "ui/parts/statemark.h"
#include "ui/text/agenttext.h"
#include "ui/text/tooltip.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int plainRowHeight = 48;
constexpr int padding = 12;
constexpr int barRoom = 12; ///< at the end of the rows
constexpr int gap = 12;
constexpr int timeWidth = 56;
constexpr int outcomeWidth = 84;
constexpr int markSize = 14;
constexpr int markRoom = 19;
constexpr qreal radius = 6;

/// Where the parts of a row stand, read from left to right.
struct Places {
    explicit Places(const QRect &whole) : row(whole.adjusted(0, 0, -barRoom, 0))
    {
        const int upper = lineHeight(Type::Body);
        const int top = row.top() + (row.height() - upper - lineHeight(Type::Caption)) / 2;
        const int outcomeLeft = row.right() + 1 - padding - scaled(outcomeWidth);
        const int wordsLeft = row.left() + padding + scaled(timeWidth) + gap;
        const auto line = [&](int left, int right, bool first) {
            return QRect(left, first ? top : top + upper, std::max(0, right - left),
                         first ? upper : lineHeight(Type::Caption));
        };
        time = line(row.left() + padding, wordsLeft - gap, true);
        day = line(row.left() + padding, wordsLeft - gap, false);
        words = line(wordsLeft, outcomeLeft - markRoom - gap, true);
        below = line(wordsLeft, outcomeLeft - markRoom - gap, false);
        outcome = line(outcomeLeft, row.right() + 1 - padding, true);
        lasted = line(outcomeLeft, row.right() + 1 - padding, false);
        mark = QRect(outcomeLeft - markRoom, top + (upper - markSize) / 2, markSize, markSize);
    }

    QRect row;
    QRect time;
    QRect day;
    QRect words;
    QRect below;
    QRect outcome;
    QRect lasted;
    QRect mark;
};

/// Paints into a row as it is read, from either side.
class RowPainter final {
public:
    RowPainter(QPainter &painter, const QStyleOptionViewItem &option)
        : m_painter(painter), m_places(option.rect), m_whole(option.rect), m_direction(option.direction),
          m_selected(option.state.testFlag(QStyle::State_Selected))
    {
        m_painter.setRenderHint(QPainter::Antialiasing);
    }

    void paintSurface(bool hovered, bool ringed)
    {
        const QRect row = turned(m_places.row);
        m_painter.setPen(Qt::NoPen);
        if (!m_selected) {
            paintHairline(m_painter, QRect(row.left(), row.bottom(), row.width(), 1), Theme::line);
        }
        if (m_selected || hovered) {
            m_painter.setBrush(m_selected ? Theme::panel : Theme::panel2);
            m_painter.drawRoundedRect(row.adjusted(0, 0, 0, m_selected ? 0 : -1), radius, radius);
        }
        if (m_selected) {
            constexpr int height = 18;
            const QRect mark(m_places.row.left() + 4, row.center().y() - height / 2, 3, height);
            m_painter.setBrush(Theme::accent);
            m_painter.drawRoundedRect(turned(mark), 1.5, 1.5);
        }
        if (ringed) {
            m_painter.setPen(QPen(Theme::ok, 2));
            m_painter.setBrush(Qt::NoBrush);
            m_painter.drawRoundedRect(QRectF(row).adjusted(3, 3, -3, -4), 5, 5);
        }
    }

    void paintWords(const ActivityRow &row)
    {
        const QColor quiet = m_selected ? Theme::heading : Theme::text;
        paintLine(m_places.time, row.time, Type::Body, quiet);
        paintLine(m_places.day, row.day, Type::Caption, quiet);
        paintLine(m_places.words, row.words, m_selected ? Type::BodySemibold : Type::BodyMedium, Theme::heading);
        QRect below = m_places.below;
        const int method = paintLine(below, row.method, Type::Mono, quiet);
        below.setLeft(below.left() + method + (method > 0 ? gap : 0));
        paintLine(below, row.aside, Type::Caption, quiet);
    }

    void paintOutcome(const ActivityRow &row)
    {
        const QRectF mark(turned(m_places.mark));
        if (row.runs) {
            paintSpinner(m_painter, mark, row.mark);
        } else {
            paintStateMark(m_painter, mark.center(), row.mark);
        }
        const StateSurface surface = m_selected ? StateSurface::Selection : StateSurface::Window;
        paintLine(m_places.outcome, row.outcome, Type::Body, stateTextColour(row.mark, surface));
        paintLine(m_places.lasted, row.lasted, Type::Caption, m_selected ? Theme::heading : Theme::text);
    }

private:
    [[nodiscard]] QRect turned(const QRect &part) const { return QStyle::visualRect(m_direction, m_whole, part); }

    /// Answers how wide the line is as it stands there.
    int paintLine(const QRect &place, const QString &text, Type type, const QColor &colour)
    {
        if (text.isEmpty() || place.width() <= 0) {
            return 0;
        }
        const QFontMetrics metrics(font(type));
        const QString shown = metrics.elidedText(lineOfAgentText(text), Qt::ElideRight, place.width());
        m_painter.setFont(font(type));
        m_painter.setPen(colour);
        drawLine(m_painter, turned(place), Qt::AlignLeft | Qt::AlignVCenter, shown);
        return metrics.horizontalAdvance(shown);
    }

    QPainter &m_painter;
    Places m_places;
    QRect m_whole;
    Qt::LayoutDirection m_direction;
    bool m_selected;
};

/// What the lines of the row have no room for; empty when all is there.
QString hiddenWords(const ActivityRow &row, const Places &places)
{
    const auto widthOf = [](const QString &text, Type type) {
        return QFontMetrics(font(type)).horizontalAdvance(lineOfAgentText(text));
    };
    const int between = row.method.isEmpty() || row.aside.isEmpty() ? 0 : gap;
    const int below = widthOf(row.method, Type::Mono) + between + widthOf(row.aside, Type::Caption);
    if (widthOf(row.words, Type::BodySemibold) <= places.words.width() && below <= places.below.width()) {
        return {};
    }
    QStringList lines{row.words, row.method, row.aside};
    lines.removeAll(QString());
    return lines.join(u'\n');
}

} // namespace

ActivityDelegate::ActivityDelegate(ActivityList *list) : QStyledItemDelegate(list), m_list(*list) {}

int ActivityDelegate::rowHeight()
{
    return scaled(plainRowHeight);
}

QRect ActivityDelegate::markRect(const QRect &row, Qt::LayoutDirection direction)
{
    return QStyle::visualRect(direction, row, Places(row).mark);
}

QSize ActivityDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return {0, rowHeight()};
}

void ActivityDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const std::optional<ActivityRow> row = m_list.rows().row(index.row());
    if (!row) {
        return; // gone; the list is about to know
    }
    painter->save();
    RowPainter parts(*painter, option);
    parts.paintSurface(option.state.testFlag(QStyle::State_MouseOver), m_list.ringedRow() == index.row());
    parts.paintWords(*row);
    parts.paintOutcome(*row);
    painter->restore();
}

bool ActivityDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                                 const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return false;
    }
    const std::optional<ActivityRow> row = m_list.rows().row(index.row());
    showPlainToolTip(event->globalPos(), row ? hiddenWords(*row, Places(option.rect)) : QString(), view->viewport());
    return true;
}

} // namespace quillfen
