// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/clock.h"
#include "localagent/world/exportstate.h"
#include "localagent/world/refusal.h"
#include "localagent/world/service.h"
#include "localagent/world/token.h"
#include "localagent/world/viewstate.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace quillfen::localagent {

using VolumeId = std::int64_t;

inline constexpr std::int64_t gigabyte = 1LL << 30U;

/// Where a volume's appliance is in its life. "Elsewhere": another computer runs it.
enum class Appliance { None, Starting, Connecting, Online, Stopped, Elsewhere };

/// How a volume is served to initiators. Only volumes with the share "iscsi" have one that matters.
struct Target {
    std::string portal; ///< empty: reached from this computer only
    bool chap = true;
    std::string secret;
    bool secretIssued = true; ///< the account knows the secret; else only the appliance's log does
};

/// The points of time a volume can be taken back to. Written out in full when somebody first asks: a world with ten
/// thousand volumes does not hold ten million points for nobody.
struct History {
    std::int64_t planned = 0;
    Time oldest = {};
    std::vector<Time> points;           ///< ascending
    std::map<Time, std::string> pinned; ///< those of them that stay whatever the policy says, with their labels
    Time until = {};                    ///< what has changed up to here is in
    bool written = false;
};

struct Volume {
    VolumeId id = 0;
    std::string name;
    std::int64_t size = 0;
    std::string share = "smb"; ///< "smb", "nfs" or "iscsi"
    bool customerKey = false;
    std::string keyVolume; ///< whose key it is, when it is another volume's
    Time created = {};

    std::int64_t used = 0;
    std::int64_t cache = 0;
    std::int64_t pending = 0; ///< as of `pendingAt`; while online it drains from there
    Time pendingAt = {};

    Appliance appliance = Appliance::None;
    Time applianceSince = {};
    std::uint64_t applianceLife = 0; ///< grows with every change, so that a late timer knows it is late
    bool resumes = false;            ///< comes up with the engine
    bool startedOnce = false;

    std::string busyWith; ///< "being resized", "being deleted": what stands in the way of other changes
    Target target;
    /// How long each second is kept, finest tier first, each number in its own unit: minutes of every second, hours of
    /// every minute, days of every hour, weeks of every day, months of every week, years of every month.
    std::array<std::int64_t, 6> policy{720, 24, 7, 4, 6, 1};
    History history;
};

/// A copy of a past second on its way to become a volume.
struct Copy {
    std::int64_t id = 0;
    VolumeId volume = 0;
    std::string name;
    Time rewindTo = {};
    std::int64_t size = 0;
    std::string state = "ready";
    std::optional<std::int64_t> hydration; ///< percent at `since`; nothing once it is fully copied
    Time since = {};
};

/// An appliance whose volume is not in the account.
struct Orphan {
    std::string container;
    bool up = false;
    Time since = {};
    std::string ports;
    bool leaving = false;
};

struct Mount {
    std::string name;
    std::string folder;
    VolumeId volume = 0;
    std::string share;
    std::string view = {}; ///< the view of the volume that is mounted; empty: the volume itself
};

struct Engine {
    bool exists = false;
    std::string status; ///< "Running", "Stopping", "Stopped", "Starting"
    std::string memory = "4 GB";
    std::string disk = "80 GB";
    std::string docker = "27.3.1";
    std::string limactl = "1.0.2";
    bool preparing = false;
    bool stopping = false; ///< what was written is being uploaded; after it, the engine stops

    [[nodiscard]] bool running() const { return exists && status == "Running"; }
};

struct Account {
    bool signedIn = false;
    bool admin = false;
    std::string email;
    std::string tenant;
    std::string plan;
    std::string api; ///< control plane of a self-hosted manager; empty for the product's own
    std::string state = "active";
    std::int64_t capacity = 0;
    std::unordered_set<std::string> usedCodes;
    std::unordered_set<std::string> expiredCodes;
};

struct Check {
    std::string name;
    bool ok = true;
    std::string info;
    std::string fix;
};

/// Which of the forms that clients accept "restore_points.list" answers in.
enum class PointsForm { Points, RecoveryPoints, Raw };

/// Everything the agent knows. Volumes keep the order in which they came and are found by id in constant time.
struct State {
    std::string agentVersion;
    Account account;
    Engine engine;
    std::vector<Check> checks;
    std::vector<VolumeId> order;
    std::unordered_map<VolumeId, Volume> volumes;
    std::vector<Copy> copies;
    Views views;
    Exports exports;
    std::vector<Orphan> orphans;
    std::vector<Mount> mounts;
    Tokens tokens;
    Service service;
    VolumeId lastId = 3100;                ///< of volumes and copies
    std::int64_t uploadRate = 12LL << 20U; ///< bytes a second
    std::int64_t copyRate = 100LL << 20U;  ///< bytes a second at which a past second is copied
    PointsForm pointsForm = PointsForm::Points;
};

} // namespace quillfen::localagent
