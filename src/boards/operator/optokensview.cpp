// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/optokensview.h"

#include "boards/operator/oprows.h"
#include "boards/operator/recordlist.h"
#include "dialogs/dialogs.h"
#include "state/start.h"
#include "ui/controls/buttons.h"
#include "ui/controls/searchfield.h"
#include "ui/controls/toggle.h"
#include "ui/layout.h"
#include "ui/parts/inlineerror.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

#include <utility>

namespace quillfen {

namespace {

constexpr int compact = 28;
constexpr int cardGap = 16;

/// One token.
class Row final : public RecordRow {
public:
    using Revoke = std::function<void(const TokenRow &)>;
    using Runs = std::function<bool(std::int64_t id)>;

    Row(std::shared_ptr<const std::vector<Column>> columns, const Revoke &revoke, Runs runs)
        : RecordRow(std::move(columns)), m_label(new AgentLabel({}, Type::BodyMedium, Theme::heading)),
          m_email(new AgentLabel({}, Type::Body, Theme::text)), m_created(new AgentLabel({}, Type::Body, Theme::text)),
          m_end(new AgentLabel({}, Type::Body, Theme::heading)),
          m_revoke(new Button(OpTokensView::tr("Revoke"), DangerButtonStyle{})), m_runs(std::move(runs))
    {
        m_email->setElideMode(Qt::ElideMiddle);
        m_revoke->setControlHeight(compact);
        for (QWidget *const cell : {m_label, m_email, m_created, m_end}) {
            addCell(cell);
        }
        addButton(m_revoke);
        QObject::connect(m_revoke, &QAbstractButton::clicked, this, [this, revoke] { revoke(m_shown); });
    }

    void fill(const Record &record) override
    {
        m_shown = tokenRow(record);
        m_label->setText(m_shown.label);
        m_label->setType(m_shown.revoked ? Type::Body : Type::BodyMedium);
        m_label->setColour(m_shown.revoked ? Theme::text : Theme::heading);
        m_email->setText(m_shown.email);
        m_created->setText(m_shown.created);
        m_end->setText(m_shown.end);
        m_end->setColour(m_shown.revoked ? Theme::text : Theme::heading);
        m_revoke->setRunning(m_runs(m_shown.id));
        m_revoke->setVisible(!m_shown.revoked);
        setRowName(m_shown.label,
                   OpTokensView::tr("E-mail %1, created %2, %3").arg(m_shown.email, m_shown.created, m_shown.end));
        m_revoke->setAccessibleDescription(madeVisible(m_shown.email));
        arrange();
    }

private:
    TokenRow m_shown;
    AgentLabel *m_label;
    AgentLabel *m_email;
    AgentLabel *m_created;
    AgentLabel *m_end;
    Button *m_revoke;
    Runs m_runs;
};

std::vector<RecordField> fields()
{
    return {{OpTokensView::tr("Label"), tokenLabel, {}},
            {OpTokensView::tr("E-mail"), [](const Record &token) { return str(token, "email"); }, {}},
            {OpTokensView::tr("Created"), {}, [](const Record &token) { return moment(token, "created_at"); }},
            {OpTokensView::tr("Expires"), {}, [](const Record &token) { return moment(token, "expires_at"); }}};
}

} // namespace

OpTokensView::OpTokensView(std::shared_ptr<AppState> state, QWidget *parent)
    : OpTab(parent), m_model(std::make_shared<OpTokensModel>(std::move(state))), m_error(new InlineError),
      m_list(nullptr), m_showRevoked(new Toggle(tr("Show revoked"))),
      m_prune(new Button(tr("Prune revoked"), SecondaryButtonStyle{compact})),
      m_observer(
          {&m_model->tokens, &m_model->showRevoked, &m_model->error, &m_model->known}, [this] { render(); },
          m_model->state().timing().frame),
      m_actions(
          {&m_model->running}, [this] { renderActions(); }, m_model->state().timing().frame)
{
    build();
    render();
}

OpTokensView::~OpTokensView() = default;

void OpTokensView::build()
{
    RecordList::Setup setup;
    setup.title = tr("API tokens");
    setup.filter = tr("Filter tokens");
    setup.empty = tr("No tokens.");
    setup.columns = {{252, 150, 3}, {240, 140, 2}, {100, 84, 0}, {160, 134, 0}, {84, 74, 0}};
    setup.fields = fields();
    setup.makeRow = [this](std::shared_ptr<const std::vector<Column>> columns) {
        return new Row(
            std::move(columns), [this](const TokenRow &token) { askToRevoke(token.id, token.label, token.email); },
            [model = m_model.get()](std::int64_t id) { return model->runs("admin.tokens.revoke", id); });
    };
    m_list = new RecordList(std::move(setup));
    m_showRevoked->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_list->band()->addSpacing(8);
    m_list->band()->addWidget(m_showRevoked);
    m_list->band()->addSpacing(8);
    m_list->band()->addWidget(m_prune);
    setLayout(column({m_error, m_list}, cardGap));
    // They have come later than the rows below them.
    auto *const filter = m_list->findChild<SearchField *>();
    setTabOrder(filter, m_showRevoked);
    setTabOrder(m_showRevoked, m_prune);

    OpTokensModel *const model = m_model.get();
    connect(m_showRevoked, &QAbstractButton::toggled, this, [model](bool on) { model->showRevoked = on; });
    connect(m_prune, &QAbstractButton::clicked, this, [model] { start(model->prune()); });
}

void OpTokensView::load()
{
    start(m_model->load());
}

void OpTokensView::focusSearch()
{
    m_list->focusSearch();
}

void OpTokensView::setRoom(int height)
{
    m_list->setRoom(height);
}

void OpTokensView::render()
{
    m_error->setText(m_model->error());
    // Twenty thousand are not looked through again because an error came or went.
    const bool all = m_model->showRevoked();
    const Drawn now{m_model->tokens.version(), m_model->known(), all};
    if (std::exchange(m_drawn, now) == now) {
        return;
    }
    m_list->setRecords(
        m_model->tokens(), m_model->known(),
        all ? RecordRows::Wanted() : [](const Record &token) { return !isRevoked(token); });
}

void OpTokensView::renderActions()
{
    m_prune->setRunning(m_model->runs("admin.tokens.prune", 0));
    m_list->refill();
}

void OpTokensView::askToRevoke(std::int64_t id, const QString &label, const QString &email)
{
    const std::shared_ptr<OpTokensModel> model = m_model;
    const bool agreed = confirm(this, tr("Revoke this token?"), tr("%1 of %2 stops working now.").arg(label, email),
                                tr("Revoke"), Destructive::Yes);
    if (agreed) {
        start(model->revoke(id));
    }
}

} // namespace quillfen
