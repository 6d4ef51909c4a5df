// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/ophubsview.h"

#include "boards/operator/promotionbanner.h"
#include "dialogs/dialogs.h"
#include "state/start.h"
#include "ui/controls/buttons.h"
#include "ui/controls/textfield.h"
#include "ui/layout.h"
#include "ui/parts/card.h"
#include "ui/parts/inlineerror.h"
#include "ui/parts/sectiontitle.h"
#include "ui/parts/statemark.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

#include <utility>
#include <vector>

namespace quillfen {

using namespace Qt::StringLiterals;

namespace {

constexpr int cardGap = 16;
constexpr int noteHeight = 40;
constexpr int nameWidth = 240;
constexpr int hintWidth = 760;
constexpr int summaryLines = 6;

} // namespace

OpHubsView::OpHubsView(std::shared_ptr<AppState> state, QWidget *parent)
    : OpTab(parent), m_model(std::make_shared<OpHubsModel>(std::move(state))), m_error(new InlineError),
      m_banner(new PromotionBanner), m_hubs{.layout = column({})}, m_replicas{.layout = column({})},
      m_hubLines(m_hubs.layout), m_replicaLines(m_replicas.layout),
      m_name(new TextField(tr("name, e.g. hub-e"), tr("name, e.g. hub-e"))),
      m_address(new TextField(tr("address"), u"hub-e.ops.example:8443"_s)),
      m_preflight(new Button(tr("Preflight"), PrimaryButtonStyle{})),
      m_observer(
          {&m_model->hubs, &m_model->replication, &m_model->promotion, &m_model->error, &m_model->known,
           &m_model->running, &m_model->checking},
          [this] { render(); }, m_model->state().timing().frame),
      // The question waits for its answer: not in the middle of a render.
      m_offers(
          {&m_model->offer},
          [this] { QMetaObject::invokeMethod(this, &OpHubsView::askToRegister, Qt::QueuedConnection); },
          m_model->state().timing().frame)
{
    build();
    render();
}

OpHubsView::~OpHubsView() = default;

void OpHubsView::build()
{
    QWidget *const hubs = card(m_hubs, tr("Hubs"), tr("No hubs registered."));
    QWidget *const replicas = card(m_replicas, tr("Replication"), tr("No replicas reported."));
    setLayout(column({m_error, m_banner, hubs, replicas, form()}, cardGap));

    const auto preflight = [this] { start(m_model->preflight(m_name->text(), m_address->text())); };
    connect(m_preflight, &QAbstractButton::clicked, this, preflight);
    connect(m_name, &QLineEdit::returnPressed, this, preflight);
    connect(m_address, &QLineEdit::returnPressed, this, preflight);
}

QWidget *OpHubsView::card(List &list, const QString &title, const QString &empty) const
{
    list.rows = new QWidget;
    list.rows->setLayout(list.layout);
    list.waiting = new StateText(u"…"_s, Theme::muted);
    list.empty = new AgentLabel(empty, Type::Body, Theme::text);
    list.note = new QWidget;
    list.note->setMinimumHeight(scaled(noteHeight));
    list.note->setLayout(column({list.waiting, list.empty}, 0, QMargins{cellRowMargin, 0, cellRowMargin, 0}));
    list.summary = new AgentLabel({}, Type::Body, Theme::text);
    list.summary->setMaximumLines(summaryLines);
    list.summaryRow = new QWidget;
    list.summaryRow->setLayout(row({Item{list.summary, 1}}, 0, QMargins{cellRowMargin, 10, cellRowMargin, 10}));
    list.summaryRow->hide();
    auto *const panel = new Card;
    panel->band()->addWidget(new SectionTitle(title));
    panel->addRow(list.rows);
    panel->addRow(list.note);
    panel->addRow(list.summaryRow);
    return panel;
}

QWidget *OpHubsView::form()
{
    m_name->setMaximumWidth(scaled(nameWidth));
    auto *const hint = new Label(tr("Preflight checks the machine and shows its host key; registering builds it."),
                                 Type::Body, Theme::text);
    hint->setWrap(hintWidth);
    auto *const body = new QWidget;
    body->setLayout(column({hint, Space{12}, row({Item{m_name, 2}, Item{m_address, 3}, m_preflight})}, 0,
                           QMargins{16, 16, 16, 16}));
    auto *const panel = new Card;
    panel->band()->addWidget(new SectionTitle(tr("Add a hub")));
    panel->addRow(body);
    return panel;
}

void OpHubsView::load()
{
    start(m_model->load());
}

void OpHubsView::render()
{
    m_error->setText(m_model->error());
    m_banner->setPromotion(m_model->promotion());
    m_hubLines.sync(
        m_model->hubs(), [](const Record &hub) { return num(hub, "id"); },
        [this](const Record &) { return makeLine(); },
        [this](HubLine *line, const Record &hub) { line->setHub(hubRow(hub), m_model->running()); });
    renderNote(m_hubs, m_model->hubs().isEmpty());

    const Record &report = m_model->replication();
    const Records replicas = records(report.if_contains("replicas"));
    std::vector<std::pair<int, Record>> numbered;
    for (const Record &replica : replicas) {
        numbered.emplace_back(static_cast<int>(numbered.size()), replica);
    }
    m_replicaLines.sync(
        numbered, [](const auto &replica) { return replica.first; }, [](const auto &) { return new ReplicaLine; },
        [](ReplicaLine *line, const auto &replica) { line->setReplica(replicaRow(replica.second)); });
    renderNote(m_replicas, replicas.isEmpty());
    const QString summary = str(report, "summary");
    m_replicas.summary->setText(summary);
    m_replicas.summaryRow->setVisible(!summary.isEmpty());
    m_preflight->setRunning(m_model->checking());
}

void OpHubsView::renderNote(const List &list, bool none) const
{
    list.rows->setVisible(!none);
    list.note->setVisible(none);
    list.waiting->setVisible(!m_model->known());
    list.empty->setVisible(m_model->known());
}

// What a button is about is read when it is pressed.
HubLine *OpHubsView::makeLine()
{
    OpHubsModel *const model = m_model.get();
    auto *const line = new HubLine;
    connect(line, &HubLine::pollWanted, this, [model, line] { start(model->poll(line->hub().id)); });
    connect(line, &HubLine::rescanWanted, this, [model, line] { start(model->rescan(line->hub().id)); });
    connect(line, &HubLine::promoteWanted, this, [this, line] { askToPromote(line->hub()); });
    connect(line, &HubLine::demoteWanted, this, [this, line] { askToDemote(line->hub()); });
    connect(line, &HubLine::retireWanted, this, [this, line] { askToRetire(line->hub()); });
    return line;
}

// The questions take the hub's name and id along: while they wait, their row may come to show something else, or go.

void OpHubsView::askToPromote(const HubRow &hub)
{
    const std::shared_ptr<OpHubsModel> model = m_model;
    const std::int64_t id = hub.id;
    const QString name = hub.name;
    const bool agreed = confirm(this, tr("Promote %1?").arg(name),
                                tr("It becomes the serving hub; the current primary is demoted after the lag and "
                                   "identity checks pass. Appliances follow within a minute."),
                                tr("Promote"), Destructive::No);
    if (agreed) {
        start(model->promote(id, name));
    }
}

void OpHubsView::askToDemote(const HubRow &hub)
{
    const std::shared_ptr<OpHubsModel> model = m_model;
    const std::int64_t id = hub.id;
    const QString name = hub.name;
    const bool agreed =
        confirm(this, tr("Demote %1?").arg(name), tr("Only after another hub was promoted. Serving stops here."),
                tr("Demote"), Destructive::Yes);
    if (agreed) {
        start(model->demote(id, name));
    }
}

void OpHubsView::askToRetire(const HubRow &hub)
{
    const std::shared_ptr<OpHubsModel> model = m_model;
    const std::int64_t id = hub.id;
    const QString name = hub.name;
    const bool agreed =
        typedConfirm(this, tr("Retire %1?").arg(name),
                     tr("The site is removed and its machine wiped of Quill. Only for a hub that is not serving."),
                     u"RETIRE"_s, tr("Retire"));
    if (agreed) {
        start(model->retire(id, name));
    }
}

void OpHubsView::askToRegister()
{
    const std::shared_ptr<OpHubsModel> model = m_model;
    const std::optional<HubOffer> machine = model->takeOffer();
    if (!machine) {
        return;
    }
    const QString key = tr("Host key %1").arg(machine->fingerprint);
    const QString text = machine->summary.isEmpty() ? key : key + u'\n' + machine->summary;
    if (confirm(this, tr("Register %1?").arg(machine->name), text, tr("Register and build"), Destructive::No)) {
        start(model->registerHub(*machine));
    }
}

} // namespace quillfen
