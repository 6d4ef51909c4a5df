// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/opexportsview.h"

#include "boards/operator/oprows.h"
#include "boards/operator/recordlist.h"
#include "boards/operator/statepill.h"
#include "dialogs/dialogs.h"
#include "state/start.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/parts/inlineerror.h"
#include "ui/parts/pill.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

namespace quillfen {

namespace {

constexpr int compact = 28;
constexpr int cardGap = 16;

/// What the rows of orders ask for.
struct JobActions {
    std::function<void(std::int64_t)> ship;
    std::function<void(std::int64_t)> remove;
    std::function<bool(const char *method, std::int64_t)> runs; ///< whether it has not ended yet
};

/// One order.
class Row final : public RecordRow {
public:
    Row(std::shared_ptr<const std::vector<Column>> columns, const JobActions &actions)
        : RecordRow(std::move(columns)), m_number(new AgentLabel({}, Type::Body, Theme::heading)),
          m_volume(new AgentLabel({}, Type::BodyMedium, Theme::heading)),
          m_tenant(new AgentLabel({}, Type::Body, Theme::text)),
          m_delivery(new AgentLabel({}, Type::Body, Theme::text)), m_state(statePill()),
          m_medium(new AgentLabel({}, Type::Body, Theme::text)),
          m_ship(new Button(OpExportsView::tr("Mark shipped"), SecondaryButtonStyle{compact})),
          m_delete(new Button(OpExportsView::tr("Delete"), DangerButtonStyle{})), m_runs(actions.runs)
    {
        m_delete->setControlHeight(compact);
        for (QWidget *const cell :
             std::initializer_list<QWidget *>{m_number, m_volume, m_tenant, m_delivery, m_state, m_medium}) {
            addCell(cell);
        }
        addButton(m_ship);
        addButton(m_delete);
        QObject::connect(m_ship, &QAbstractButton::clicked, this, [this, actions] { actions.ship(m_shown.id); });
        QObject::connect(m_delete, &QAbstractButton::clicked, this, [this, actions] { actions.remove(m_shown.id); });
    }

    void fill(const Record &record) override
    {
        m_shown = jobRow(record);
        m_number->setText(m_shown.number);
        m_volume->setText(m_shown.volume);
        m_tenant->setText(m_shown.tenant);
        m_delivery->setText(m_shown.delivery);
        showState(m_state, m_shown.state);
        m_medium->setText(m_shown.medium);
        m_ship->setRunning(m_runs("admin.exports.ship", m_shown.id));
        m_delete->setRunning(m_runs("admin.exports.delete", m_shown.id));
        setButtonVisible(m_ship, m_shown.shippable);
        setRowName(m_shown.number,
                   OpExportsView::tr("Volume %1, tenant %2, delivery %3, state %4, medium %5")
                       .arg(m_shown.volume, m_shown.tenant, m_shown.delivery, m_shown.state, m_shown.medium));
        arrange();
    }

private:
    JobRow m_shown;
    AgentLabel *m_number;
    AgentLabel *m_volume;
    AgentLabel *m_tenant;
    AgentLabel *m_delivery;
    Pill *m_state;
    AgentLabel *m_medium;
    Button *m_ship;
    Button *m_delete;
    std::function<bool(const char *, std::int64_t)> m_runs;
};

std::vector<RecordField> fields()
{
    const auto text = [](QString JobRow::*part) { return [part](const Record &job) { return jobRow(job).*part; }; };
    return {{OpExportsView::tr("Order"), text(&JobRow::number), [](const Record &job) { return num(job, "id"); }},
            {OpExportsView::tr("Volume"), text(&JobRow::volume), {}},
            {OpExportsView::tr("Tenant"), text(&JobRow::tenant), {}},
            {OpExportsView::tr("Delivery"), text(&JobRow::delivery), {}},
            {OpExportsView::tr("State"), text(&JobRow::state), {}},
            {OpExportsView::tr("Medium"), text(&JobRow::medium), {}}};
}

} // namespace

OpExportsView::OpExportsView(std::shared_ptr<AppState> state, QWidget *parent)
    : OpTab(parent), m_model(std::make_shared<OpExportsModel>(std::move(state))), m_error(new InlineError),
      m_observer(
          {&m_model->jobs, &m_model->error, &m_model->known}, [this] { render(); }, m_model->state().timing().frame),
      m_actions(
          {&m_model->running}, [this] { m_list->refill(); }, m_model->state().timing().frame)
{
    build();
    render();
}

OpExportsView::~OpExportsView() = default;

void OpExportsView::build()
{
    JobActions actions;
    actions.ship = [this](std::int64_t id) { askToShip(id); };
    actions.remove = [this](std::int64_t id) { askToDelete(id); };
    actions.runs = [model = m_model.get()](const char *method, std::int64_t id) { return model->runs(method, id); };
    RecordList::Setup setup;
    setup.title = tr("Copies and media orders");
    setup.filter = tr("Filter orders");
    setup.empty = tr("None.");
    setup.columns = {{64, 52, 0}, {124, 90, 3}, {150, 84, 2}, {84, 56, 0}, {92, 78, 0}, {120, 84, 1}, {186, 170, 0}};
    setup.fields = fields();
    setup.makeRow = [actions](std::shared_ptr<const std::vector<Column>> columns) {
        return new Row(std::move(columns), actions);
    };
    m_list = new RecordList(std::move(setup));
    setLayout(column({m_error, m_list}, cardGap));
}

void OpExportsView::load()
{
    start(m_model->load());
}

void OpExportsView::focusSearch()
{
    m_list->focusSearch();
}

void OpExportsView::setRoom(int height)
{
    m_list->setRoom(height);
}

void OpExportsView::render()
{
    m_error->setText(m_model->error());
    m_list->setRecords(m_model->jobs(), m_model->known());
}

void OpExportsView::askToShip(std::int64_t id)
{
    const std::shared_ptr<OpExportsModel> model = m_model;
    const auto texts =
        askTexts(this, tr("Mark order #%1 shipped").arg(id), tr("Carrier and tracking number (both optional)."),
                 {tr("carrier"), tr("tracking number")}, tr("Mark shipped"));
    if (texts) {
        start(model->ship(id, texts->at(0), texts->at(1)));
    }
}

void OpExportsView::askToDelete(std::int64_t id)
{
    const std::shared_ptr<OpExportsModel> model = m_model;
    const bool agreed = confirm(this, tr("Delete order #%1?").arg(id), tr("The packed copy is removed from the hub."),
                                tr("Delete"), Destructive::Yes);
    if (agreed) {
        start(model->remove(id));
    }
}

} // namespace quillfen
