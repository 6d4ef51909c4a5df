// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>

namespace quillfen {

/// The systems that other machines run, as the agent keys its commands.
enum class InitiatorSystem { Linux, Windows };

/// What the iSCSI card says.
struct IscsiDetails {
    QString target;
    QString portal; ///< with its port, and whether only this computer reaches it
    QString lun;
    bool chap = false;
    QString chapUser;
    std::optional<QString> secret;
    bool secretFromLog = false; ///< it was read from the appliance's log, not issued by the service
    QString notes;

    bool operator==(const IscsiDetails &) const = default;
};

[[nodiscard]] IscsiDetails iscsiDetails(const Record &info, const QString &localSecret);

/// The commands for one system, the secret in the place of its placeholder when it is known.
[[nodiscard]] QStringList commandLines(const Record &info, InitiatorSystem system,
                                       const std::optional<QString> &secret);

/// An address and a port as one text (RFC 3986: a literal IPv6 address stands in brackets).
[[nodiscard]] QString joinedPortal(const QString &address, const QString &port);

/// What the iSCSI card can do. Main thread.
class IscsiModel final : public std::enable_shared_from_this<IscsiModel> {
    Q_DECLARE_TR_FUNCTIONS(IscsiModel)

public:
    explicit IscsiModel(std::shared_ptr<AppState> state);

    Published<Record> info;
    Published<QString> localSecret;
    /// The portal as it was last loaded, empty when none is set. The field takes it over when nobody is typing in it.
    Published<QString> savedPortal;

    [[nodiscard]] AppState &state() noexcept { return *m_state; }

    /// Reads what the agent knows about volume `id`; failures leave the card as it is.
    QCoro::Task<> load(std::int64_t id);
    /// Sets the address by which other machines reach this computer; an empty one clears it.
    QCoro::Task<> save(std::int64_t id, QString portal);
    QCoro::Task<> setChap(std::int64_t id, bool on);
    /// Puts a secret, or a command that may carry it, on the clipboard.
    void copy(const QString &text);

private:
    std::shared_ptr<AppState> m_state;
    std::int64_t m_shown = 0;
    std::uint64_t m_generation = 0; ///< grows with every load, so that late answers can be told
};

} // namespace quillfen
