// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/records.h"

#include "localagent/world/appliances.h"
#include "localagent/world/copies.h"

namespace quillfen::localagent {

namespace {

json::object applianceRecord(const std::string &container, std::string status, const std::string &ports)
{
    return {{"container", container}, {"status", std::move(status)}, {"ports", ports}};
}

std::string orphanStatus(const World &world, const Orphan &orphan)
{
    return containerStatus(orphan.up ? Appliance::Online : Appliance::Stopped, world.clock.now() - orphan.since);
}

} // namespace

json::object authRecord(const World &world)
{
    const Account &account = world.state.account;
    if (!account.signedIn) {
        return {{"signed_in", false}};
    }
    json::object record = {{"signed_in", true},
                           {"email", account.email},
                           {"tenant", account.tenant},
                           {"is_admin", account.admin},
                           {"purchased_capacity_bytes", account.capacity}};
    if (!account.api.empty()) {
        record["api"] = account.api;
    }
    return record;
}

json::object accountRecord(const World &world)
{
    const Account &account = world.state.account;
    return {{"email", account.email},
            {"tenant", account.tenant},
            {"plan", account.plan},
            {"state", account.state},
            {"purchased_capacity_bytes", account.capacity},
            {"capacity_gb", static_cast<double>(account.capacity) / static_cast<double>(gigabyte)}};
}

json::object engineRecord(const World &world)
{
    const Engine &engine = world.state.engine;
    if (!engine.exists) {
        return {{"exists", false}, {"status", ""}};
    }
    return {{"exists", true},      {"status", engine.status}, {"memory", engine.memory},
            {"disk", engine.disk}, {"docker", engine.docker}, {"limactl", engine.limactl}};
}

json::array checkRecords(const World &world)
{
    json::array records;
    for (const Check &check : world.state.checks) {
        records.push_back(
            json::object{{"name", check.name}, {"ok", check.ok}, {"info", check.info}, {"fix", check.fix}});
    }
    return records;
}

json::object volumeRecord(const World &, const Volume &volume)
{
    json::object record = {{"id", volume.id},
                           {"name", volume.name},
                           {"size_bytes", volume.size},
                           {"presentation_type", volume.share},
                           {"encryption", volume.customerKey ? "customer" : "vault"},
                           {"created_at", isoTime(volume.created)},
                           {"appliance", json::object{{"container", containerOf(volume)}}}};
    if (!volume.keyVolume.empty()) {
        record["key_volume"] = volume.keyVolume;
    }
    return record;
}

json::array volumeRecords(const World &world)
{
    json::array records;
    records.reserve(world.state.order.size());
    for (const VolumeId id : world.state.order) {
        records.push_back(volumeRecord(world, world.state.volumes.at(id)));
    }
    return records;
}

json::object statusRecord(const World &world, const Volume &volume)
{
    const bool online = volume.appliance == Appliance::Online || volume.appliance == Appliance::Elsewhere;
    const bool connected = online || volume.appliance == Appliance::Connecting;
    const std::int64_t pending = pendingBytes(world, volume);
    json::object local;
    if (connected) {
        local["FS_USED_BYTES"] = volume.used;
    }
    return {
        {"appliance", json::object{{"online", online}, {"connected", connected}, {"pending_bytes", pending}}},
        {"offsite", json::object{{"percent", offsitePercent(world, volume)}}},
        {"sync", json::object{{"local", std::move(local)}, {"cache_bytes", volume.cache}, {"pending_bytes", pending}}},
        {"cache_bytes", volume.cache},
        {"pending_bytes", pending}};
}

json::array mountRecords(const World &world)
{
    json::array records;
    for (const Mount &mount : world.state.mounts) {
        records.push_back(json::object{{"name", mount.name},
                                       {"mountpoint", mount.folder},
                                       {"volume_id", mount.volume},
                                       {"presentation_type", mount.share}});
    }
    return records;
}

json::array applianceRecords(const World &world)
{
    json::array records;
    for (const VolumeId id : world.state.order) {
        const Volume &volume = world.state.volumes.at(id);
        if (volume.appliance == Appliance::None || volume.appliance == Appliance::Elsewhere) {
            continue;
        }
        const Seconds age = world.clock.now() - volume.applianceSince;
        json::object record =
            applianceRecord(containerOf(volume), containerStatus(volume.appliance, age), portsOf(volume));
        record["volume_id"] = volume.id;
        records.push_back(std::move(record));
    }
    for (json::value &orphan : orphanRecords(world)) {
        records.push_back(std::move(orphan));
    }
    return records;
}

json::array orphanRecords(const World &world)
{
    json::array records;
    for (const Orphan &orphan : world.state.orphans) {
        records.push_back(applianceRecord(orphan.container, orphanStatus(world, orphan), orphan.ports));
    }
    return records;
}

json::object copyRecord(const World &world, const Copy &copy)
{
    const std::optional<std::int64_t> hydration = hydrationOf(world, copy);
    return {{"id", copy.id},
            {"recovery_id", copy.id},
            {"volume_id", copy.volume},
            {"name", copy.name},
            {"size_bytes", copy.size},
            {"rewind_to", isoTime(copy.rewindTo)},
            {"state", copy.state},
            {"hydration_pct", hydration ? json::value(*hydration) : json::value()}};
}

json::object copyRecords(const World &world, VolumeId volume)
{
    json::array records;
    for (const Copy &copy : world.state.copies) {
        if (copy.volume == volume) {
            records.push_back(copyRecord(world, copy));
        }
    }
    return {{"recoveries", std::move(records)}};
}

} // namespace quillfen::localagent
