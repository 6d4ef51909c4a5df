// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/policy/policymodel.h"

#include "state/action.h"
#include "state/ask.h"
#include "state/clock.h"
#include "state/format.h"
#include "state/recordlists.h"
#include "state/start.h"

#include <QDateTime>

#include <algorithm>
#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

namespace {

std::optional<Policy> policyIn(const json::value &answer)
{
    const json::value *const output = object(&answer).if_contains("output");
    return parsedPolicy(output != nullptr && output->is_string() ? str(output) : QString());
}

QString today()
{
    const QDateTime moment = QDateTime::fromMSecsSinceEpoch(now().time_since_epoch().count(), Qt::UTC);
    return shortDate(moment.toString(Qt::ISODateWithMs));
}

} // namespace

PolicyModel::PolicyModel(std::shared_ptr<AppState> state) : m_state(std::move(state)) {}

std::optional<qsizetype> PolicyModel::volumeIndex() const
{
    const Records &volumes = m_state->volumes();
    if (volumes.isEmpty()) {
        return std::nullopt;
    }
    const std::optional<std::int64_t> picked = volumeId();
    const Record *const found = picked ? recordWithId(volumes, *picked) : nullptr;
    return found == nullptr ? 0 : found - volumes.constData();
}

std::optional<std::int64_t> PolicyModel::shownId() const
{
    const std::optional<qsizetype> index = volumeIndex();
    return index ? std::optional(num(m_state->volumes().at(*index), "id")) : std::nullopt;
}

bool PolicyModel::canSave() const
{
    return volumeIndex().has_value() && values() != saved();
}

void PolicyModel::pickVolume(std::int64_t id)
{
    if (shownId() == id) {
        return;
    }
    volumeId = id;
    start(load());
}

void PolicyModel::follow()
{
    if (m_known && m_seen == m_state->volumes.version()) {
        return;
    }
    m_seen = m_state->volumes.version();
    std::vector<std::int64_t> ids = idsOf(m_state->volumes());
    if (m_known != ids) {
        m_known = std::move(ids);
        start(load());
    }
}

void PolicyModel::forgetUnsaved()
{
    if (values() != saved()) {
        values = saved();
    }
}

QCoro::Task<> PolicyModel::load()
{
    const auto self = shared_from_this();
    const std::optional<std::int64_t> id = shownId();
    const std::uint64_t generation = ++m_generation;
    // What the user chose for one volume is no choice for another.
    if (std::exchange(m_loadedFor, id) != id) {
        ++m_visit;
        forgetUnsaved();
    }
    if (!id) {
        co_return;
    }
    const json::object request = params("volume_id", *id);
    const std::optional<json::value> answer = co_await answerOrNothing(m_state, "history.show", request);
    const std::optional<Policy> answered = answer ? policyIn(*answer) : std::nullopt;
    if (generation != m_generation || !answered) {
        co_return;
    }
    const bool untouched = values() == saved();
    saved = *answered;
    if (untouched) {
        values = *answered;
    }
}

void PolicyModel::setValue(std::size_t tier, std::int64_t number)
{
    Policy changed = values();
    changed.at(tier) = number;
    values = changed;
}

void PolicyModel::usePlan(std::size_t plan)
{
    values = planAt(plan).values;
}

QCoro::Task<> PolicyModel::save()
{
    const auto self = shared_from_this();
    const std::optional<std::int64_t> id = shownId();
    if (!id || saving().contains(*id)) {
        co_return;
    }
    const Policy sent = values();
    const std::uint64_t visit = m_visit;
    Action action = calling("history.set", params("volume_id", *id, "policy", wireForm(sent)), 120s);
    action.done = saying(tr("policy saved"));
    action.refresh = false;
    saving.update([id](QSet<std::int64_t> &ids) { ids.insert(*id); });
    const std::optional<json::value> answer = co_await perform(m_state, action);
    saving.update([id](QSet<std::int64_t> &ids) { ids.remove(*id); });
    if (answer && m_loadedFor == id) {
        ++m_generation; // what was asked before it was saved is out of date
        // Whoever left for another volume and came back has what was there before, and has not chosen it.
        const bool unchosen = visit != m_visit && values() == saved();
        saved = sent;
        if (unchosen) {
            values = sent;
        }
    }
}

QCoro::Task<> PolicyModel::pin()
{
    const auto self = shared_from_this();
    const std::optional<std::int64_t> id = shownId();
    if (!id || pinning().contains(*id)) {
        co_return;
    }
    Action action;
    action.method = "volumes.snapshots";
    // What the agent keeps is no text of the window: its language stays that of the agent.
    action.params = params("volume_id", *id, "label", QStringLiteral("pinned ") + today());
    action.timeout = 300s;
    action.done = saying(tr("pinned"));
    action.refresh = false;
    pinning.update([id](QSet<std::int64_t> &ids) { ids.insert(*id); });
    co_await perform(m_state, action);
    pinning.update([id](QSet<std::int64_t> &ids) { ids.remove(*id); });
}

} // namespace quillfen
