// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/opusersview.h"

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

#include <algorithm>

namespace quillfen {

namespace {

constexpr int compact = 28;
constexpr int cardGap = 16;
constexpr int narrowBelow = 780;
/// What of the tenants stays in view below a long list of users, so that one sees that there is something.
constexpr int glimpse = 132;

/// What the rows of users ask for.
struct UserActions {
    std::function<void(const UserRow &)> approve;
    std::function<void(const UserRow &)> reject;
    std::function<void(const UserRow &)> remove;
    std::function<bool(const char *method, const UserRow &)> runs; ///< whether it has not ended yet
};

/// One user.
class UserLine final : public RecordRow {
public:
    UserLine(std::shared_ptr<const std::vector<Column>> columns, const UserActions &actions)
        : RecordRow(std::move(columns)), m_email(new AgentLabel({}, Type::BodySemibold, Theme::heading)),
          m_tenant(new AgentLabel({}, Type::Body, Theme::text)), m_created(new AgentLabel({}, Type::Body, Theme::text)),
          m_state(statePill()), m_approve(new Button(OpUsersView::tr("Approve"), PrimaryButtonStyle{compact})),
          m_reject(new Button(OpUsersView::tr("Reject"), SecondaryButtonStyle{compact})),
          m_delete(new Button(OpUsersView::tr("Delete"), DangerButtonStyle{})), m_runs(actions.runs)
    {
        m_email->setElideMode(Qt::ElideMiddle);
        m_delete->setControlHeight(compact);
        for (QWidget *const cell : std::initializer_list<QWidget *>{m_email, m_tenant, m_created, m_state}) {
            addCell(cell);
        }
        for (Button *const button : {m_approve, m_reject, m_delete}) {
            addButton(button);
        }
        const auto onClick = [this](Button *button, const std::function<void(const UserRow &)> &action) {
            QObject::connect(button, &QAbstractButton::clicked, this, [this, action] { action(m_shown); });
        };
        onClick(m_approve, actions.approve);
        onClick(m_reject, actions.reject);
        onClick(m_delete, actions.remove);
    }

    void fill(const Record &record) override
    {
        m_shown = userRow(record);
        m_email->setText(m_shown.email);
        m_tenant->setText(m_shown.tenant);
        m_created->setText(m_shown.created);
        showState(m_state, m_shown.state);
        m_approve->setRunning(m_runs("admin.users.approve", m_shown));
        m_reject->setRunning(m_runs("admin.users.reject", m_shown));
        m_delete->setRunning(m_runs("admin.users.delete", m_shown));
        setButtonVisible(m_approve, m_shown.pending);
        setButtonVisible(m_reject, m_shown.pending);
        setRowName(
            m_shown.email,
            OpUsersView::tr("Tenant %1, created %2, state %3").arg(m_shown.tenant, m_shown.created, m_shown.state));
        arrange();
    }

protected:
    /// In a narrow window the tenant stands under the address, which is what tells users apart.
    [[nodiscard]] std::vector<QRect> rooms(const QRect &inner) const override
    {
        std::vector<QRect> cells = RecordRow::rooms(inner);
        if (width() < scaled(narrowBelow)) {
            const int line = lineHeight(Type::Body);
            const int top = (height() - 2 * line) / 2;
            const int across = cells[1].right() - cells[0].left() + 1;
            cells[1] = QRect(cells[0].left(), top + line, across, line);
            cells[0] = QRect(cells[0].left(), top, across, line);
        }
        return cells;
    }

private:
    UserRow m_shown;
    AgentLabel *m_email;
    AgentLabel *m_tenant;
    AgentLabel *m_created;
    Pill *m_state;
    Button *m_approve;
    Button *m_reject;
    Button *m_delete;
    std::function<bool(const char *, const UserRow &)> m_runs;
};

/// One tenant.
class TenantLine final : public RecordRow {
public:
    explicit TenantLine(std::shared_ptr<const std::vector<Column>> columns)
        : RecordRow(std::move(columns)), m_name(new AgentLabel({}, Type::BodySemibold, Theme::heading)),
          m_line(new AgentLabel({}, Type::Body, Theme::text))
    {
        addCell(m_name);
        addCell(m_line);
    }

    void fill(const Record &record) override
    {
        const TenantRow tenant = tenantRow(record);
        m_name->setText(tenant.name);
        m_line->setText(tenant.line);
        setRowName(tenant.name, tenant.line);
        arrange();
    }

private:
    AgentLabel *m_name;
    AgentLabel *m_line;
};

std::vector<RecordField> userFields()
{
    return {{OpUsersView::tr("E-mail"), [](const Record &user) { return str(user, "email"); }, {}},
            {OpUsersView::tr("Tenant"), [](const Record &user) { return str(user, "tenant_name"); }, {}},
            {OpUsersView::tr("Created"), {}, [](const Record &user) { return moment(user, "created_at"); }},
            {OpUsersView::tr("State"), [](const Record &user) { return userState(user); }, {}}};
}

RecordList *tenantList()
{
    RecordList::Setup setup;
    setup.title = OpUsersView::tr("Tenants");
    setup.empty = OpUsersView::tr("No tenants.");
    setup.rowHeight = 40;
    setup.columns = {{240, 120, 1}, {600, 260, 2}, {0, 0, 0}};
    setup.makeRow = [](std::shared_ptr<const std::vector<Column>> columns) {
        return new TenantLine(std::move(columns));
    };
    return new RecordList(std::move(setup));
}

} // namespace

OpUsersView::OpUsersView(std::shared_ptr<AppState> state, QWidget *parent)
    : OpTab(parent), m_model(std::make_shared<OpUsersModel>(std::move(state))), m_error(new InlineError),
      m_observer(
          {&m_model->users, &m_model->tenants, &m_model->error, &m_model->known}, [this] { render(); },
          m_model->state().timing().frame),
      m_actions(
          {&m_model->running}, [this] { m_users->refill(); }, m_model->state().timing().frame)
{
    build();
    render();
}

OpUsersView::~OpUsersView() = default;

void OpUsersView::build()
{
    OpUsersModel *const model = m_model.get();
    UserActions actions;
    actions.approve = [model](const UserRow &user) { start(model->approve(user.id)); };
    actions.reject = [model](const UserRow &user) { start(model->reject(user.id)); };
    actions.remove = [this](const UserRow &user) { askToDelete(user.id, user.email); };
    actions.runs = [model](const char *method, const UserRow &user) { return model->runs(method, user.id); };

    RecordList::Setup setup;
    setup.title = tr("Users");
    setup.filter = tr("Filter users");
    setup.empty = tr("No users.");
    setup.rowHeight = 48;
    setup.columns = {{228, 138, 3}, {180, 104, 2}, {116, 96, 0}, {92, 84, 0}, {220, 206, 0}};
    setup.fields = userFields();
    setup.makeRow = [actions](std::shared_ptr<const std::vector<Column>> columns) {
        return new UserLine(std::move(columns), actions);
    };
    m_users = new RecordList(std::move(setup));
    m_tenants = tenantList();
    setLayout(column({m_error, m_users, m_tenants}, cardGap));
}

void OpUsersView::load()
{
    start(m_model->load());
}

void OpUsersView::focusSearch()
{
    m_users->focusSearch();
}

void OpUsersView::setRoom(int height)
{
    m_room = height;
    fit();
}

void OpUsersView::fit()
{
    m_tenants->setRoom(m_room);
    m_users->setRoom(m_room - cardGap - std::min(m_tenants->sizeHint().height(), scaled(glimpse)));
}

void OpUsersView::render()
{
    m_error->setText(m_model->error());
    m_tenants->setRecords(m_model->tenants(), m_model->known());
    m_users->setRecords(m_model->users(), m_model->known());
    fit();
}

void OpUsersView::askToDelete(std::int64_t id, const QString &email)
{
    const std::shared_ptr<OpUsersModel> model = m_model;
    const bool agreed = typedConfirm(this, tr("Delete %1?").arg(email),
                                     tr("The user and their tokens are removed. Their account's volumes follow the "
                                        "account's own closure rules."),
                                     QStringLiteral("DELETE"), tr("Delete"));
    if (agreed) {
        start(model->remove(id));
    }
}

} // namespace quillfen
