// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/restorepointslist.h"

#include "boards/timetravel/restorepointrow.h"
#include "ui/accessible.h"
#include "ui/buttons.h"

#include <QKeyEvent>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <limits>

namespace quillfen {

namespace {

constexpr int visibleRows = 7;

/// Seven rows and a part of an eighth, and one for a row that has the focus and was scrolled away.
constexpr int rowWidgets = visibleRows + 2;

/// How far the scroll bar ends before the list does, whose last row lies between the round corners of the card.
constexpr int barInset = 6;

int rowPixels()
{
    return RestorePointRow::rowHeight();
}

QWidget *barEnd()
{
    auto *const end = new QWidget;
    end->setFixedHeight(barInset);
    return end;
}

/// Scrolls the board, too: of a list that lies partly below the window's edge a key may choose a row down there. Tab
/// does so by itself.
void showOnBoard(QWidget *row)
{
    for (QWidget *around = row->parentWidget(); around != nullptr; around = around->parentWidget()) {
        if (auto *const board = qobject_cast<QScrollArea *>(around)) {
            board->ensureWidgetVisible(row, 0, rowPixels() / 2);
        }
    }
}

} // namespace

RestorePointsList::RestorePointsList(QWidget *parent) : QAbstractScrollArea(parent)
{
    setAccessible(this, QAccessible::List, tr("Restore points"));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    viewport()->setAutoFillBackground(false);
    verticalScrollBar()->setProperty("overlay", true); // see HouseStyle
    verticalScrollBar()->setSingleStep(rowPixels() / 2);
    for (const Qt::Alignment end : {Qt::AlignTop, Qt::AlignBottom}) {
        addScrollBarWidget(barEnd(), end);
    }
    for (int count = 0; count < rowWidgets; ++count) {
        auto *const row = new RestorePointRow(viewport());
        row->hide();
        row->button()->installEventFilter(this);
        connect(row, &RestorePointRow::opened, this, [this, row] { Q_EMIT openRequested(row->timestamp()); });
        m_rows.push_back(row);
    }
}

void RestorePointsList::setPoints(const RestorePoints &points)
{
    if (m_points.isSameAs(points)) {
        return;
    }
    const int value = verticalScrollBar()->value();
    const bool atEnd = value == verticalScrollBar()->maximum();
    const std::size_t top = static_cast<std::size_t>(value / rowPixels());
    const QString topTimestamp = atEnd ? QString() : m_points.timestamp(top);
    RestorePointRow *const focused = focusedRow();

    m_points = points;
    const std::size_t last = std::max<std::size_t>(m_points.size(), 1) - 1;
    m_stop = last;
    if (focused != nullptr && !m_points.isEmpty()) {
        m_stop = std::min(m_points.placeOf(focused->timestamp()), last);
        show(focused, m_stop, true);
    }
    updateGeometry();
    fitScrollBar();
    if (atEnd) {
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    } else {
        returnTo(topTimestamp, value % rowPixels());
    }
    layOutRows(true);
}

/// The point on top may be gone, thinned out by the policy: its successor takes its place.
void RestorePointsList::returnTo(const QString &timestamp, int cut)
{
    const auto place = static_cast<qint64>(m_points.placeOf(timestamp));
    verticalScrollBar()->setValue(
        static_cast<int>(std::min<qint64>(place * rowPixels() + cut, verticalScrollBar()->maximum())));
}

QSize RestorePointsList::sizeHint() const
{
    return {400, std::min(fullHeight(), visibleRows * rowPixels())};
}

QSize RestorePointsList::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

/// Of fifty million points the last ones could not be reached; they would not fit into the memory either.
int RestorePointsList::fullHeight() const
{
    constexpr std::size_t highest = std::numeric_limits<int>::max();
    const auto pixels = static_cast<std::size_t>(rowPixels());
    return static_cast<int>(std::min(m_points.size(), highest / pixels) * pixels);
}

void RestorePointsList::fitScrollBar()
{
    const int page = visibleRows * rowPixels();
    verticalScrollBar()->setPageStep(page);
    verticalScrollBar()->setRange(0, std::max(0, fullHeight() - std::max(viewport()->height(), 1)));
    for (RestorePointRow *const row : m_rows) {
        row->setBesideScrollBar(fullHeight() > page);
    }
}

void RestorePointsList::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    const bool atEnd = verticalScrollBar()->value() == verticalScrollBar()->maximum();
    fitScrollBar();
    if (atEnd) {
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    }
    layOutRows();
}

void RestorePointsList::scrollContentsBy(int, int)
{
    layOutRows();
}

RestorePointRow *RestorePointsList::focusedRow() const
{
    const auto found =
        std::find_if(m_rows.begin(), m_rows.end(), [](RestorePointRow *row) { return row->button()->hasFocus(); });
    return found == m_rows.end() ? nullptr : *found;
}

RestorePointRow *RestorePointsList::rowAt(std::size_t place) const
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [place](const RestorePointRow *row) {
        return !row->isHidden() && row->place() == place;
    });
    return found == m_rows.end() ? nullptr : *found;
}

/// Whoever shows a visible point already goes on showing it, so that focus and hover stay with it; the others take what
/// has come into sight. A row with focus keeps its point even out of sight: the next key goes on from there.
void RestorePointsList::layOutRows(bool anew)
{
    const int pixels = rowPixels();
    const int bottom = verticalScrollBar()->value() + viewport()->height();
    const auto first = static_cast<std::size_t>(verticalScrollBar()->value() / pixels);
    const auto end =
        std::max(first, std::min(static_cast<std::size_t>((bottom + pixels - 1) / pixels), m_points.size()));

    std::vector<bool> shown(end - first);
    const auto claim = [&](const RestorePointRow *row) {
        const std::size_t place = row->place();
        const bool isFree = !row->isHidden() && place >= first && place < end && !shown[place - first];
        if (isFree) {
            shown[place - first] = true;
        }
        return isFree;
    };
    RestorePointRow *const focused = focusedRow();
    const bool focusStays = focused != nullptr && focused->place() < m_points.size();
    if (focusStays) {
        claim(focused);
        show(focused, focused->place(), anew);
    }
    std::vector<RestorePointRow *> idle;
    for (RestorePointRow *const row : m_rows) {
        if (focusStays && row == focused) {
            continue;
        }
        if (claim(row)) {
            show(row, row->place(), anew);
        } else {
            idle.push_back(row);
        }
    }
    for (std::size_t place = first; place < end && !idle.empty(); ++place) {
        if (!shown[place - first]) {
            show(idle.back(), place, true);
            idle.pop_back();
        }
    }
    for (RestorePointRow *const row : idle) {
        row->hide();
    }
    moveStop();
}

/// `anew` where the row showed something else before.
void RestorePointsList::show(RestorePointRow *row, std::size_t place, bool anew)
{
    if (anew) {
        row->setPoint(place, m_points.timestamp(place), m_points.label(place));
    }
    const int pixels = rowPixels();
    const qint64 y = static_cast<qint64>(place) * pixels - verticalScrollBar()->value();
    // What has the focus out of sight is just out of sight: coordinates have their limits.
    const int top = static_cast<int>(std::clamp<qint64>(y, -pixels, viewport()->height()));
    row->setGeometry(0, top, viewport()->width(), pixels);
    row->setVisible(true);
}

/// Tab reaches one button: that of the last row which had it, as long as it can be seen, or else the nearest that can.
void RestorePointsList::moveStop()
{
    if (m_points.isEmpty()) {
        return;
    }
    if (focusedRow() == nullptr) {
        const int pixels = rowPixels();
        const int value = verticalScrollBar()->value();
        const auto first = static_cast<std::size_t>((value + pixels - 1) / pixels);
        const auto past = static_cast<std::size_t>((value + viewport()->height()) / pixels);
        const std::size_t last = std::min(std::max(past, first + 1), m_points.size()) - 1;
        m_stop = std::clamp(m_stop, std::min(first, last), last);
    }
    for (RestorePointRow *const row : m_rows) {
        row->button()->setFocusPolicy(!row->isHidden() && row->place() == m_stop ? Qt::TabFocus : Qt::NoFocus);
    }
}

bool RestorePointsList::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        if (const RestorePointRow *const row = focusedRow()) {
            m_stop = row->place();
            moveStop();
        }
    } else if (event->type() == QEvent::FocusOut) {
        moveStop();
    } else if (event->type() == QEvent::KeyPress) {
        const auto *const key = static_cast<QKeyEvent *>(event);
        if ((key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier && moveBy(key->key())) {
            return true;
        }
    }
    return QAbstractScrollArea::eventFilter(watched, event);
}

bool RestorePointsList::moveBy(int key)
{
    const std::size_t last = std::max<std::size_t>(m_points.size(), 1) - 1;
    const auto back = [this](std::size_t rows) { return m_stop - std::min(m_stop, rows); };
    const auto forth = [this, last](std::size_t rows) { return std::min(m_stop + rows, last); };
    switch (key) {
    case Qt::Key_Up:
        goTo(back(1));
        return true;
    case Qt::Key_Down:
        goTo(forth(1));
        return true;
    case Qt::Key_PageUp:
        goTo(back(visibleRows));
        return true;
    case Qt::Key_PageDown:
        goTo(forth(visibleRows));
        return true;
    case Qt::Key_Home:
        goTo(0);
        return true;
    case Qt::Key_End:
        goTo(last);
        return true;
    default:
        return false;
    }
}

void RestorePointsList::goTo(std::size_t place)
{
    const qint64 top = static_cast<qint64>(place) * rowPixels();
    const qint64 lowest = top + rowPixels() - viewport()->height();
    const qint64 value = verticalScrollBar()->value();
    verticalScrollBar()->setValue(static_cast<int>(std::clamp(value, std::min(lowest, top), top)));
    if (RestorePointRow *const row = rowAt(place)) {
        row->button()->setFocus(Qt::OtherFocusReason);
        layOutRows(); // the row that had the focus may be out of sight now
        showOnBoard(row);
    }
}

} // namespace quillfen
