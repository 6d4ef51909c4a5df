// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "volumestable.h"

#include "volumesdelegate.h"
#include "volumestablemodel.h"

#include "ui/style/fade.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QCursor>
#include <QHoverEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <array>
#include <numeric>
#include <span>

namespace quillfen {

namespace {

constexpr int headerHeight = 28;
constexpr int plainRowHeight = 40;
constexpr int narrowBelow = 780;
constexpr int smallestName = 120;
constexpr int hoverFade = 100; // milliseconds
/// All but the name, which takes what is left.
constexpr std::array<int, volumeColumns> wideColumns{0, 60, 74, 146, 168, 130, 196};
constexpr std::array<int, volumeColumns> narrowColumns{0, 62, 74, 118, 112, 44, 146};

int rowPixels()
{
    return scaled(plainRowHeight);
}

/// The system's text scale, as the column widths take it.
std::array<int, volumeColumns> columnWidths(bool narrow, int width)
{
    std::array<int, volumeColumns> widths = narrow ? narrowColumns : wideColumns;
    for (int &each : widths) {
        each = scaled(each);
    }
    // Nothing scrolls sideways: where the texts ask for more than names and numbers leave, they give way evenly.
    const std::span<int> texts = std::span(widths).subspan(static_cast<std::size_t>(VolumeColumn::Share));
    // A mark or an "Off" has nothing that could be left out, so it keeps its room.
    int &key = widths[static_cast<std::size_t>(VolumeColumn::Encryption)];
    const int kept = narrow ? key : 0;
    const int wanted = std::accumulate(texts.begin(), texts.end(), 0) - kept;
    const int numbers = std::accumulate(widths.begin(), widths.end(), 0) - wanted;
    const int room = std::max(0, width - scaled(smallestName) - numbers);
    if (wanted > room) {
        std::ranges::transform(texts, texts.begin(), [&](int each) { return each * room / wanted; });
        key = narrow ? kept : key;
    }
    widths[0] = std::max(scaled(smallestName), width - std::accumulate(widths.begin(), widths.end(), 0));
    return widths;
}

} // namespace

VolumesTable::VolumesTable(VolumesTableModel *rows, QWidget *parent) : QTableView(parent), m_rows(rows)
{
    // Before there is a model: Qt's own headers measure its captions, in bold.
    setHorizontalHeader(new VolumesHeader(this));
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(rowPixels());
    verticalHeader()->hide();
    rows->setParent(this);
    setModel(rows);
    setItemDelegate(new VolumesDelegate(this));
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setCornerButtonEnabled(false);
    setWordWrap(false);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFocusPolicy(Qt::TabFocus);
    setProperty("ownFocus", true);
    viewport()->setAttribute(Qt::WA_Hover);
    m_hoverFade.setStartValue(0.0F);
    m_hoverFade.setEndValue(1.0F);
    connect(&m_hoverFade, &QVariantAnimation::valueChanged, this, [this] { updateRow(m_hoveredRow); });

    QPalette colours = palette();
    colours.setColor(QPalette::Base, Theme::bg);
    // The delegate fills the selected row, in its own shape.
    colours.setColor(QPalette::Highlight, Qt::transparent);
    setPalette(colours);
    setAccessibleName(tr("Volumes"));
}

int VolumesTable::ringedRow() const
{
    if (!hasFocus() || m_rows->rowCount() == 0) {
        return -1;
    }
    return std::max(currentIndex().row(), 0);
}

int VolumesTable::heightOf(int count)
{
    return scaled(headerHeight) + count * rowPixels();
}

int VolumesTable::fullHeight() const
{
    return heightOf(m_rows->rowCount());
}

QSize VolumesTable::minimumSizeHint() const
{
    return {0, heightOf(0)};
}

VolumesTable::Place VolumesTable::place() const
{
    const int row = rowAt(0);
    if (row < 0) {
        return {};
    }
    return {m_rows->volumeId(row), row, -rowViewportPosition(row)};
}

// The layout is brought up to date here in any case: left to the first paint, it asks for a second one.
void VolumesTable::returnTo(const Place &place)
{
    executeDelayedItemsLayout();
    if (!place.volume) {
        return;
    }
    // Of several rows with one id it is the one that was there, as long as it has not moved.
    const int row = m_rows->volumeId(place.row) == place.volume ? place.row : m_rows->rowOf(*place.volume);
    if (row < 0) {
        return;
    }
    verticalScrollBar()->setValue(row * rowPixels() + place.cut);
}

void VolumesTable::returnToTop()
{
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(0);
}

void VolumesTable::changeRows(const std::function<void()> &change)
{
    const QScopedValueRollback changing(m_changing, true);
    change();
}

void VolumesTable::mark(std::optional<std::int64_t> volume)
{
    const QScopedValueRollback changing(m_changing, true);
    // Of two rows with one id the marked one stays marked.
    if (m_selectedRow < 0 || m_rows->volumeId(m_selectedRow) != volume || !volume) {
        m_selectedRow = volume ? m_rows->rowOf(*volume) : -1;
    }
    const QModelIndex index = m_rows->index(m_selectedRow, 0);
    if (!index.isValid()) {
        selectionModel()->clear();
    } else if (!selectionModel()->isRowSelected(m_selectedRow) || currentIndex() != index) {
        const QScopedValueRollback still(m_changing, true);
        const bool follow = hasAutoScroll();
        setAutoScroll(false);
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        setAutoScroll(follow);
    }
}

void VolumesTable::showSelected()
{
    executeDelayedItemsLayout();
    if (m_selectedRow >= 0) {
        scrollTo(m_rows->index(m_selectedRow, 0));
    }
}

QModelIndex VolumesTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const int last = m_rows->rowCount() - 1;
    if (last < 0) {
        return {};
    }
    const bool vertical = action != MoveLeft && action != MoveRight && action != MoveNext && action != MovePrevious;
    if (action == MoveEnd) {
        return m_rows->index(last, 0);
    }
    // With nothing selected the first key press selects the row that has the ring.
    if (action == MoveHome || (vertical && m_selectedRow < 0)) {
        return m_rows->index(0, 0);
    }
    return vertical ? QTableView::moveCursor(action, modifiers) : currentIndex();
}

// One row, chosen by any click or move of the cursor; never none, and never by dragging over rows.
QItemSelectionModel::SelectionFlags VolumesTable::selectionCommand(const QModelIndex &index, const QEvent *) const
{
    return index.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                           : QItemSelectionModel::NoUpdate;
}

void VolumesTable::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTableView::selectionChanged(selected, deselected);
    if (m_changing || selected.isEmpty()) {
        return;
    }
    updateRow(m_selectedRow);
    m_selectedRow = selected.constFirst().top();
    updateRow(m_selectedRow);
    if (const std::optional<std::int64_t> id = m_rows->volumeId(m_selectedRow)) {
        Q_EMIT volumeChosen(*id);
    }
}

// Letters belong to the search field: a search here would read every row of the list.
void VolumesTable::keyboardSearch(const QString &) {}

void VolumesTable::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() == Qt::NoButton) {
        QTableView::mouseMoveEvent(event);
    }
}

bool VolumesTable::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverMove) {
        hover(rowAt(static_cast<QHoverEvent *>(event)->position().toPoint().y()));
    } else if (event->type() == QEvent::HoverLeave || event->type() == QEvent::Leave) {
        hover(-1);
    }
    return QTableView::viewportEvent(event);
}

void VolumesTable::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    if (m_hoveredRow >= 0) {
        hover(rowAt(viewport()->mapFromGlobal(QCursor::pos()).y()));
    }
}

void VolumesTable::resizeEvent(QResizeEvent *event)
{
    layOutColumns();
    QTableView::resizeEvent(event);
}

void VolumesTable::layOutColumns()
{
    const int width = viewport()->width();
    m_narrow = width < scaled(narrowBelow);
    const std::array<int, volumeColumns> widths = columnWidths(m_narrow, width);
    for (int column = 0; column < volumeColumns; ++column) {
        horizontalHeader()->resizeSection(column, widths[static_cast<std::size_t>(column)]);
    }
}

void VolumesTable::hover(int row)
{
    if (row == m_hoveredRow) {
        return;
    }
    updateRow(m_hoveredRow);
    m_hoveredRow = row;
    m_hoverFade.stop();
    m_hoverFade.setDuration(reducedMotion() ? 0 : hoverFade);
    m_hoverFade.start();
}

void VolumesTable::updateRow(int row)
{
    if (row >= 0) {
        viewport()->update(0, rowViewportPosition(row), viewport()->width(), rowPixels());
    }
}

} // namespace quillfen
