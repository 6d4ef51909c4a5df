// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/lists/columnheader.h"

#include "ui/accessible.h"
#include "ui/controls/enterkey.h"
#include "ui/lists/cellrow.h"
#include "ui/paint/direction.h"
#include "ui/text/tooltip.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QAbstractButton>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int headerHeight = 28;
constexpr qreal arrowWidth = 7;
constexpr qreal arrowHeight = 4;
constexpr int arrowGap = 5;
/// Between the caption and the edges of what can be clicked.
constexpr int padding = 4;

/// One caption. Its left edge stands a little before its column's, so that its text does not.
class CaptionButton final : public QAbstractButton {
public:
    CaptionButton(const QString &text, QWidget *parent) : QAbstractButton(parent)
    {
        setText(text);
        setShortcut({});
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
        setProperty("focusRadius", 4);
        setAccessible(this, QAccessible::ColumnHeader, text);
        setSorting(Sorting::None);
    }

    void setSorting(Sorting sorting)
    {
        m_sorting = sorting;
        const QString spoken = sorting == Sorting::Ascending    ? ColumnHeader::tr("sorted, ascending")
                               : sorting == Sorting::Descending ? ColumnHeader::tr("sorted, descending")
                                                                : ColumnHeader::tr("not sorted");
        setAccessibleDescription(spoken);
        update();
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        const int label = QFontMetrics(quillfen::font(Type::CaptionMedium)).horizontalAdvance(text());
        return {label + 2 * padding + arrowGap + static_cast<int>(arrowWidth), scaled(headerHeight)};
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const QFont &caption = quillfen::font(Type::CaptionMedium);
        const QFontMetrics metrics(caption);
        const QRect room = rect().adjusted(padding, 0, -padding, 0);
        const QString label = shownText();
        painter.setFont(caption);
        const bool strong = m_sorting != Sorting::None || underMouse() || isDown();
        painter.setPen(strong ? Theme::heading : Theme::text);
        drawLine(painter, room, Qt::AlignLeft | Qt::AlignVCenter, label);
        if (m_sorting != Sorting::None) {
            const qreal left = room.left() + metrics.horizontalAdvance(label) + arrowGap;
            paintArrow(painter, mirrored(*this, QRectF(left, 0, arrowWidth, 0)).left());
        }
    }

    void keyPressEvent(QKeyEvent *event) override
    {
        if (!pressByEnter(*this, *event)) {
            QAbstractButton::keyPressEvent(event);
        }
    }

    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::ToolTip) {
            const bool whole = shownText() == text();
            showPlainToolTip(static_cast<QHelpEvent *>(event)->globalPos(), whole ? QString() : text(), this);
            return true;
        }
        return QAbstractButton::event(event);
    }

private:
    [[nodiscard]] QString shownText() const
    {
        const int arrow = m_sorting == Sorting::None ? 0 : arrowGap + static_cast<int>(arrowWidth);
        return QFontMetrics(quillfen::font(Type::CaptionMedium))
            .elidedText(text(), Qt::ElideRight, std::max(0, width() - 2 * padding - arrow));
    }

    void paintArrow(QPainter &painter, qreal left) const
    {
        const qreal top = (height() - arrowHeight) / 2;
        const bool up = m_sorting == Sorting::Ascending;
        QPainterPath arrow;
        arrow.moveTo(left, up ? top + arrowHeight : top);
        arrow.lineTo(left + arrowWidth, up ? top + arrowHeight : top);
        arrow.lineTo(left + arrowWidth / 2, up ? top : top + arrowHeight);
        arrow.closeSubpath();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(arrow, Theme::heading);
    }

    Sorting m_sorting = Sorting::None;
};

Sorting next(Sorting sorting)
{
    switch (sorting) {
    case Sorting::None:
        return Sorting::Ascending;
    case Sorting::Ascending:
        return Sorting::Descending;
    case Sorting::Descending:
        break;
    }
    return Sorting::None;
}

} // namespace

ColumnHeader::ColumnHeader(const QStringList &captions, std::shared_ptr<const std::vector<Column>> columns,
                           QWidget *parent)
    : QWidget(parent), m_columns(std::move(columns))
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    for (const QString &caption : captions) {
        if (caption.isEmpty()) {
            m_captions.push_back(nullptr);
            continue;
        }
        const int column = static_cast<int>(m_captions.size());
        auto *const button = new CaptionButton(caption, this);
        connect(button, &QAbstractButton::clicked, this, [this, column] { chosen(column); });
        m_captions.push_back(button);
    }
}

QSize ColumnHeader::sizeHint() const
{
    return {0, scaled(headerHeight)};
}

void ColumnHeader::setSorting(int column, Sorting sorting)
{
    m_column = sorting == Sorting::None ? -1 : column;
    m_sorting = m_column < 0 ? Sorting::None : sorting;
    for (int at = 0; at < static_cast<int>(m_captions.size()); ++at) {
        if (auto *const caption = static_cast<CaptionButton *>(m_captions[static_cast<std::size_t>(at)])) {
            caption->setSorting(at == m_column ? m_sorting : Sorting::None);
        }
    }
}

void ColumnHeader::chosen(int column)
{
    setSorting(column, column == m_column ? next(m_sorting) : Sorting::Ascending);
    Q_EMIT sorted(m_column, m_sorting);
}

void ColumnHeader::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const QRect inner = rect().adjusted(cellRowMargin, 0, -cellRowMargin, 0);
    const std::vector<QRect> rects = cellRects(*m_columns, inner);
    for (std::size_t at = 0; at < m_captions.size() && at < rects.size(); ++at) {
        if (m_captions[at] == nullptr) {
            continue;
        }
        const int width = std::min(m_captions[at]->sizeHint().width(), rects[at].width() + 2 * padding);
        const QRect place(rects[at].left() - padding, 0, width, height());
        m_captions[at]->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
    }
}

} // namespace quillfen
