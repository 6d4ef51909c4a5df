// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/clock.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillfen::localagent {

/// Where a hub is in its life. A hub that hands over has been followed by another and still serves what has not moved.
enum class HubLife { Registered, Building, Replica, Primary, HandingOver, Retiring };

/// A site that holds the vault and serves appliances.
struct Hub {
    std::int64_t id = 0;
    std::string name;
    std::string address;
    std::string fingerprint;
    HubLife life = HubLife::Replica;
    std::optional<std::int64_t> sold; ///< percent of its capacity
    double lag = 0;                   ///< seconds behind the primary at `lagAt`; from there it falls
    Time lagAt = {};
    std::string busyWith; ///< "being promoted": what stands in the way of other changes
};

/// A change of the primary hub on its way; `state` is "idle" while there is none.
struct Promotion {
    std::string state = "idle";
    std::int64_t hub = 0;
};

struct User {
    std::int64_t id = 0;
    std::string email;
    std::string tenant;
    Time created = {};
    std::string state = "active"; ///< "pending", "active", "rejected", "closing"
};

struct Tenant {
    std::string name;
    std::int64_t purchased = 0;
    std::int64_t allocated = 0;
    std::string state = "active";
};

/// A token of any account of the service.
struct ServiceToken {
    std::int64_t id = 0;
    std::string label;
    std::string email;
    Time created = {};
    Time expires = {};
    std::optional<Time> revoked;
};

/// A copy or a media order.
struct Order {
    std::int64_t id = 0;
    std::string volume;
    std::string tenant;
    std::string delivery = "link"; ///< "link" or "media"
    std::string state = "ready";   ///< "packing", "ready", "shipped"
    std::string medium;
    std::string carrier;
    std::string tracking;
};

/// The service as those see it who run it.
struct Service {
    std::vector<Hub> hubs;
    Promotion promotion;
    std::vector<User> users;
    std::vector<Tenant> tenants;
    std::vector<ServiceToken> tokens;
    std::vector<Order> orders;
    std::int64_t lastId = 0;
};

} // namespace quillfen::localagent
