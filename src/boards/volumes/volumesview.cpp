// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "volumesview.h"

#include "leftovers.h"
#include "marginscrollbar.h"
#include "volumerows.h"
#include "volumesection.h"
#include "volumesmodel.h"
#include "volumestablemodel.h"

#include "ui/controls/buttons.h"
#include "ui/controls/searchfield.h"
#include "ui/controls/taborder.h"
#include "ui/layout.h"
#include "ui/parts/boardframe.h"
#include "ui/parts/emptystate.h"
#include "ui/parts/scrollarea.h"

#include <QApplication>
#include <QBoxLayout>
#include <QEvent>

#include <algorithm>
#include <utility>

namespace quillfen {

namespace {

/// The rows a long table keeps in a window too low for it.
constexpr int leastRows = 3;
/// What of the cards below stays in view under a long table, so that one sees that there is something to scroll to.
constexpr int glimpse = 200;
/// What a volume is, where cards follow below it.
constexpr int lowEmptyHeight = 320;
/// Beyond the distance of cards: what belongs to the table's selection stands a little further from it.
constexpr int tableToCard = 4;

} // namespace

VolumesView::VolumesView(std::shared_ptr<AppState> state, QWidget *parent)
    : Board(parent), m_state(std::move(state)), m_model(std::make_shared<VolumesModel>(m_state)),
      m_rows(new VolumesTableModel(m_state)), m_table(new VolumesTable(m_rows)), m_frame(new BoardFrame(tr("Volumes"))),
      m_search(new SearchField(tr("Search volumes"))),
      m_empty(new EmptyState(Icon::Drive, tr("A volume is a drive on this Mac whose every second is kept offsite."),
                             tr("+ New volume"))),
      m_orphans(new OrphanAppliances(m_model)), m_copies(new ReadyCopies(m_model)),
      m_observer(
          {&m_state->volumes, &m_state->mounts, &m_state->statuses, &m_state->localAppliances, &m_state->vm,
           &m_state->selectedVolume, &m_model->query},
          [this] { render(); }, m_state->timing().frame)
{
    build();
    render();
}

VolumesView::~VolumesView() = default;

void VolumesView::build()
{
    auto *add = new Button(tr("+ New volume"), PrimaryButtonStyle{});
    m_frame->actions()->addWidget(m_search);
    m_frame->actions()->addWidget(add);
    m_frame->body()->addWidget(m_empty);
    m_frame->body()->addWidget(m_table);
    for (QWidget *below : {static_cast<QWidget *>(m_orphans), static_cast<QWidget *>(m_copies)}) {
        m_frame->body()->addWidget(below);
        below->installEventFilter(this);
    }
    new MarginScrollBar(m_table);
    setLayout(column({Item{m_frame, 1}}));
    m_frame->scrollArea()->viewport()->installEventFilter(this);
    setTabOrder(m_search, add);
    setTabOrder(add, m_table);

    VolumesModel *model = m_model.get();
    connect(add, &QAbstractButton::clicked, this, [model] { model->newVolume(); });
    connect(m_empty, &EmptyState::activated, this, [model] { model->newVolume(); });
    connect(m_search, &QLineEdit::textChanged, this, [model](const QString &text) { model->query = text; });
    connect(m_table, &VolumesTable::volumeChosen, this, [model](qint64 id) { model->selectVolume(id); });
}

void VolumesView::focusSearch()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

void VolumesView::render()
{
    const qsizetype count = m_state->volumes().size();
    m_frame->setSubtitle(volumesLine(count, m_state->allSynced()));
    m_table->setVisible(count > 0);
    m_empty->setVisible(count == 0);
    renderRows();
    if (m_card == nullptr && m_state->selectedVolume()) {
        makeCard();
    }
}

// The card holds more widgets than the rest of the board, so it waits until a volume is selected.
void VolumesView::makeCard()
{
    m_card = new VolumeSection(m_state, m_table->parentWidget());
    m_card->setContentsMargins(0, tableToCard, 0, 0);
    m_frame->body()->insertWidget(m_frame->body()->indexOf(m_table) + 1, m_card);
    m_card->installEventFilter(this);
    moveInTabOrder(m_table, m_card);
    showCard();
}

// A refresh leaves the list where it is. A search shows its finds from the top; when it ends, the list stands where it
// stood before, unless a find was chosen: then that one is in view.
void VolumesView::renderRows()
{
    const QString query = m_model->query();
    const bool searchChanged = query != m_query;
    const VolumesTable::Place place = m_table->place();
    if (searchChanged && m_query.isEmpty()) {
        m_beforeSearch = {place, m_state->selectedVolume()};
    }
    m_query = query;

    m_table->changeRows([&] { m_rows->refresh(query); });
    m_table->mark(m_state->selectedVolume());
    fitBody();

    if (!searchChanged) {
        m_table->returnTo(place);
    } else if (!query.isEmpty()) {
        m_table->returnToTop();
    } else {
        m_table->returnTo(m_beforeSearch.place);
    }
    if (searchChanged && query.isEmpty() && m_beforeSearch.selected != m_state->selectedVolume()) {
        m_table->showSelected();
    }
}

// The table is as high as its rows, up to the room there is: beyond that it scrolls by itself, so that it never has to
// draw more than a window holds. The empty board takes the whole room below the title block.
void VolumesView::fitBody()
{
    const int margin = m_frame->margin();
    const int height = m_frame->scrollArea()->viewport()->height();
    const int room = height - margin - (hasMoreBelow() ? glimpse : 0);
    const int least = std::min(m_table->fullHeight(), VolumesTable::heightOf(leastRows));
    m_table->setFixedHeight(std::max(least, std::min(m_table->fullHeight(), room)));
    m_empty->setContentsMargins(0, hasMoreBelow() ? 0 : margin, 0, 0);
    m_empty->setFixedHeight(hasMoreBelow() ? lowEmptyHeight : std::max(0, height - margin));
}

bool VolumesView::hasMoreBelow() const
{
    return (m_card != nullptr && !m_card->isHidden()) || !m_orphans->isHidden() || !m_copies->isHidden();
}

// The card takes room from a long table; the row it belongs to stays in view.
void VolumesView::showCard()
{
    const int before = m_table->height();
    fitBody();
    if (m_table->height() < before) {
        m_table->showSelected();
    }
}

bool VolumesView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && watched == m_frame->scrollArea()->viewport()) {
        fitBody();
    } else if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent) {
        showCard();
    } else if (event->type() == QEvent::Hide && watched == m_card && m_card->isHidden() &&
               m_card->isAncestorOf(QApplication::focusWidget())) {
        m_table->setFocus(Qt::OtherFocusReason); // where the next volume is chosen
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace quillfen
