// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

namespace quillfen::e2e {

using Clock = std::chrono::steady_clock;

/// How long a condition may take before a test gives up. Only failures wait this long; sanitizers and a busy machine
/// are the reason that it is not shorter.
inline constexpr std::chrono::milliseconds patience = std::chrono::seconds(30);

/// How much longer the programs may take where a test is about time: sanitizers cost that much.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr int slowness = 5;
#else
inline constexpr int slowness = 1;
#endif

/// Delivers what the accessibility bus has for us, and returns with the first delivery or after `bound`.
void deliverEvents(std::chrono::milliseconds bound);

/// Delivers events and asks again until `condition` holds; returns whether it did within `bound`.
template <class Condition>
[[nodiscard]] bool waitFor(Condition condition, std::chrono::milliseconds bound = patience)
{
    const auto end = Clock::now() + bound;
    while (!condition()) {
        if (Clock::now() >= end) {
            return false;
        }
        deliverEvents(std::chrono::milliseconds(20));
    }
    return true;
}

} // namespace quillfen::e2e
