// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/ophubsmodel.h"

#include "state/action.h"
#include "state/recordlists.h"

#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

namespace {

/// Promoting, demoting and retiring are answered only when they are done.
constexpr RPC::Seconds patience = 30min;

Record recordOf(std::optional<json::value> &answer)
{
    return answer ? takeObject(std::move(*answer)) : Record();
}

} // namespace

QCoro::Task<> OpHubsModel::load()
{
    const auto self = shared_from_this();
    const std::uint64_t generation = beginLoad();
    Answer list = co_await ask("admin.hubs.list", 60s);
    if (isLate(generation)) {
        co_return;
    }
    if (list.value) {
        hubs = takeRecords(std::move(*list.value), "hubs");
    }
    error = list.problem;
    known = true;
    Answer report = co_await ask("admin.hubs.replication", 60s);
    if (isLate(generation)) {
        co_return;
    }
    replication = recordOf(report.value);
    Answer status = co_await ask("admin.hubs.promote_status", 30s);
    if (isLate(generation)) {
        co_return;
    }
    promotion = recordOf(status.value);
}

QCoro::Task<> OpHubsModel::onHub(std::string method, std::int64_t id, QString done, More more)
{
    Act action;
    action.method = std::move(method);
    action.idName = "site_id";
    action.id = id;
    action.params = std::move(more.params);
    action.done = std::move(done);
    action.timeout = more.timeout;
    action.operation = std::move(more.operation);
    return act(std::move(action));
}

QCoro::Task<> OpHubsModel::poll(std::int64_t id)
{
    return onHub("admin.hubs.poll", id, tr("polled"), {});
}

QCoro::Task<> OpHubsModel::rescan(std::int64_t id)
{
    return onHub("admin.hubs.rescan", id, tr("rescanned"), {});
}

QCoro::Task<> OpHubsModel::promote(std::int64_t id, const QString &name)
{
    const More more{.timeout = patience, .operation = tr("Promoting %1").arg(name)};
    return onHub("admin.hubs.promote", id, tr("promotion started"), more);
}

QCoro::Task<> OpHubsModel::demote(std::int64_t id, const QString &name)
{
    const More more{.timeout = patience, .operation = tr("Demoting %1").arg(name)};
    return onHub("admin.hubs.demote", id, tr("demoted"), more);
}

QCoro::Task<> OpHubsModel::retire(std::int64_t id, const QString &name)
{
    const More more{
        .timeout = patience, .operation = tr("Retiring %1").arg(name), .params = params("force", true, "wipe", true)};
    return onHub("admin.hubs.retire", id, tr("retired"), more);
}

QCoro::Task<> OpHubsModel::preflight(QString name, QString address)
{
    const auto self = shared_from_this();
    if (checking()) {
        co_return;
    }
    const std::shared_ptr<AppState> state = shared();
    checking = true;
    Action action = calling("admin.hubs.preflight", params("name", name, "address", address), 300s);
    action.refresh = false;
    const std::optional<json::value> answer = co_await perform(state, action);
    checking = false;
    if (!answer) {
        co_return;
    }
    const Record &found = object(&*answer);
    HubOffer machine;
    machine.name = name;
    machine.address = address;
    machine.fingerprint = str(found, "fingerprint");
    machine.summary = str(found, "summary");
    offer = machine;
}

std::optional<HubOffer> OpHubsModel::takeOffer()
{
    std::optional<HubOffer> machine = offer();
    offer = std::nullopt;
    return machine;
}

QCoro::Task<> OpHubsModel::registerHub(HubOffer machine)
{
    const auto self = shared_from_this();
    const std::shared_ptr<AppState> state = shared();
    Action adding =
        calling("admin.hubs.add",
                params("name", machine.name, "address", machine.address, "fingerprint", machine.fingerprint), 120s);
    adding.done = saying(tr("%1 registered; the build is running").arg(machine.name));
    adding.refresh = false;
    const std::optional<json::value> added = co_await perform(state, adding);
    if (!added) {
        co_return;
    }
    Action building = calling("admin.hubs.build.set", params("site_id", num(object(&*added), "id")), 120s);
    building.refresh = false;
    co_await perform(state, building);
    co_await load();
}

} // namespace quillfen
