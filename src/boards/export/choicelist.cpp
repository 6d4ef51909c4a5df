// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/export/choicelist.h"

#include "ui/accessible.h"
#include "ui/controls/radiorow.h"
#include "ui/controls/taborder.h"
#include "ui/layout.h"
#include "ui/paint/paint.h"
#include "ui/parts/scrollarea.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QCursor>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <optional>
#include <utility>

namespace quillfen {

namespace {

constexpr int hairline = 1;
/// Rows kept above and below what can be seen, so that the arrow keys find the next one.
constexpr int spareRows = 3;

/// What the rows lie on, with a hairline under each but the last.
class Canvas final : public QWidget {
public:
    explicit Canvas(int step) : m_step(step) {}

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QPainter painter(this);
        for (int line = event->rect().top() / m_step + 1; line * m_step <= event->rect().bottom() + 1; ++line) {
            if (line * m_step < height()) {
                paintHairline(painter, QRectF(0, line * m_step - hairline, width(), hairline), Theme::line);
            }
        }
    }

private:
    int m_step;
};

/// Where a key leads from `index`; nothing for keys that lead nowhere.
std::optional<int> target(int key, int index, int page, int last)
{
    switch (key) {
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return last;
    case Qt::Key_PageUp:
        return std::max(index - page, 0);
    case Qt::Key_PageDown:
        return std::min(index + page, last);
    default:
        return std::nullopt;
    }
}

} // namespace

ChoiceList::ChoiceList(const QString &accessibleName, int rowHeight, int mostRows, QWidget *parent)
    : QWidget(parent), m_rowHeight(scaled(rowHeight)), m_mostRows(mostRows), m_scroll(new ScrollArea),
      m_canvas(new Canvas(m_rowHeight + hairline))
{
    setAccessible(m_canvas, QAccessible::Grouping, accessibleName);
    m_scroll->setWidget(m_canvas);
    m_canvas->setAutoFillBackground(false); // the scroll area turned it on
    m_canvas->installEventFilter(this);
    setLayout(column({m_scroll}));
    connect(m_scroll->verticalScrollBar(), &QScrollBar::valueChanged, this, &ChoiceList::bindRows);
    fit();
}

void ChoiceList::setTitleType(Type type)
{
    m_titleType = type;
}

void ChoiceList::setChoices(int count, std::function<Choice(int)> choiceAt)
{
    m_choiceAt = std::move(choiceAt);
    if (std::exchange(m_count, count) != count) {
        fit();
    }
    bindRows();
}

void ChoiceList::setCurrent(int index)
{
    const bool changed = std::exchange(m_current, index) != index;
    if (changed && index >= 0) {
        bringIntoView(index);
    }
    bindRows();
}

int ChoiceList::step() const
{
    return m_rowHeight + hairline;
}

int ChoiceList::slotCount() const
{
    return static_cast<int>(m_slots.size());
}

/// A row keeps its widget while it is near: which one it is depends on its place alone.
ChoiceList::Slot &ChoiceList::slotOf(int index)
{
    return m_slots[static_cast<std::size_t>(index % slotCount())];
}

void ChoiceList::fit()
{
    const int wanted = m_count <= m_mostRows ? m_count : std::min(m_count, m_mostRows + 2 * spareRows);
    const bool grows = slotCount() < wanted;
    while (slotCount() < wanted) {
        addSlot();
    }
    while (slotCount() > wanted) {
        delete m_slots.back().row;
        m_slots.pop_back();
    }
    if (grows) {
        orderTabs();
    }
    m_canvas->setMinimumHeight(std::max(m_count * step() - hairline, 0));
    m_canvas->setMaximumHeight(m_canvas->minimumHeight());
    setFixedHeight(std::max(std::min(m_count, m_mostRows) * step() - hairline, 0));
}

/// New widgets come last in the tab order of their window; these belong where the list stands.
void ChoiceList::orderTabs()
{
    std::vector<QWidget *> rows;
    for (const Slot &slot : m_slots) {
        rows.push_back(slot.row);
    }
    placeInTabOrder(m_canvas, rows);
}

void ChoiceList::addSlot()
{
    auto *const row = new RadioRow(QString(), QString(), m_canvas);
    row->setTitleType(m_titleType);
    row->installEventFilter(this);
    const std::size_t place = m_slots.size();
    connect(row, &QAbstractButton::clicked, this, [this, place] { Q_EMIT chosen(m_slots.at(place).index); });
    m_slots.push_back({row, -1, {}});
}

void ChoiceList::bindRows()
{
    if (m_slots.empty()) {
        return;
    }
    const int inSight = m_scroll->verticalScrollBar()->value() / step();
    const int first = std::clamp(inSight - spareRows, 0, m_count - slotCount());
    const bool currentIsNear = m_current >= first && m_current < first + slotCount();
    for (int index = first; index < first + slotCount(); ++index) {
        bind(slotOf(index), index);
    }
    for (int index = first; index < first + slotCount(); ++index) {
        // Tab goes to the choice, or to what is in sight; the arrow keys go on from there.
        const bool isStop = index == (currentIsNear ? m_current : std::min(inSight, m_count - 1));
        slotOf(index).row->setFocusPolicy(isStop ? Qt::TabFocus : Qt::NoFocus);
    }
}

void ChoiceList::bind(Slot &slot, int index)
{
    Choice choice = m_choiceAt(index);
    if (slot.index < 0 || choice != slot.choice) {
        slot.row->setTitle(choice.title);
        slot.row->setCaption(choice.caption);
        slot.row->setValue(choice.value);
        slot.choice = std::move(choice);
    }
    slot.row->setGeometry(0, index * step(), m_canvas->width(), m_rowHeight);
    if (std::exchange(slot.index, index) != index) {
        // It went from under the pointer without the pointer having moved, which is all that Qt watches.
        const QPoint pointer = slot.row->mapFromGlobal(QCursor::pos());
        slot.row->setAttribute(Qt::WA_UnderMouse, slot.row->rect().contains(pointer));
    }
    slot.row->show();
    if (const bool isChosen = index == m_current; slot.row->isChecked() != isChosen) {
        slot.row->setAutoExclusive(isChosen); // the chosen one of several would not let go
        slot.row->setChecked(isChosen);
        slot.row->setAutoExclusive(true);
    }
}

void ChoiceList::bringIntoView(int index)
{
    QScrollBar *const bar = m_scroll->verticalScrollBar();
    const int top = index * step();
    const int room = height();
    if (top < bar->value()) {
        bar->setValue(top);
    } else if (top + m_rowHeight > bar->value() + room) {
        bar->setValue(top + m_rowHeight - room);
    }
}

void ChoiceList::moveTo(int index)
{
    bringIntoView(index);
    slotOf(index).row->setFocus(Qt::ShortcutFocusReason);
    Q_EMIT chosen(index);
}

bool ChoiceList::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_canvas) {
        if (event->type() == QEvent::Resize) {
            bindRows();
        }
        return QWidget::eventFilter(watched, event);
    }
    const auto slot = std::ranges::find(m_slots, watched, &Slot::row);
    if (slot == m_slots.end()) {
        return QWidget::eventFilter(watched, event);
    }
    if (event->type() == QEvent::FocusIn) {
        bringIntoView(slot->index);
    } else if (event->type() == QEvent::KeyPress) {
        const auto *const press = static_cast<const QKeyEvent *>(event);
        if (const auto index = target(press->key(), slot->index, m_mostRows, m_count - 1)) {
            moveTo(*index);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace quillfen
