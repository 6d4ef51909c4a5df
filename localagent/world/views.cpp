// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/views.h"

#include "localagent/world/appliances.h"
#include "localagent/world/mounts.h"
#include "localagent/world/names.h"
#include "localagent/world/points.h"

#include <algorithm>

namespace quillfen::localagent {

namespace {

constexpr Seconds openTime{1.5};
constexpr Seconds releaseTime{0.5};

View *find(World &world, VolumeId id, std::string_view name)
{
    std::vector<View> &all = world.state.views.all;
    const auto found =
        std::ranges::find_if(all, [&](const View &view) { return view.volume == id && sameFolder(view.name, name); });
    return found == all.end() ? nullptr : &*found;
}

View &listedView(World &world, const Volume &volume, const std::string &name)
{
    View *const view = find(world, volume.id, name);
    if (view == nullptr || !view->listed) {
        throw Refusal(Refusal::Kind::Missing, volume.name + " has no open view " + name + ". Open it first.");
    }
    return *view;
}

std::string mountName(const Volume &volume, const View &view)
{
    return volume.name + "-view-" + view.name;
}

/// "20261117-0900", longer where another second has that name.
std::string proposedName(World &world, const Volume &volume, Time at)
{
    std::string digits = isoTime(at);
    std::erase_if(digits, [](char letter) { return letter < '0' || letter > '9'; });
    digits.insert(8, 1, '-');
    const auto isOurs = [&](const std::string &name) {
        const View *const view = find(world, volume.id, name);
        return view == nullptr || view->at == at;
    };
    for (const std::size_t length : {13U, 15U}) {
        if (isOurs(digits.substr(0, length))) {
            return digits.substr(0, length);
        }
    }
    return digits; // to the millisecond, as finely as moments are told apart
}

/// The view that the wish means, new where there is none yet.
View &viewFor(World &world, const Volume &volume, Time at, const std::optional<std::string> &wished)
{
    const std::string name = wished ? *wished : proposedName(world, volume, at);
    checkFolderName(name, "view");
    if (View *const known = find(world, volume.id, name)) {
        if (known->at != at) {
            throw Refusal(Refusal::Kind::Conflict, volume.name + " has a view named " + known->name +
                                                       " of another second. Release it first, or choose another name.");
        }
        return *known;
    }
    return world.state.views.all.emplace_back(View{.volume = volume.id, .name = name, .at = at});
}

void dropView(World &world, VolumeId id, const std::string &name)
{
    std::erase_if(world.state.views.all, [&](const View &view) { return view.volume == id && view.name == name; });
}

json::object opened(World &world, const Volume &volume, const View &view)
{
    json::object answer{{"name", view.name}, {"open", true}, {"mounted", false}};
    if (volume.share == "iscsi") {
        answer["note"] = "The view " + view.name + " is open for the initiators of " + volume.name + ".";
    } else if (mountOf(world, volume.id) == nullptr) {
        answer["note"] = "The view " + view.name + " is open. Mount it to look at it on this computer.";
    } else {
        try {
            answer["mountpoint"] = attachView(world, volume.id, view.name).folder;
            answer["mounted"] = true;
        } catch (const Refusal &refusal) {
            answer["note"] = "The view " + view.name + " is open, but not mounted: " + refusal.what();
        }
    }
    return answer;
}

void finishOpening(World &world, VolumeId id, const std::string &name, const Done &done)
{
    View *const view = find(world, id, name);
    if (view == nullptr) {
        done(Refusal(Refusal::Kind::Missing, "The view was released while it was being opened."));
    } else if (!world.state.engine.running()) {
        if (!view->listed) {
            dropView(world, id, name);
        }
        done(Refusal(Refusal::Kind::Conflict, "The engine stopped while the view was being opened."));
    } else {
        view->open = view->listed = true;
        done(opened(world, volumeOf(world, id), *view));
    }
}

void removeMounts(World &world, VolumeId id, const std::function<bool(const Mount &)> &isMeant)
{
    const auto goes = [&](const Mount &mount) { return mount.volume == id && !mount.view.empty() && isMeant(mount); };
    std::vector<std::string> names;
    for (const Mount &mount : world.state.mounts) {
        if (goes(mount)) {
            names.push_back(mount.name);
        }
    }
    for (const std::string &name : names) {
        detach(world, id, name);
    }
}

} // namespace

void openView(World &world, const ViewWish &wish, const Done &done)
{
    Volume &volume = idleVolumeOf(world, wish.volume);
    requireEngine(world.state.engine);
    const Time at = momentInHistory(world, volume, wish.timestamp);
    const View &view = viewFor(world, volume, at, wish.name);
    world.clock.after(openTime,
                      [&world, id = volume.id, name = view.name, done] { finishOpening(world, id, name, done); });
}

void releaseView(World &world, VolumeId id, const std::string &name, const Done &done)
{
    const Volume &volume = volumeOf(world, id);
    const View &view = listedView(world, volume, name);
    removeMounts(world, id, [&view](const Mount &mount) { return mount.view == view.name; });
    world.clock.after(releaseTime, [&world, id, released = view.name, done] {
        dropView(world, id, released);
        done(json::object{{"released", released}});
    });
}

const Mount &attachView(World &world, VolumeId id, const std::string &name)
{
    const Volume &volume = idleVolumeOf(world, id);
    const View &view = listedView(world, volume, name);
    const std::string mount = mountName(volume, view);
    const auto known = std::ranges::find_if(world.state.mounts, [&](const Mount &each) { return each.name == mount; });
    if (known != world.state.mounts.end() && known->volume == id) {
        return *known;
    }
    if (volume.share == "iscsi") {
        throw Refusal(Refusal::Kind::Conflict, volume.name + " is an iSCSI volume: other machines log in to its " +
                                                   "views, they are not mounted on this computer.");
    }
    requireEngine(world.state.engine);
    if (!view.open) {
        throw Refusal(Refusal::Kind::Conflict, "The view " + view.name + " is not open any more. Open it again first.");
    }
    for (const auto &[other, each] : world.state.volumes) {
        if (sameFolder(each.name, mount)) {
            throw Refusal(Refusal::Kind::Conflict, "The volume " + each.name + " has the folder that the view " +
                                                       view.name + " needs. Open the second under another name.");
        }
    }
    const std::string folder = world.home.makeViewFolder(mount);
    world.state.mounts.push_back({mount, folder, id, volume.share, view.name});
    announceMounts(world);
    return world.state.mounts.back();
}

void closeViews(World &world)
{
    for (View &view : world.state.views.all) {
        view.open = false;
    }
}

void detachViews(World &world, VolumeId id)
{
    removeMounts(world, id, [](const Mount &) { return true; });
}

void dropViews(World &world, VolumeId id)
{
    detachViews(world, id);
    std::erase_if(world.state.views.all, [id](const View &view) { return view.volume == id; });
}

json::object viewRecords(const World &world, VolumeId id)
{
    json::array records;
    for (const View &view : world.state.views.all) {
        if (view.volume == id && view.listed) {
            records.push_back(
                json::object{{"name", view.name}, {"open", view.open}, {"point_in_time", isoTime(view.at)}});
        }
    }
    return {{"views", std::move(records)}};
}

void loadViews(World &world, const std::vector<Fields> &views)
{
    for (const Fields &fields : views) {
        const VolumeId id = fields.whole("volume_id");
        if (!world.state.volumes.contains(id)) {
            fields.fail("volume_id", "names no volume of this world");
        }
        const std::string name = fields.text("name");
        checkFolderName(name, "view");
        const Time at = std::chrono::floor<std::chrono::seconds>(fields.moment("at", world.clock.now(), "-1h"));
        const bool mounted = fields.flag("mounted", false);
        world.state.views.all.push_back({id, name, at, mounted || fields.flag("open", false), true});
        if (mounted) {
            attachView(world, id, name);
        }
    }
}

} // namespace quillfen::localagent
