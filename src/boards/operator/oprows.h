// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/values.h"

#include <QColor>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <string_view>

namespace quillfen {

/// The tabs of the operator console.
enum class OperatorTab { Hubs, Users, Tokens, Exports };

/// The tab of this name; the hubs for any other name.
[[nodiscard]] OperatorTab operatorTab(const QString &name);

/// The look of a pill in a card.
struct PillLook {
    QColor bg;
    QColor fg;
    bool outlined = false;

    bool operator==(const PillLook &) const = default;
};

/// How well a word of the agent's sounds: for pills, and for the mark before a state.
[[nodiscard]] PillLook pillLook(const QString &state);
[[nodiscard]] QColor stateColour(const QString &state);

/// A moment of a record as a number to sort by, 0 when it is none.
[[nodiscard]] std::int64_t moment(const Record &record, std::string_view key);

/// A registered hub.
struct HubRow {
    std::int64_t id = 0;
    QString name;
    QString role;
    QString address;
    QString state;
    QString sold; ///< empty when the agent does not tell
    bool primary = false;
};
[[nodiscard]] HubRow hubRow(const Record &hub);

/// A hub that follows the primary one.
struct ReplicaRow {
    QString name;
    QString address;
    QString state;
    QString lag;
};
[[nodiscard]] ReplicaRow replicaRow(const Record &replica);

/// The line of the promotion that runs, empty when none does.
[[nodiscard]] QString promotionTitle(const Record &promotion);

/// A user of the service.
struct UserRow {
    std::int64_t id = 0;
    QString email;
    QString tenant;
    QString created;
    QString state;
    bool pending = false;
};
/// The user's state, which older agents call status.
[[nodiscard]] QString userState(const Record &user);
[[nodiscard]] UserRow userRow(const Record &user);

/// A tenant, with what it has bought and what of it is in use.
struct TenantRow {
    QString name;
    QString line;
};
[[nodiscard]] TenantRow tenantRow(const Record &tenant);

/// An API token.
struct TokenRow {
    std::int64_t id = 0;
    QString label;
    QString email;
    QString created;
    QString end; ///< when it expires, or that it is revoked
    bool revoked = false;
};
[[nodiscard]] bool isRevoked(const Record &token);
[[nodiscard]] QString tokenLabel(const Record &token);
[[nodiscard]] TokenRow tokenRow(const Record &token);

/// A copy or a media order.
struct JobRow {
    std::int64_t id = 0;
    QString number;
    QString volume;
    QString tenant;
    QString delivery;
    QString state;
    QString medium;
    bool shippable = false;
};
[[nodiscard]] JobRow jobRow(const Record &job);

} // namespace quillfen
