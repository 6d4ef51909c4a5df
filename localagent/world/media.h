// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillfen::localagent {

/// One way to have so many bytes on something to hold in one's hands, with its prices in cents.
struct MediaOffer {
    std::string medium; ///< what an order names
    std::string name;
    std::string carrier; ///< "tape", "discs", "drive"
    std::int64_t units = 1;
    std::int64_t room = 0; ///< bytes that all of them hold
    std::int64_t media = 0;
    std::int64_t packing = 0;
    std::int64_t work = 0;
    std::int64_t shipping = 0;
};

/// What `bytes` can be shipped on to a region ("US", "EU" or "other"), and for how much.
[[nodiscard]] std::vector<MediaOffer> mediaOffers(std::int64_t bytes, std::string_view region);

/// A download of up to this size costs nothing.
inline constexpr std::int64_t freeRetrieval = 100LL << 30U;
/// What fetching `bytes` from the vault for a download costs, in cents.
[[nodiscard]] std::int64_t retrievalCents(std::int64_t bytes);

/// "$12.50"
[[nodiscard]] std::string dollars(std::int64_t cents);

} // namespace quillfen::localagent
