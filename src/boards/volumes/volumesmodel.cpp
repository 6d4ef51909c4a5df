// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "volumesmodel.h"

#include "state/action.h"

#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

VolumesModel::VolumesModel(std::shared_ptr<AppState> state) : m_state(std::move(state)) {}

void VolumesModel::selectVolume(std::int64_t id)
{
    if (m_state->selectedVolume() != id) {
        m_state->selectedVolume = id;
    }
}

void VolumesModel::newVolume()
{
    m_state->showNewVolume = true;
}

QCoro::Task<> VolumesModel::removeOrphan(QString container)
{
    const auto self = shared_from_this();
    Action action = calling("appliance.remove", params("container", container), 3900s);
    action.before = tr("Stopping %1…").arg(container);
    action.done = saying(tr("%1 removed").arg(container));
    action.operation = tr("Removing %1").arg(container);
    action.progressEvent = "appliance.progress";
    co_await perform(m_state, action);
}

QCoro::Task<> VolumesModel::discardCopy(std::int64_t id)
{
    const auto self = shared_from_this();
    Action action = calling("recovery.delete", params("recovery_id", id), 300s);
    action.done = saying(tr("discarded"));
    co_await perform(m_state, action);
}

QCoro::Task<> VolumesModel::promoteCopy(std::int64_t id, QString name)
{
    const auto self = shared_from_this();
    Action action = calling("recovery.promote", params("recovery_id", id, "new_name", name), 600s);
    action.done = saying(tr("%1 is a volume now; click Mount to start it on this Mac.").arg(name));
    co_await perform(m_state, action);
}

} // namespace quillfen
