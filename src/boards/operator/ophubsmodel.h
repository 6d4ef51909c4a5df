// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/operator/opmodel.h"

#include <QCoreApplication>

namespace quillfen {

/// A machine that has passed the preflight and waits to be registered.
struct HubOffer {
    QString name;
    QString address;
    QString fingerprint; ///< the machine's host key
    QString summary;
};

/// The hubs, their replication and promotion, and what can be done with them.
class OpHubsModel final : public OpModel {
    Q_DECLARE_TR_FUNCTIONS(OpHubsModel)

public:
    using OpModel::OpModel;

    Published<Records> hubs;
    Published<Record> replication;
    Published<Record> promotion; ///< the agent's "promote" record
    Published<bool> checking{false};
    Published<std::optional<HubOffer>> offer; ///< to be put to the user

    QCoro::Task<> load() override;

    QCoro::Task<> poll(std::int64_t id);
    QCoro::Task<> rescan(std::int64_t id);
    QCoro::Task<> promote(std::int64_t id, const QString &name);
    QCoro::Task<> demote(std::int64_t id, const QString &name);
    /// Removes the hub and wipes its machine.
    QCoro::Task<> retire(std::int64_t id, const QString &name);

    /// Has the agent look at a machine; what it found becomes `offer`. Nothing is registered by it.
    QCoro::Task<> preflight(QString name, QString address);
    /// Takes the offer, so that it is put to the user once.
    [[nodiscard]] std::optional<HubOffer> takeOffer();
    /// Registers the machine and has it built.
    QCoro::Task<> registerHub(HubOffer machine);

private:
    /// What else the action is, when it is more than a word to the hub.
    struct More {
        RPC::Seconds timeout{300};
        QString operation = {};   ///< its title among the long operations
        json::object params = {}; ///< besides the hub's id
    };
    QCoro::Task<> onHub(std::string method, std::int64_t id, QString done, More more);
};

} // namespace quillfen
