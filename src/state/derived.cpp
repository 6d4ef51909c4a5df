// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/appstate.h"

#include "state/format.h"
#include "ui/theme.h"

#include <algorithm>
#include <limits>

namespace quillfen {

using namespace Qt::StringLiterals;

namespace {

using Kind = OffsiteState::Kind;

struct Offsite {
    Kind kind = Kind::Unknown;
    std::int64_t percent = 0;
};

Offsite offsiteOf(const Record &status)
{
    if (status.empty()) {
        return {Kind::Unknown};
    }
    const Record &appliance = object(status, "appliance");
    if (isTrue(appliance, "online")) {
        const bool done = num(appliance, "pending_bytes") < 1;
        return {done ? Kind::Synced : Kind::Uploading, num(object(status, "offsite"), "percent")};
    }
    return {isTrue(appliance, "connected") ? Kind::Connecting : Kind::NotStarted};
}

bool isComplete(const Offsite &offsite)
{
    return offsite.kind == Kind::Synced || (offsite.kind == Kind::Uploading && offsite.percent == 100);
}

/// Whether a volume of this status keeps the whole from counting as protected.
bool isUnsettled(const Record &status)
{
    const Offsite offsite = offsiteOf(status);
    return (offsite.kind == Kind::Uploading || offsite.kind == Kind::Connecting) && !isComplete(offsite);
}

std::int64_t sumWithin64Bits(std::int64_t left, std::int64_t right)
{
    std::int64_t sum = 0;
    if (__builtin_add_overflow(left, right, &sum)) {
        return left < 0 ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
    }
    return sum;
}

} // namespace

QString AppState::planName() const
{
    const QString plan = str(account(), "plan");
    if (!plan.isEmpty()) {
        return tr("%1 plan").arg(capitalised(plan));
    }
    const QString tenant = str(auth(), "tenant");
    return tenant.isEmpty() || tenant.contains(u'@') ? tr("Your plan") : tenant;
}

std::int64_t AppState::capacityBytes() const
{
    const std::int64_t purchased = num(account(), "purchased_capacity_bytes");
    if (purchased > 0) {
        return purchased;
    }
    const json::value *const gigabytes = account().if_contains("capacity_gb");
    if (gigabytes != nullptr && gigabytes->is_number()) {
        return truncated(gigabytes->to_number<double>() * 1'073'741'824.0);
    }
    return num(auth(), "purchased_capacity_bytes");
}

std::int64_t AppState::allocatedBytes() const
{
    return totals().allocated;
}

OffsiteState AppState::offsiteState(const Record &volume) const
{
    const Offsite offsite = offsiteOf(statusOf(num(volume, "id")));
    const bool complete = isComplete(offsite);
    switch (offsite.kind) {
    case Kind::Unknown:
        return {offsite.kind, complete, u"…"_s, Theme::muted};
    case Kind::Synced:
        return {offsite.kind, complete, tr("100% · synced"), Theme::ok};
    case Kind::Uploading:
        return {offsite.kind, complete, tr("%1% · uploading").arg(offsite.percent), Theme::warn};
    case Kind::Connecting:
        return {offsite.kind, complete, tr("connecting"), Theme::muted};
    case Kind::NotStarted:
        break;
    }
    return {offsite.kind, complete, tr("not started · Mount to start"), Theme::muted};
}

ApplianceState AppState::applianceState(const Record &volume) const
{
    const bool online = isTrue(object(statusOf(num(volume, "id")), "appliance"), "online");
    const auto here = localAppliances().constFind(str(object(volume, "appliance"), "container"));
    if (here != localAppliances().constEnd()) {
        if (!here->startsWith("Up"_L1)) {
            return {tr("stopped here"), Theme::warn, true};
        }
        return online ? ApplianceState{tr("running here"), Theme::ok, false, true}
                      : ApplianceState{tr("running here · connecting"), Theme::warn, false, true};
    }
    if (online) {
        return {tr("running on another computer"), Theme::text, false, true};
    }
    return {engineRunning() ? tr("not running") : tr("engine stopped"), Theme::muted, false};
}

bool AppState::allSynced() const
{
    return totals().unsettled == 0;
}

std::optional<QString> AppState::mountOf(const QString &name) const
{
    if (!m_mountIndex.known || m_mountIndex.version != mounts.version()) {
        m_mountIndex = {mounts.version(), true, {}};
        for (const Record &mount : mounts()) {
            const QString mounted = str(mount, "name");
            if (!m_mountIndex.mountpoints.contains(mounted)) {
                m_mountIndex.mountpoints.insert(mounted, str(mount, "mountpoint"));
            }
        }
    }
    const auto found = m_mountIndex.mountpoints.constFind(name);
    return found == m_mountIndex.mountpoints.constEnd() ? std::nullopt : std::optional(*found);
}

const Record &AppState::statusOf(std::int64_t id) const
{
    const auto found = statuses().find(id);
    return found == statuses().end() ? object(nullptr) : found->second;
}

/// One answer changes one entry, so the totals are moved along instead of being counted again.
void AppState::setStatus(std::int64_t id, Record status)
{
    const bool moveAlong = totalsHold();
    const bool before = isUnsettled(statusOf(id));
    const bool after = isUnsettled(status);
    // Assigning copies the record out of the memory of its answer, which is several times what the record takes.
    statuses.update([&](Statuses &all) { all[id] = std::move(status); });
    if (moveAlong) {
        const auto [first, last] = std::equal_range(m_totals.ids.begin(), m_totals.ids.end(), id);
        m_totals.unsettled += (static_cast<int>(after) - static_cast<int>(before)) * (last - first);
        m_totals.statusesVersion = statuses.version();
    }
}

bool AppState::totalsHold() const
{
    return m_totals.known && m_totals.volumesVersion == volumes.version() &&
           m_totals.statusesVersion == statuses.version();
}

const AppState::Totals &AppState::totals() const
{
    if (!totalsHold()) {
        m_totals.allocated = 0;
        m_totals.unsettled = 0;
        m_totals.ids.clear();
        m_totals.ids.reserve(static_cast<std::size_t>(volumes().size()));
        for (const Record &volume : volumes()) {
            const std::int64_t id = num(volume, "id");
            m_totals.allocated = sumWithin64Bits(m_totals.allocated, num(volume, "size_bytes"));
            m_totals.unsettled += isUnsettled(statusOf(id)) ? 1 : 0;
            m_totals.ids.push_back(id);
        }
        std::ranges::sort(m_totals.ids);
        m_totals.volumesVersion = volumes.version();
        m_totals.statusesVersion = statuses.version();
        m_totals.known = true;
    }
    return m_totals;
}

} // namespace quillfen
