// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

namespace quillfen {

/// Every interval of the product in one value, so that tests run in milliseconds and nothing sleeps.
struct Timing {
    std::chrono::milliseconds retryDelay{2'000};       ///< between a lost agent and the next attempt
    std::chrono::milliseconds refreshInterval{15'000}; ///< the ticker
    std::chrono::milliseconds toastDuration{8'000};
    std::chrono::milliseconds mountRetryDelay{5'000}; ///< between attempts to mount a volume just deployed
    std::chrono::milliseconds frame{16};              ///< announcements within it become one render
    std::chrono::milliseconds notifyAfter{10'000};    ///< what took so long is told on the desktop if no window is seen
};

} // namespace quillfen
