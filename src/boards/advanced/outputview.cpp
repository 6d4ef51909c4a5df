// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "outputview.h"

#include "aside.h"
#include "outputcursor.h"
#include "outputlayout.h"

#include "desktop/clipboard.h"
#include "ui/accessible.h"
#include "ui/paint/paint.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <limits>
#include <utility>

namespace quillfen {

namespace {

constexpr QPoint padding(12, 10);
constexpr int barRoom = 12;
constexpr int fewestRows = 4;
constexpr float selectionShare = 0.22F;
/// What is copied at once; more is made ready beside the window.
constexpr std::size_t smallCopy = std::size_t{256} * 1'024;
/// What a screen reader is given whole; of more it is given what is visible.
constexpr std::size_t smallText = std::size_t{64} * 1'024;

} // namespace

OutputView::OutputView(const QString &accessibleName, QWidget *parent) : QAbstractScrollArea(parent)
{
    setFrameShape(NoFrame);
    setLayoutDirection(Qt::LeftToRight); // as JSON is written in every language
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->setProperty("overlay", true); // see HouseStyle
    verticalScrollBar()->setSingleStep(1);
    viewport()->setAutoFillBackground(false);
    viewport()->setCursor(Qt::IBeamCursor);
    setAccessible(this, QAccessible::EditableText, accessibleName);
}

QSize OutputView::minimumSizeHint() const
{
    return {120, 2 * padding.y() + fewestRows * lineHeight(Type::Mono)};
}

void OutputView::setText(std::shared_ptr<const OutputText> text)
{
    if (text == m_rows.text()) {
        return;
    }
    m_rows = OutputRows(std::move(text), m_rows.columns());
    m_anchor = m_cursor = 0;
    layOut();
    verticalScrollBar()->setValue(0);
    tellVisible();
    viewport()->update();
}

void OutputView::layOut()
{
    const qreal width = viewport()->width() - 2 * padding.x() - barRoom;
    const auto columns = static_cast<std::size_t>(std::max(0.0, width / columnWidth()));
    const std::size_t top =
        verticalScrollBar()->value() > 0 ? m_rows.row(static_cast<std::size_t>(verticalScrollBar()->value())).begin : 0;
    if (std::max(columns, OutputText::fewestColumns) != m_rows.columns()) {
        m_rows = OutputRows(m_rows.text(), columns);
    }
    const auto rows = static_cast<int>(std::min<std::size_t>(m_rows.count(), std::numeric_limits<int>::max()));
    verticalScrollBar()->setPageStep(visibleRows());
    verticalScrollBar()->setRange(0, std::max(0, rows - visibleRows()));
    if (top > 0) {
        verticalScrollBar()->setValue(static_cast<int>(m_rows.placeOf(top).row));
    }
}

int OutputView::visibleRows() const
{
    return std::max(1, (viewport()->height() - 2 * padding.y()) / lineHeight(Type::Mono));
}

void OutputView::resizeEvent(QResizeEvent *)
{
    layOut();
    tellVisible();
}

void OutputView::scrollContentsBy(int, int)
{
    tellVisible();
    viewport()->update();
}

void OutputView::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    painter.setFont(quillfen::font(Type::Mono));
    const int height = lineHeight(Type::Mono);
    const auto first = static_cast<std::size_t>(verticalScrollBar()->value());
    if (first >= m_rows.count()) {
        return;
    }
    const std::size_t cursorRow = hasFocus() ? m_rows.placeOf(m_cursor).row : m_rows.count();
    OutputRows::Row row = m_rows.row(first);
    for (std::size_t number = first;; row = m_rows.after(row)) {
        const int top = padding.y() + static_cast<int>(number - first) * height;
        if (top > viewport()->height()) {
            return;
        }
        if (event->rect().intersects(QRect(0, top, viewport()->width(), height))) {
            paintRow(painter, row, top, number == cursorRow);
        }
        if (++number == m_rows.count()) {
            return;
        }
    }
}

void OutputView::paintRow(QPainter &painter, const OutputRows::Row &row, int top, bool hasCursor) const
{
    const RowLayout layout(m_rows, row);
    const int height = lineHeight(Type::Mono);
    const std::size_t from = std::max(selectionBegin(), row.begin);
    const std::size_t to = std::min(selectionEnd(), row.end);
    const bool endsSegment = row.end == row.segment.end;
    const bool beyond = selectionEnd() > row.end && (selectionBegin() < row.end || (endsSegment && from == row.end));
    if (from < to || beyond) {
        const qreal left = padding.x() + layout.xOf(std::min(from, row.end));
        // What goes on in the next row is seen to do so, an empty row included.
        const qreal right = padding.x() + layout.xOf(std::max(to, row.begin)) + (beyond ? columnWidth() / 2 : 0);
        painter.fillRect(QRectF(left, top, right - left, height), Theme::faded(Theme::accent, selectionShare));
    }
    painter.setPen(Theme::heading);
    layout.paint(painter, QPointF(padding.x(), top), height);
    if (hasCursor) {
        painter.fillRect(QRectF(padding.x() + layout.xOf(m_cursor), top, 1, height), Theme::heading);
    }
}

std::size_t OutputView::offsetAt(const QPointF &position) const
{
    const int within = static_cast<int>(position.y()) - padding.y();
    const int height = lineHeight(Type::Mono);
    const int steps = within >= 0 ? within / height : (within - height + 1) / height;
    const int number = std::max(0, verticalScrollBar()->value() + steps);
    if (static_cast<std::size_t>(number) >= m_rows.count()) {
        return text()->bytes().size();
    }
    const OutputRows::Row row = m_rows.row(static_cast<std::size_t>(number));
    return RowLayout(m_rows, row).offsetAt(position.x() - padding.x());
}

void OutputView::moveCursor(std::size_t offset, bool selecting)
{
    m_cursor = offset;
    if (!selecting) {
        m_anchor = offset;
    }
    reveal(offset);
    viewport()->update();
}

void OutputView::reveal(std::size_t offset)
{
    const auto row = static_cast<int>(m_rows.placeOf(offset).row);
    const int top = verticalScrollBar()->value();
    if (row < top) {
        verticalScrollBar()->setValue(row);
    } else if (row >= top + visibleRows()) {
        verticalScrollBar()->setValue(row - visibleRows() + 1);
    }
}

void OutputView::select(std::size_t begin, std::size_t end)
{
    m_anchor = begin;
    const int top = verticalScrollBar()->value();
    const auto row = static_cast<int>(m_rows.placeOf(begin).row);
    if (row < top || row >= top + visibleRows()) {
        verticalScrollBar()->setValue(row - visibleRows() / 3); // with something before it to be read in
    }
    moveCursor(end, true);
}

void OutputView::selectAll()
{
    m_anchor = 0;
    m_cursor = text()->bytes().size();
    viewport()->update();
}

void OutputView::copySelection() const
{
    if (hasSelection()) {
        copy(selectionBegin(), selectionEnd());
    }
}

void OutputView::copyAll() const
{
    copy(0, text()->bytes().size());
}

void OutputView::copy(std::size_t begin, std::size_t end) const
{
    const auto read = [shown = text(), begin, end] { return shown->text(begin, end); };
    if (end - begin <= smallCopy) {
        copyText(read());
    } else {
        aside(read, [](const QString &words) { copyText(words); });
    }
}

void OutputView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Left:
    case Qt::Key_Right:
        moveCursor(movedBy(*event, m_rows, m_cursor, static_cast<std::size_t>(visibleRows())),
                   event->modifiers().testFlag(Qt::ShiftModifier));
        return;
    default:
        break;
    }
    if (event->matches(QKeySequence::Copy)) {
        copySelection();
    } else if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
    } else {
        event->ignore();
    }
}

void OutputView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        moveCursor(offsetAt(event->position()), event->modifiers().testFlag(Qt::ShiftModifier));
    }
}

void OutputView::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons().testFlag(Qt::LeftButton)) {
        moveCursor(offsetAt(event->position()), true);
    }
}

void OutputView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const auto [begin, end] = wordAround(*text(), offsetAt(event->position()));
    m_anchor = begin;
    moveCursor(end, true);
}

void OutputView::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu;
    QAction *const copying = menu.addAction(tr("Copy"), this, &OutputView::copySelection);
    copying->setEnabled(hasSelection());
    menu.addAction(tr("Select all"), this, &OutputView::selectAll);
    menu.exec(event->globalPos());
}

bool OutputView::event(QEvent *event)
{
    // The window's own keys come second where the text has something to do with them.
    if (event->type() == QEvent::ShortcutOverride) {
        auto *const key = static_cast<QKeyEvent *>(event);
        if (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::SelectAll)) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void OutputView::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void OutputView::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void OutputView::tellVisible()
{
    if (text()->bytes().size() <= smallText) {
        setAccessibleValue(this, text()->text(0, text()->bytes().size()));
        return;
    }
    const auto first = static_cast<std::size_t>(verticalScrollBar()->value());
    const std::size_t last = std::min(first + static_cast<std::size_t>(visibleRows()), m_rows.count()) - 1;
    setAccessibleValue(this, text()->text(m_rows.row(std::min(first, last)).begin, m_rows.row(last).end));
}

} // namespace quillfen
