// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/rpc.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace quillfen {

/// How long the state waits for the answer to one of its own calls.
struct TimeLimit {
    std::string_view method;
    RPC::Seconds limit;
};

/// All of them in one place. What a board asks for has the limit that the board gives.
inline constexpr std::array timeLimits{
    TimeLimit{"agent.version", RPC::Seconds(5)},
    TimeLimit{"auth.status", RPC::Seconds(10)},
    TimeLimit{"vm.status", RPC::Seconds(30)},
    TimeLimit{"mount.state", RPC::Seconds(10)},
    TimeLimit{"volumes.list", RPC::Seconds(30)},
    TimeLimit{"account", RPC::Seconds(30)},
    TimeLimit{"volumes.status", RPC::Seconds(30)},
    TimeLimit{"recoveries.list_for_volume", RPC::Seconds(60)},
    TimeLimit{"appliance.orphans", RPC::Seconds(30)},
    TimeLimit{"appliance.list", RPC::Seconds(30)},
    TimeLimit{"events.subscribe", RPC::Seconds(60)},
    TimeLimit{"restore_points.list", RPC::Seconds(120)},
    TimeLimit{"mount.attach", RPC::Seconds(300)},
    TimeLimit{"appliance.deploy", RPC::Seconds(1'800)}, // an image may have to be fetched first
};

/// The limit of a call that the state makes; a minute for a method that it does not call.
[[nodiscard]] constexpr RPC::Seconds timeLimit(std::string_view method) noexcept
{
    const auto *const found = std::find_if(timeLimits.begin(), timeLimits.end(),
                                           [method](const TimeLimit &entry) { return entry.method == method; });
    return found == timeLimits.end() ? RPC::Seconds(60) : found->limit;
}

} // namespace quillfen
