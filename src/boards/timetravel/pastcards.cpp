// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/pastcards.h"

#include "boards/timetravel/restorepointslist.h"
#include "desktop/fileviewer.h"
#include "dialogs/dialogs.h"
#include "state/start.h"
#include "ui/controls/spinner.h"
#include "ui/layout.h"
#include "ui/parts/card.h"
#include "ui/parts/sectiontitle.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

#include <map>
#include <vector>

namespace quillfen {

namespace {

constexpr int emptyRowHeight = 40;

/// The one row of a card that has nothing to show.
QWidget *emptyRow(const QString &sentence)
{
    auto *const row = new QWidget;
    row->setMinimumHeight(scaled(emptyRowHeight));
    row->setLayout(quillfen::row({new Label(sentence, Type::Body, Theme::text), Stretch{}}, 0, QMargins{16, 0, 16, 0}));
    return row;
}

/// The one row of a card about which the agent has not answered yet.
QWidget *waitingRow()
{
    auto *const row = new QWidget;
    row->setMinimumHeight(scaled(emptyRowHeight));
    row->setLayout(quillfen::row({new Spinner(16), Stretch{}}, 0, QMargins{16, 0, 16, 0}));
    return row;
}

/// The rows with a key for each.
template <typename Id, typename Row, typename IdOf>
std::vector<std::pair<PastKey<Id>, Row>> keyed(const std::vector<Row> &rows, IdOf idOf)
{
    std::map<Id, int> seen;
    std::vector<std::pair<PastKey<Id>, Row>> result;
    for (const Row &row : rows) {
        const Id id = idOf(row);
        result.push_back({{id, seen[id]++}, row});
    }
    return result;
}

constexpr auto keyOf = [](const auto &item) { return item.first; };

} // namespace

OpenViewsCard::OpenViewsCard(std::shared_ptr<TimeTravelModel> model, QWidget *parent)
    : QWidget(parent), m_model(std::move(model)),
      m_none(emptyRow(tr("None. Each view is read-only; release it when done."))), m_waiting(waitingRow()),
      m_list(new QWidget), m_layout(column({})), m_rows(m_layout),
      m_observer(
          {&m_model->views, &m_model->state()->mounts}, [this] { render(); }, m_model->state()->timing().frame)
{
    m_list->setLayout(m_layout);
    auto *const card = new Card;
    card->band()->addWidget(new SectionTitle(tr("Open views")));
    card->addRow(m_none);
    card->addRow(m_waiting);
    card->addRow(m_list);
    setLayout(column({card}));
    render();
}

void OpenViewsCard::render()
{
    const std::optional<PastVolume> volume = m_model->loadedVolume();
    std::vector<ViewRow> views;
    if (volume) {
        for (const Record &view : m_model->views()) {
            views.push_back(viewRow(*m_model->state(), volume->name, view));
        }
    }
    m_rows.sync(
        keyed<QString>(views, [](const ViewRow &view) { return view.name; }), keyOf,
        [this](const auto &) { return makeRow(); },
        [&volume](OpenViewRow *row, const auto &item) { row->setView(*volume, item.second); });
    m_none->setVisible(views.empty() && m_model->viewsKnown());
    m_waiting->setVisible(views.empty() && !m_model->viewsKnown());
    m_list->setVisible(!views.empty());
}

OpenViewRow *OpenViewsCard::makeRow()
{
    auto *const row = new OpenViewRow;
    TimeTravelModel *const model = m_model.get();
    connect(row, &OpenViewRow::shown, this, [row] { showFolder(row->view().folder); });
    connect(row, &OpenViewRow::mounted, this,
            [row, model] { start(model->mountView(row->volume(), row->view().name)); });
    connect(row, &OpenViewRow::openedAgain, this,
            [row, model] { start(model->openView(row->volume(), row->view().timestamp, row->view().name)); });
    connect(row, &OpenViewRow::released, this,
            [row, model] { start(model->releaseView(row->volume(), row->view().name)); });
    return row;
}

NewVolumesCard::NewVolumesCard(std::shared_ptr<TimeTravelModel> model, QWidget *parent)
    : QWidget(parent), m_model(std::move(model)), m_list(new QWidget), m_layout(column({})), m_rows(m_layout),
      m_observer(
          {&m_model->recoveries}, [this] { render(); }, m_model->state()->timing().frame)
{
    m_list->setLayout(m_layout);
    auto *const card = new Card;
    card->band()->addWidget(new SectionTitle(tr("New volumes in the making")));
    card->addRow(m_list);
    setLayout(column({card}));
    render();
}

void NewVolumesCard::render()
{
    std::vector<RecoveryRow> recoveries;
    for (const Record &recovery : m_model->recoveries()) {
        recoveries.push_back(recoveryRow(recovery));
    }
    setVisible(!recoveries.empty());
    m_rows.sync(
        keyed<std::int64_t>(recoveries, [](const RecoveryRow &recovery) { return recovery.id; }), keyOf,
        [this](const auto &) { return makeRow(); },
        [](NewVolumeRow *row, const auto &item) { row->setRecovery(item.second); });
}

NewVolumeRow *NewVolumesCard::makeRow()
{
    auto *const row = new NewVolumeRow;
    connect(row, &NewVolumeRow::promoted, this, [this, row] { askForName(row->recovery()); });
    connect(row, &NewVolumeRow::discarded, this, [this, row] { askToDiscard(row->recovery()); });
    return row;
}

void NewVolumesCard::askForName(const RecoveryRow &recovery)
{
    // The question lets the rest of the program go on: the row, the card and the board may be gone when it is answered.
    const std::shared_ptr<TimeTravelModel> model = m_model;
    const std::int64_t id = recovery.id;
    const std::optional<QString> name = askText(this, tr("Make %1 a volume?").arg(recovery.name),
                                                tr("It becomes an ordinary volume with its own history from now on."),
                                                recovery.name, tr("Create volume"));
    if (name) {
        start(model->promote(id, *name));
    }
}

void NewVolumesCard::askToDiscard(const RecoveryRow &recovery)
{
    const std::shared_ptr<TimeTravelModel> model = m_model;
    const std::int64_t id = recovery.id;
    const bool agreed = confirm(this, tr("Discard %1?").arg(recovery.name),
                                tr("The copy is deleted. The original volume and its history are untouched."),
                                tr("Discard"), Destructive::Yes);
    if (agreed) {
        start(model->discard(id));
    }
}

RestorePointsCard::RestorePointsCard(std::shared_ptr<TimeTravelModel> model, QWidget *parent)
    : QWidget(parent), m_model(std::move(model)), m_title(new SectionTitle(QString())),
      m_none(emptyRow(tr("They appear as the volume changes."))), m_waiting(waitingRow()),
      m_points(new RestorePointsList), m_observer(
                                           {&m_model->points}, [this] { render(); }, m_model->state()->timing().frame)
{
    auto *const card = new Card;
    card->band()->addWidget(m_title);
    card->addRow(m_none);
    card->addRow(m_waiting);
    card->addRow(m_points);
    setLayout(column({card}));
    connect(m_points, &RestorePointsList::openRequested, this, [this](const QString &timestamp) {
        if (const std::optional<PastVolume> volume = m_model->loadedVolume()) {
            start(m_model->openView(*volume, timestamp, std::nullopt));
        }
    });
    render();
}

void RestorePointsCard::render()
{
    const RestorePoints &points = m_model->points();
    const bool known = m_model->pointsKnown();
    m_title->setText(restorePointsTitle(known ? std::optional(points.size()) : std::nullopt));
    m_points->setPoints(points);
    m_points->setVisible(!points.isEmpty());
    m_none->setVisible(points.isEmpty() && known);
    m_waiting->setVisible(points.isEmpty() && !known);
}

} // namespace quillfen
