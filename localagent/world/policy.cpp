// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/policy.h"

#include "localagent/world/points.h"

#include <charconv>
#include <system_error>
#include <vector>

namespace quillfen::localagent {

namespace {

/// What a number counts, and how far the vault goes: a tier of years in seconds would fill it by itself.
struct Tier {
    std::string_view label;
    std::string_view unit;
    std::int64_t most;
};

constexpr std::array<Tier, 6> tiers{{{"every second", "minutes", 10'080},
                                     {"every minute", "hours", 720},
                                     {"every hour", "days", 366},
                                     {"every day", "weeks", 260},
                                     {"every week", "months", 120},
                                     {"every month", "years", 100}}};

Refusal unreadable()
{
    return {Refusal::Kind::Bad, "A history policy is six whole numbers with commas between them, like 720,24,7,4,6,1."};
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string_view> pieces(std::string_view text)
{
    std::vector<std::string_view> found;
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t comma = std::min(text.find(',', from), text.size());
        found.push_back(trimmed(text.substr(from, comma - from)));
        from = comma + 1;
    }
    return found;
}

std::int64_t numberFrom(std::string_view piece, const Tier &tier)
{
    std::int64_t number = 0;
    const char *const end = piece.data() + piece.size();
    const auto [stop, error] = std::from_chars(piece.data(), end, number);
    if (error == std::errc::invalid_argument || stop != end) {
        throw unreadable();
    }
    if (error == std::errc::result_out_of_range || number < 0 || number > tier.most) {
        throw Refusal(Refusal::Kind::Bad, "A point of " + std::string(tier.label) + " is kept for 0 to " +
                                              std::to_string(tier.most) + " " + std::string(tier.unit) + ".");
    }
    return number;
}

} // namespace

std::string policyText(const Policy &policy)
{
    std::string text;
    for (const std::int64_t number : policy) {
        text += (text.empty() ? "" : ",") + std::to_string(number);
    }
    return text;
}

Policy policyFrom(std::string_view text)
{
    const std::vector<std::string_view> given = pieces(text);
    if (given.size() != tiers.size()) {
        throw unreadable();
    }
    Policy policy = {};
    for (std::size_t tier = 0; tier < tiers.size(); ++tier) {
        policy.at(tier) = numberFrom(given[tier], tiers.at(tier));
    }
    return policy;
}

void setPolicy(World &world, VolumeId id, const Policy &policy)
{
    Volume &volume = idleVolumeOf(world, id);
    settleHistory(world, volume);
    volume.policy = policy;
}

} // namespace quillfen::localagent
