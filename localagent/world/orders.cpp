// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/orders.h"

#include <algorithm>

namespace quillfen::localagent {

namespace {

Order &orderOf(World &world, std::int64_t id)
{
    std::vector<Order> &orders = world.state.service.orders;
    const auto found = std::ranges::find(orders, id, &Order::id);
    if (found == orders.end()) {
        throw Refusal(Refusal::Kind::Missing, "There is no order #" + std::to_string(id) + ".");
    }
    return *found;
}

} // namespace

json::object orderRecords(const World &world)
{
    json::array list;
    for (const Order &order : world.state.service.orders) {
        json::object record{{"id", order.id},
                            {"volume_name", order.volume},
                            {"tenant_name", order.tenant},
                            {"delivery", order.delivery},
                            {"state", order.state},
                            {"medium", order.medium}};
        if (order.state == "shipped") {
            record["carrier"] = order.carrier;
            record["tracking"] = order.tracking;
        }
        list.push_back(std::move(record));
    }
    return {{"exports", std::move(list)}};
}

void shipOrder(World &world, std::int64_t id, const std::string &carrier, const std::string &tracking)
{
    Order &order = orderOf(world, id);
    const std::string name = "Order #" + std::to_string(id);
    if (order.delivery != "media") {
        throw Refusal(Refusal::Kind::Conflict, name + " is a download: there is nothing to ship.");
    }
    if (order.state != "ready") {
        throw Refusal(Refusal::Kind::Conflict, name + " is " + order.state + ", not ready.");
    }
    order.state = "shipped";
    order.carrier = carrier;
    order.tracking = tracking;
}

void deleteOrder(World &world, std::int64_t id)
{
    (void)orderOf(world, id);
    std::erase_if(world.state.service.orders, [id](const Order &order) { return order.id == id; });
}

} // namespace quillfen::localagent
