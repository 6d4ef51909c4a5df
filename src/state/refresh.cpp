// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/appstate.h"
#include "state/ask.h"
#include "state/timelimits.h"

namespace quillfen {

namespace {

/// A copy is ready to become a volume once nothing is left to be filled in.
bool isReady(const Record &copy)
{
    const json::value *const hydration = copy.if_contains("hydration_pct");
    return str(copy, "state") == QLatin1String("ready") && (hydration == nullptr || hydration->is_null());
}

void nameSource(Record &copy, const Record &volume)
{
    if (const json::value *const name = volume.if_contains("name")) {
        copy["source_name"] = *name;
    } else {
        copy.erase("source_name");
    }
}

/// Appends the ready ones among the copies that the agent listed for `volume`.
void addReadyCopies(Records &ready, json::value answer, const Record &volume)
{
    Record listed = takeObject(std::move(answer));
    json::value *const recoveries = listed.if_contains("recoveries");
    if (recoveries == nullptr) {
        return;
    }
    for (Record &copy : takeRecords(std::move(*recoveries))) {
        if (isReady(copy)) {
            nameSource(copy, volume);
            ready.emplaceBack(copy, json::storage_ptr()); // out of the memory of the answer, which holds many more
        }
    }
}

QMap<QString, QString> statusByContainer(const Records &appliances)
{
    QMap<QString, QString> statuses;
    for (const Record &appliance : appliances) {
        statuses.insert(str(appliance, "container"), str(appliance, "status"));
    }
    return statuses;
}

} // namespace

/// A refresh nobody asked for reports nothing: what could not be had now is asked for again at the next tick, and until
/// then the views keep what they know.
QCoro::Task<std::optional<json::value>> AppState::answerOrNothing(std::string method, json::object params)
{
    const auto self = shared_from_this();
    const std::uint64_t connection = m_connection;
    const RPC::Seconds limit = timeLimit(method);
    Answer answer = co_await ask(self, std::move(method), std::move(params), limit);
    // Whoever waits is told of the loss before `lost` is, and must not take the rest of its calls for failed ones.
    if (answer.connectionLost && m_connection == connection) {
        ++m_connection;
    }
    co_return std::move(answer.value);
}

QCoro::Task<> AppState::refresh()
{
    const auto self = shared_from_this();
    const std::uint64_t connection = m_connection;
    const json::object none;

    // Each answer has a variable of its own: assigned to one that has held another, it would be copied as a whole into
    // the memory of that one.
    if (agentVersion().isEmpty()) {
        const std::optional<json::value> version = co_await answerOrNothing("agent.version", none);
        if (version) {
            agentVersion = str(object(&*version), "version");
        }
    }

    std::optional<json::value> login = co_await answerOrNothing("auth.status", none);
    if (login) {
        m_authKnown = true;
        auth = takeObject(std::move(*login));
    }

    std::optional<json::value> engine = co_await answerOrNothing("vm.status", none);
    if (engine) {
        vm = takeObject(std::move(*engine));
    }

    std::optional<json::value> mounted = co_await answerOrNothing("mount.state", none);
    if (mounted) {
        mounts = takeRecords(std::move(*mounted));
    }

    if (m_connection != connection || !signedIn()) {
        co_return;
    }

    std::optional<json::value> listed = co_await answerOrNothing("volumes.list", none);
    if (listed) {
        volumes = takeRecords(std::move(*listed));
    }

    std::optional<json::value> subscription = co_await answerOrNothing("account", none);
    if (subscription) {
        account = takeObject(std::move(*subscription));
    }

    co_await refreshStatuses();
    co_await refreshCopies();
    if (m_connection != connection) {
        co_return;
    }

    if (engineRunning()) {
        std::optional<json::value> orphaned = co_await answerOrNothing("appliance.orphans", none);
        if (orphaned) {
            orphans = takeRecords(std::move(*orphaned));
        }
    }

    if (engineRunning()) {
        std::optional<json::value> appliances = co_await answerOrNothing("appliance.list", none);
        if (appliances) {
            localAppliances = statusByContainer(takeRecords(std::move(*appliances)));
        }
    } else {
        localAppliances = QMap<QString, QString>();
    }
}

QCoro::Task<> AppState::refreshStatuses()
{
    const auto self = shared_from_this();
    const std::uint64_t connection = m_connection;
    const Records snapshot = volumes();
    for (const Record &volume : snapshot) {
        const std::int64_t id = num(volume, "id");
        const json::object request = params("volume_id", id);
        std::optional<json::value> answer = co_await answerOrNothing("volumes.status", request);
        if (answer) {
            setStatus(id, takeObject(std::move(*answer)));
        } else if (m_connection != connection) {
            co_return;
        }
    }
}

QCoro::Task<> AppState::refreshCopies()
{
    const auto self = shared_from_this();
    const std::uint64_t connection = m_connection;
    const Records snapshot = volumes();
    Records ready;
    for (const Record &volume : snapshot) {
        const json::object request = params("volume_id", num(volume, "id"));
        std::optional<json::value> answer = co_await answerOrNothing("recoveries.list_for_volume", request);
        if (answer) {
            addReadyCopies(ready, std::move(*answer), volume);
        } else if (m_connection != connection) {
            co_return;
        }
    }
    readyCopies = ready;
}

} // namespace quillfen
