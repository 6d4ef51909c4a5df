// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/oprows.h"

#include "state/format.h"
#include "ui/theme.h"

#include <QCoreApplication>

namespace quillfen {

using namespace Qt::StringLiterals;

namespace {

struct OpRows {
    Q_DECLARE_TR_FUNCTIONS(OpRows)
};

enum class Sound { Good, Busy, Bad, Neutral };

/// The agent's words are its own; these are the ones whose sound is known.
Sound soundOf(const QString &state)
{
    static const QStringList good{u"primary"_s,   u"serving"_s, u"ready"_s,     u"streaming"_s, u"active"_s,
                                  u"connected"_s, u"online"_s,  u"delivered"_s, u"synced"_s};
    static const QStringList busy{u"pending"_s,  u"catching up"_s, u"promoting"_s,
                                  u"demoting"_s, u"checking"_s,    u"retiring"_s};
    static const QStringList bad{u"failed"_s,   u"closing"_s,     u"closed"_s, u"suspended"_s,
                                 u"rejected"_s, u"unreachable"_s, u"lost"_s,   u"error"_s};
    if (good.contains(state)) {
        return Sound::Good;
    }
    if (busy.contains(state)) {
        return Sound::Busy;
    }
    return bad.contains(state) ? Sound::Bad : Sound::Neutral;
}

} // namespace

OperatorTab operatorTab(const QString &name)
{
    if (name == "users"_L1) {
        return OperatorTab::Users;
    }
    if (name == "tokens"_L1) {
        return OperatorTab::Tokens;
    }
    return name == "exports"_L1 ? OperatorTab::Exports : OperatorTab::Hubs;
}

PillLook pillLook(const QString &state)
{
    switch (soundOf(state)) {
    case Sound::Good:
        return {Theme::okBg, Theme::okText, false};
    case Sound::Busy:
        return {Theme::panel2, Theme::warn, true};
    case Sound::Bad:
        return {Theme::dangerBg, Theme::dangerText, false};
    case Sound::Neutral:
        break;
    }
    return {Theme::panel, Theme::heading, false};
}

QColor stateColour(const QString &state)
{
    switch (soundOf(state)) {
    case Sound::Good:
        return Theme::ok;
    case Sound::Busy:
        return Theme::warn;
    case Sound::Bad:
        return Theme::danger;
    case Sound::Neutral:
        break;
    }
    return Theme::muted;
}

std::int64_t moment(const Record &record, std::string_view key)
{
    const auto read = parseDate(str(record, key));
    return read ? read->time_since_epoch().count() : 0;
}

HubRow hubRow(const Record &hub)
{
    HubRow row;
    row.id = num(hub, "id");
    row.name = str(hub, "name");
    row.role = str(hub, "role");
    row.address = str(hub, "address");
    row.state = str(hub, "state");
    const QString sold = str(hub, "sold_pct");
    row.sold = sold.isEmpty() ? QString() : OpRows::tr("%1% sold").arg(sold);
    row.primary = row.role == "primary"_L1;
    return row;
}

ReplicaRow replicaRow(const Record &replica)
{
    const QString lag = str(replica, "lag");
    return {str(replica, "name"), str(replica, "address"), str(replica, "state"),
            lag.isEmpty() ? QString() : OpRows::tr("lag %1").arg(lag)};
}

QString promotionTitle(const Record &promotion)
{
    const QString state = str(promotion, "state");
    return state.isEmpty() || state == "idle"_L1 ? QString() : OpRows::tr("Promotion: %1").arg(state);
}

QString userState(const Record &user)
{
    const QString state = str(user, "state");
    return state.isEmpty() ? str(user, "status") : state;
}

UserRow userRow(const Record &user)
{
    UserRow row;
    row.id = num(user, "id");
    row.email = str(user, "email");
    row.tenant = str(user, "tenant_name");
    row.created = shortDate(str(user, "created_at"));
    row.state = userState(user);
    row.pending = row.state == "pending"_L1;
    return row;
}

TenantRow tenantRow(const Record &tenant)
{
    const QString line =
        OpRows::tr("%1 purchased · %2 allocated · %3")
            .arg(gb(num(tenant, "purchased_capacity_bytes")), gb(num(tenant, "allocated_bytes")), str(tenant, "state"));
    return {str(tenant, "name"), line};
}

bool isRevoked(const Record &token)
{
    return isTrue(token, "revoked") || !str(token, "revoked_at").isEmpty();
}

QString tokenLabel(const Record &token)
{
    const QString label = str(token, "label");
    return label.isEmpty() ? OpRows::tr("(no label)") : label;
}

TokenRow tokenRow(const Record &token)
{
    TokenRow row;
    row.id = num(token, "id");
    row.label = tokenLabel(token);
    row.email = str(token, "email");
    row.created = shortDate(str(token, "created_at"));
    row.revoked = isRevoked(token);
    row.end = row.revoked ? OpRows::tr("revoked") : OpRows::tr("expires %1").arg(shortDate(str(token, "expires_at")));
    return row;
}

JobRow jobRow(const Record &job)
{
    JobRow row;
    row.id = num(job, "id");
    row.number = u'#' + QString::number(row.id);
    const QString volume = str(job, "volume_name");
    row.volume = volume.isEmpty() ? str(job, "volume") : volume;
    row.tenant = str(job, "tenant_name");
    row.delivery = str(job, "delivery");
    row.state = str(job, "state");
    row.medium = str(job, "medium");
    row.shippable = row.delivery == "media"_L1 && row.state == "ready"_L1;
    return row;
}

} // namespace quillfen
