// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "volumesdelegate.h"

#include "ui/paint/direction.h"
#include "volumestable.h"
#include "volumestablemodel.h"

#include "ui/paint/icons.h"
#include "ui/paint/paint.h"
#include "ui/parts/statemark.h"
#include "ui/text/tooltip.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace quillfen {

namespace {

constexpr int headerHeight = 28;
constexpr int padding = 6;
constexpr int widePadding = 14; ///< of the first column and of the one after the numbers
constexpr int markSize = 8;
constexpr int markGap = 7;
constexpr int pictureSize = 16;
constexpr qreal rowRadius = 6;
constexpr qreal rowTracking = -0.1;
/// No screen shows more of one line; measuring a text of a megabyte takes longer than a frame.
constexpr qsizetype longestPainted = 1'000;

QFont tracked(Type type)
{
    QFont tight = font(type);
    tight.setLetterSpacing(QFont::AbsoluteSpacing, rowTracking);
    return tight;
}

const QFont &cellFont(VolumeColumn column)
{
    static const QFont name = tracked(Type::BodySemibold);
    static const QFont other = tracked(Type::Body);
    return column == VolumeColumn::Name ? name : other;
}

bool isNumber(VolumeColumn column)
{
    return column == VolumeColumn::Size || column == VolumeColumn::Used;
}

/// Where the content of a cell or caption stands; the wide padding is at the side where reading begins.
QRect contentRect(const QRect &cell, VolumeColumn column, Qt::LayoutDirection direction)
{
    const bool wide = column == VolumeColumn::Name || column == VolumeColumn::Share;
    return QStyle::visualRect(direction, cell, cell.adjusted(wide ? widePadding : padding, 0, -padding, 0));
}

QRect textRect(const QRect &cell, VolumeColumn column, Qt::LayoutDirection direction)
{
    const QRect content = contentRect(cell, column, direction);
    const bool marked = column == VolumeColumn::Offsite;
    return QStyle::visualRect(direction, content, content.adjusted(marked ? markSize + markGap : 0, 0, 0, 0));
}

Qt::Alignment textAlignment(VolumeColumn column)
{
    return (isNumber(column) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

QString fitting(const QString &text, const QRect &rect, VolumeColumn column)
{
    return QFontMetrics(cellFont(column)).elidedText(text.left(longestPainted), Qt::ElideRight, rect.width());
}

/// A square at the beginning of a cell's content.
QRectF squareRect(const QRect &cell, VolumeColumn column, int side, Qt::LayoutDirection direction)
{
    const QRect content = contentRect(cell, column, direction);
    const int left = direction == Qt::RightToLeft ? content.right() + 1 - side : content.left();
    return QRectF(left, cell.top() + (cell.height() - side) / 2.0, side, side);
}

} // namespace

VolumesDelegate::VolumesDelegate(VolumesTable *table) : QStyledItemDelegate(table), m_table(*table) {}

void VolumesDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    painter->save();
    painter->setClipRect(option.rect, Qt::IntersectClip);
    paintRow(*painter, option.rect, index.row());
    paintCell(*painter, option.rect, index.row(), static_cast<VolumeColumn>(index.column()));
    painter->restore();
}

void VolumesDelegate::paintRow(QPainter &painter, const QRect &cell, int row) const
{
    const QRect whole(0, cell.top(), m_table.viewport()->width(), cell.height());
    const bool selected = m_table.isSelected(row);
    const bool hovered = m_table.hoveredRow() == row;
    const bool ringed = m_table.ringedRow() == row;
    if (!selected) {
        paintHairline(painter, QRectF(cell.left(), cell.bottom(), cell.width(), 1), Theme::line);
    }
    if (!selected && !hovered && !ringed) {
        return;
    }

    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (selected || hovered) {
        painter.setBrush(selected ? Theme::panel : Theme::faded(Theme::panel2, m_table.hoverShare()));
        painter.drawRoundedRect(whole.adjusted(0, 0, 0, selected ? 0 : -1), rowRadius, rowRadius);
    }
    if (selected) {
        const int markHeight = 18;
        painter.setBrush(Theme::accent);
        const QRect mark(4, whole.top() + (whole.height() - markHeight) / 2, 3, markHeight);
        painter.drawRoundedRect(QStyle::visualRect(m_table.layoutDirection(), whole, mark), 1.5, 1.5);
    }
    if (ringed) {
        painter.setPen(QPen(Theme::ok, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(whole).adjusted(3, 3, -3, -3), 5, 5);
    }
}

bool VolumesDelegate::isPicture(const VolumeRow &row, VolumeColumn column) const
{
    return column == VolumeColumn::Encryption && m_table.isNarrow() && row.encryption != Encryption::Off;
}

QColor VolumesDelegate::textColour(const VolumeRow &row, VolumeColumn column, int rowNumber) const
{
    if (m_table.isSelected(rowNumber) || column == VolumeColumn::Name || isNumber(column)) {
        return Theme::heading;
    }
    if (column == VolumeColumn::Appliance) {
        return row.applianceColour;
    }
    if (column != VolumeColumn::Offsite) {
        return Theme::text;
    }
    const bool hovered = m_table.hoveredRow() == rowNumber;
    return stateTextColour(row.offsiteColour, hovered ? StateSurface::Card : StateSurface::Window);
}

void VolumesDelegate::paintCell(QPainter &painter, const QRect &cell, int row, VolumeColumn column) const
{
    const VolumeRow content = m_table.rows().row(row);
    const Qt::LayoutDirection direction = m_table.layoutDirection();
    if (isPicture(content, column)) {
        const Icon icon = content.encryption == Encryption::KeyHere ? Icon::Key : Icon::KeySlash;
        paintIcon(painter, icon, squareRect(cell, column, pictureSize, direction), Theme::heading);
        return;
    }
    if (column == VolumeColumn::Offsite) {
        paintStateMark(painter, squareRect(cell, column, markSize, direction).center(), content.offsiteColour);
    }
    const QRect rect = textRect(cell, column, direction);
    painter.setFont(cellFont(column));
    painter.setPen(textColour(content, column, row));
    drawLine(painter, rect, textAlignment(column), fitting(cellText(content, column), rect, column));
}

bool VolumesDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *, const QStyleOptionViewItem &option,
                                const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return false;
    }
    const auto column = static_cast<VolumeColumn>(index.column());
    const VolumeRow row = m_table.rows().row(index.row());
    const QString text = cellText(row, column);
    const bool hidden =
        isPicture(row, column) || fitting(text, textRect(option.rect, column, option.direction), column) != text;
    if (hidden) {
        showPlainToolTip(event->globalPos(), text, m_table.viewport());
    } else {
        QToolTip::hideText();
    }
    return true;
}

VolumesHeader::VolumesHeader(VolumesTable *table) : QHeaderView(Qt::Horizontal, table), m_table(*table)
{
    setSectionResizeMode(QHeaderView::Fixed);
    setMinimumSectionSize(0);
    setHighlightSections(false);
    setSectionsClickable(false);
    setFocusPolicy(Qt::NoFocus);
}

QSize VolumesHeader::sizeHint() const
{
    return {0, scaled(headerHeight)};
}

// The table gives each column its width; Qt would measure the captions in bold, which nothing here is written in.
QSize VolumesHeader::sectionSizeFromContents(int) const
{
    return sizeHint();
}

bool VolumesHeader::isPicture(VolumeColumn column) const
{
    return column == VolumeColumn::Encryption && m_table.isNarrow();
}

/// What fits of the caption into a section of that width.
QString VolumesHeader::caption(int section, int width) const
{
    const auto column = static_cast<VolumeColumn>(section);
    return QFontMetrics(quillfen::font(Type::CaptionMedium))
        .elidedText(columnTitle(column), Qt::ElideRight,
                    contentRect({0, 0, width, 1}, column, layoutDirection()).width());
}

bool VolumesHeader::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip) {
        return QHeaderView::viewportEvent(event);
    }
    showCaption(*static_cast<QHelpEvent *>(event));
    return true;
}

void VolumesHeader::showCaption(const QHelpEvent &event)
{
    const int section = logicalIndexAt(event.pos());
    const auto column = static_cast<VolumeColumn>(section);
    if (section >= 0 && (isPicture(column) || caption(section, sectionSize(section)) != columnTitle(column))) {
        showPlainToolTip(event.globalPos(), columnTitle(column), viewport());
    } else {
        QToolTip::hideText();
    }
}

void VolumesHeader::paintSection(QPainter *painter, const QRect &rect, int section) const
{
    const auto column = static_cast<VolumeColumn>(section);
    painter->fillRect(rect, Theme::bg);
    paintHairline(*painter, QRectF(rect.left(), rect.bottom(), rect.width(), 1), Theme::line);
    if (isPicture(column)) {
        paintIcon(*painter, Icon::Key, squareRect(rect, column, pictureSize, layoutDirection()), Theme::text);
        return;
    }
    painter->setFont(quillfen::font(Type::CaptionMedium));
    painter->setPen(Theme::text);
    drawLine(*painter, contentRect(rect, column, layoutDirection()), textAlignment(column),
             caption(section, rect.width()));
}

} // namespace quillfen
