// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/newvolumemodel.h"

#include "state/action.h"
#include "state/start.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

namespace {

constexpr double bytesPerGB = 1'073'741'824.0;
constexpr std::int64_t usualSizeGB = 100;

/// A slider starts at 1 and needs a second place to go to, whatever is left.
constexpr std::int64_t smallestRange = 2;

QString words(const char *text)
{
    return QCoreApplication::translate("NewVolumeModel", text);
}

} // namespace

std::int64_t PlanRoom::wholeGB() const
{
    return std::max<std::int64_t>(0, static_cast<std::int64_t>(std::floor(freeGB)));
}

std::int64_t PlanRoom::largestGB() const
{
    return std::max(wholeGB(), smallestRange);
}

std::int64_t PlanRoom::suggestedGB() const
{
    return std::clamp<std::int64_t>(wholeGB(), 1, usualSizeGB);
}

PlanRoom planRoom(const AppState &state)
{
    const std::int64_t capacity = state.capacityBytes();
    const double freeBytes = static_cast<double>(capacity) - static_cast<double>(state.allocatedBytes());
    return {.known = capacity != 0, .freeGB = freeBytes / bytesPerGB};
}

QString planRoomText(const PlanRoom &room)
{
    if (!room.known) {
        return words("Loading your plan…");
    }
    if (room.freeGB >= 1.0) {
        return words("%1 GB left on your plan. History is kept inside this space.").arg(room.wholeGB());
    }
    return words("Your plan is fully allocated; resize or delete a volume first.");
}

std::optional<QString> problemOf(const NewVolumeForm &form, const PlanRoom &room)
{
    if (lacksName(form)) {
        return words("Give the volume a name.");
    }
    // One GB is offered even when less is left: whether it fits then is the agent's to say.
    const double most = room.freeGB >= 1.0 ? room.freeGB : 1.0;
    if (room.known && static_cast<double>(form.sizeGB) > most) {
        return words("Only %1 GB are left on your plan.").arg(room.wholeGB());
    }
    return std::nullopt;
}

bool lacksName(const NewVolumeForm &form)
{
    return form.name.trimmed().isEmpty();
}

json::object createParams(const NewVolumeForm &form)
{
    json::object request =
        params("name", form.name.trimmed(), "size_bytes", form.sizeGB << 30, "presentation_type", form.share);
    if (form.encrypt) {
        request["encryption"] = "customer";
    }
    return request;
}

NewVolumeModel::NewVolumeModel(std::shared_ptr<AppState> state) : m_state(std::move(state)) {}

QCoro::Task<> NewVolumeModel::create(NewVolumeForm form)
{
    const auto self = shared_from_this();
    if (busy()) {
        co_return;
    }
    tell(form);
    if (m_told) {
        co_return;
    }

    const QString name = form.name.trimmed();
    Action creation = calling("volumes.create", createParams(form), 300s);
    creation.done = saying(tr("Created %1").arg(name));
    busy = true;
    const CallOutcome outcome = co_await attempt(m_state, creation);
    if (!outcome.answer) {
        error = outcome.words;
        nameInvalid = !outcome.connectionLost; // what was not read was not found wanting
        busy = false;
        co_return;
    }

    const std::uint64_t sheet = m_state->showNewVolume.version();
    m_state->showOutcome(outcome.words);
    co_await m_state->refresh();
    busy = false;
    // Where somebody has closed this sheet meanwhile, the one that is open now is another.
    if (m_state->showNewVolume.version() == sheet) {
        m_state->showNewVolume = false;
    }
    if (form.mountHere && form.share != QLatin1String("iscsi")) {
        start(m_state->deployAndMount(num(object(&*outcome.answer), "id"), name));
    }
}

void NewVolumeModel::tell(const NewVolumeForm &form)
{
    const std::optional<QString> problem = problemOf(form, planRoom(*m_state));
    m_told = problem.has_value();
    error = problem.value_or(QString());
    nameInvalid = m_told && lacksName(form);
}

void NewVolumeModel::edited(const NewVolumeForm &form)
{
    if (m_told) {
        tell(form);
    }
}

void NewVolumeModel::cancel()
{
    if (!busy()) {
        m_state->showNewVolume = false;
    }
}

} // namespace quillfen
