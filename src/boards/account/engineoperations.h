// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

/// The agent's methods that take the engine from one state to another, and minutes or an hour for it.
namespace quillfen::EngineOperation {

inline constexpr std::string_view setUp = "vm.prepare";
inline constexpr std::string_view startUp = "vm.start";
inline constexpr std::string_view stopSafely = "engine.stop_safely";

/// The event that reports on all of them.
inline constexpr std::string_view progressEvent = "vm.progress";

[[nodiscard]] constexpr bool isOne(std::string_view method) noexcept
{
    constexpr std::array all{setUp, startUp, stopSafely};
    return std::find(all.begin(), all.end(), method) != all.end();
}

} // namespace quillfen::EngineOperation
