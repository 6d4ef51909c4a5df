// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/worldfile.h"

#include "localagent/world/appliances.h"
#include "localagent/world/copies.h"
#include "localagent/world/exports.h"
#include "localagent/world/generator.h"
#include "localagent/world/mounts.h"
#include "localagent/world/servicefile.h"
#include "localagent/world/tokens.h"
#include "localagent/world/views.h"
#include "localagent/world/volumes.h"
#include "localagent/world/worlds.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace quillfen::localagent {

namespace {

void loadAccount(World &world, const Fields &fields)
{
    Account &account = world.state.account;
    account.signedIn = fields.flag("signed_in", false);
    account.admin = fields.flag("is_admin", false);
    account.email = fields.text("email", "mara@northmere.example");
    account.tenant = fields.text("tenant");
    account.plan = fields.text("plan");
    account.state = fields.text("state", "active");
    account.capacity = fields.size("capacity_gb");
    for (std::string &code : fields.texts("used_codes")) {
        account.usedCodes.insert(std::move(code));
    }
    for (std::string &code : fields.texts("expired_codes")) {
        account.expiredCodes.insert(std::move(code));
    }
}

void loadEngine(World &world, const Fields &fields)
{
    Engine &engine = world.state.engine;
    engine.exists = fields.flag("exists", false);
    engine.status = engine.exists ? fields.text("status", "Running") : std::string();
    engine.memory = fields.text("memory", engine.memory);
    engine.disk = fields.text("disk", engine.disk);
    engine.docker = fields.text("docker", engine.docker);
    engine.limactl = fields.text("limactl", engine.limactl);
}

void loadChecks(World &world, const std::vector<Fields> &checks)
{
    for (const Fields &check : checks) {
        world.state.checks.push_back(
            {check.text("name"), check.flag("ok", true), check.text("info"), check.text("fix")});
    }
}

Appliance applianceNamed(const Fields &fields)
{
    const std::string state = fields.text("state", "none");
    if (state == "none") {
        return Appliance::None;
    }
    if (state == "online") {
        return Appliance::Online;
    }
    if (state == "connecting") {
        return Appliance::Connecting;
    }
    if (state == "stopped") {
        return Appliance::Stopped;
    }
    if (state == "elsewhere") {
        return Appliance::Elsewhere;
    }
    fields.fail("state", "is none of none, online, connecting, stopped, elsewhere");
}

Target targetNamed(World &world, const Fields &fields)
{
    Target target;
    target.portal = fields.text("portal");
    target.chap = fields.flag("chap", true);
    target.secretIssued = fields.flag("secret_issued", true);
    target.secret = fields.has("secret") ? fields.text("secret") : randomText(world, 16);
    return target;
}

void loadHistory(Volume &volume, const Fields &fields, Time now)
{
    volume.history.planned = fields.whole("count");
    volume.history.oldest = fields.moment("oldest", now, "-1d");
    for (const Fields &pinned : fields.objects("pinned")) {
        const Time at = std::chrono::floor<std::chrono::seconds>(pinned.moment("at", now));
        volume.history.pinned.insert_or_assign(at, pinned.text("label"));
    }
}

void loadPolicy(Volume &volume, const Fields &fields)
{
    if (!fields.has("policy")) {
        return;
    }
    // Beyond what a client may ask for: a world may have more history than anybody is offered.
    std::istringstream numbers(fields.text("policy"));
    for (std::int64_t &number : volume.policy) {
        if (!(numbers >> number) || number < 0) {
            fields.fail("policy", "is not six numbers with commas between them");
        }
        numbers.ignore(1);
    }
}

Volume volumeNamed(World &world, const Fields &fields)
{
    const Time now = world.clock.now();
    Volume volume;
    volume.id = fields.whole("id");
    volume.name = fields.text("name");
    try {
        requireFreeName(world, volume.name);
    } catch (const Refusal &refusal) {
        fields.fail("name", std::string("will not do: ") + refusal.what());
    }
    volume.size = fields.size("size_gb", 1);
    volume.share = fields.text("share", "smb");
    if (volume.share != "smb" && volume.share != "nfs" && volume.share != "iscsi") {
        fields.fail("share", "is none of smb, nfs, iscsi");
    }
    volume.customerKey = fields.text("encryption") == "customer";
    volume.keyVolume = fields.text("key_volume");
    volume.created = fields.moment("created", now, "-1d");
    volume.used = fields.size("used_gb");
    volume.cache = fields.size("cache_gb");
    volume.pending = fields.size("pending_gb");
    volume.pendingAt = now;
    volume.target = targetNamed(world, fields.object("iscsi"));
    loadPolicy(volume, fields);
    loadHistory(volume, fields.object("points"), now);
    return volume;
}

void loadAppliance(World &world, Volume &volume, const Fields &fields)
{
    const Time since = fields.moment("since", world.clock.now(), "-1d");
    volume.appliance = applianceNamed(fields);
    volume.resumes = fields.flag("resumes", volume.appliance != Appliance::Stopped);
    volume.startedOnce = volume.appliance != Appliance::None;
    if (volume.appliance == Appliance::Connecting) {
        const Time online = fields.moment("online_at", world.clock.now(), "+4s");
        connectAppliance(world, volume, online - world.clock.now());
    }
    volume.applianceSince = since;
}

void loadVolume(World &world, const Fields &fields)
{
    Volume &volume = addVolume(world, volumeNamed(world, fields));
    loadAppliance(world, volume, fields.object("appliance"));
    if (volume.customerKey && fields.text("key") == "here") {
        world.home.makeKey(keyNameOf(volume), randomText(world, 44) + "\n");
    }
    if (fields.flag("mounted", false)) {
        attach(world, volume.id);
    }
}

void loadCopy(World &world, const Fields &fields)
{
    const VolumeId source = fields.whole("volume_id");
    if (!world.state.volumes.contains(source)) {
        fields.fail("volume_id", "names no volume of this world");
    }
    Copy copy;
    copy.id = fields.whole("id", ++world.state.lastId);
    copy.volume = source;
    copy.rewindTo = fields.moment("rewind_to", world.clock.now());
    copy.name = fields.text("name", world.state.volumes.at(source).name + "-" + minuteDigits(copy.rewindTo));
    copy.size = fields.has("size_gb") ? fields.size("size_gb") : world.state.volumes.at(source).size;
    copy.state = fields.text("state", "ready");
    if (fields.has("hydration_pct")) {
        copy.hydration = fields.whole("hydration_pct");
    }
    copy.since = world.clock.now();
    world.state.lastId = std::max(world.state.lastId, copy.id);
    world.state.copies.push_back(copy);
    if (copy.state != "ready") {
        hydrate(world, copy);
    }
}

void loadOrphan(World &world, const Fields &fields)
{
    world.state.orphans.push_back({fields.text("container"), fields.flag("up", false),
                                   fields.moment("since", world.clock.now(), "-1d"), fields.text("ports")});
}

json::value parsed(std::string_view text)
{
    json::parse_options options;
    options.allow_comments = true;
    json::error_code error;
    json::value value = json::parse(text, error, {}, options);
    if (error) {
        throw WorldError("the world is not JSON: " + error.message());
    }
    if (!value.is_object()) {
        throw WorldError("the world is not a JSON object");
    }
    return value;
}

} // namespace

std::vector<std::string> worldNames()
{
    std::vector<std::string> names;
    for (const BuiltInWorld &world : builtInWorlds()) {
        names.emplace_back(world.name);
    }
    return names;
}

std::string readWorld(const std::string &nameOrPath)
{
    for (const BuiltInWorld &world : builtInWorlds()) {
        if (world.name == nameOrPath) {
            return std::string(world.text);
        }
    }
    std::ifstream file(nameOrPath, std::ios::binary);
    std::ostringstream text;
    if (!file || !(text << file.rdbuf())) {
        throw WorldError("there is no world \"" + nameOrPath + "\" and no such file");
    }
    return text.str();
}

void loadWorld(World &world, std::string_view text)
{
    const json::value value = parsed(text);
    const Fields fields(value.get_object(), "");
    world.state.agentVersion = fields.text("agent_version", world.state.agentVersion);
    world.state.uploadRate =
        static_cast<std::int64_t>(std::max(1.0, fields.number("upload_mb_per_second", 12) * 1048576));
    world.state.copyRate = static_cast<std::int64_t>(std::max(1.0, fields.number("copy_mb_per_second", 100) * 1048576));
    loadAccount(world, fields.object("account"));
    loadEngine(world, fields.object("engine"));
    loadChecks(world, fields.objects("preflight"));
    loadTokens(world, fields.objects("tokens"));
    for (const Fields &volume : fields.objects("volumes")) {
        loadVolume(world, volume);
    }
    if (fields.has("generate")) {
        generateVolumes(world, fields.object("generate"));
    }
    loadViews(world, fields.objects("views"));
    for (const Fields &copy : fields.objects("copies")) {
        loadCopy(world, copy);
    }
    loadExports(world, fields.objects("exports"));
    loadService(world, fields.object("service"));
    for (const Fields &orphan : fields.objects("orphans")) {
        loadOrphan(world, orphan);
    }
}

} // namespace quillfen::localagent
