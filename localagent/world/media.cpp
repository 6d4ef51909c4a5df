// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/media.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

namespace quillfen::localagent {

namespace {

// Media are sold by decimal sizes; volumes are not.
constexpr std::int64_t soldGigabyte = 1'000'000'000;
constexpr std::int64_t soldTerabyte = 1000 * soldGigabyte;

struct Size {
    std::string_view name;
    std::int64_t room;
    std::int64_t price;
};

struct Kind {
    std::string_view medium;
    std::string_view carrier;
    std::span<const Size> sizes; ///< smallest first
    std::int64_t packing;
    std::int64_t work; ///< for each unit
    std::optional<std::int64_t> toUs;
    std::optional<std::int64_t> toEu;
    std::optional<std::int64_t> elsewhere;
};

constexpr std::array<Size, 1> discs{{{"BD-R XL 100 GB", 100 * soldGigabyte, 1700}}};
constexpr std::array<Size, 1> tapes{{{"LTO-8 tape", 12 * soldTerabyte, 7800}}};
constexpr std::array<Size, 3> solid{{{"SSD 250 GB", 250 * soldGigabyte, 4100},
                                     {"SSD 1 TB", soldTerabyte, 8900},
                                     {"SSD 4 TB", 4 * soldTerabyte, 26000}}};
constexpr std::array<Size, 3> disks{{{"Hard disk 1 TB", soldTerabyte, 5200},
                                     {"Hard disk 4 TB", 4 * soldTerabyte, 10900},
                                     {"Hard disk 16 TB", 16 * soldTerabyte, 27900}}};

// Tapes do not travel by the airmail that reaches everywhere.
constexpr std::array<Kind, 4> kinds{{{"bdxl", "discs", discs, 600, 900, 1250, 1900, 2600},
                                     {"lto8", "tape", tapes, 600, 2500, 1400, 2200, std::nullopt},
                                     {"ssd", "drive", solid, 600, 1200, 1250, 1900, 2600},
                                     {"hdd", "drive", disks, 800, 1200, 1600, 2600, 3800}}};

constexpr std::int64_t retrievalStep = 500LL << 30U;
constexpr std::int64_t retrievalPrice = 1250;

std::int64_t stepsOf(std::int64_t bytes, std::int64_t step)
{
    return std::max<std::int64_t>((bytes + step - 1) / step, 0);
}

std::optional<std::int64_t> shippingOf(const Kind &kind, std::string_view region)
{
    if (region == "US") {
        return kind.toUs;
    }
    return region == "EU" ? kind.toEu : kind.elsewhere;
}

/// The smallest that holds it all; several of the largest where none does.
const Size &fitting(const Kind &kind, std::int64_t bytes)
{
    const auto found = std::ranges::find_if(kind.sizes, [bytes](const Size &size) { return size.room >= bytes; });
    return found == kind.sizes.end() ? kind.sizes.back() : *found;
}

} // namespace

std::vector<MediaOffer> mediaOffers(std::int64_t bytes, std::string_view region)
{
    std::vector<MediaOffer> offers;
    for (const Kind &kind : kinds) {
        const std::optional<std::int64_t> shipping = shippingOf(kind, region);
        if (!shipping) {
            continue;
        }
        const Size &size = fitting(kind, bytes);
        const std::int64_t units = std::max<std::int64_t>(stepsOf(bytes, size.room), 1);
        offers.push_back({std::string(kind.medium), std::string(size.name), std::string(kind.carrier), units,
                          units * size.room, units * size.price, kind.packing, units * kind.work, *shipping});
    }
    return offers;
}

std::int64_t retrievalCents(std::int64_t bytes)
{
    return stepsOf(bytes - freeRetrieval, retrievalStep) * retrievalPrice;
}

std::string dollars(std::int64_t cents)
{
    const std::int64_t rest = cents % 100;
    return "$" + std::to_string(cents / 100) + (rest < 10 ? ".0" : ".") + std::to_string(rest);
}

} // namespace quillfen::localagent
