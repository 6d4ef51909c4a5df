// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace quillfen {

inline constexpr std::size_t tierCount = 6;

/// How long a volume's history is kept, one number a tier from "every second" to "every month", each in its tier's own
/// unit.
using Policy = std::array<std::int64_t, tierCount>;

struct TierChoice {
    std::int64_t number = 0;
    QString label;
};

/// One granularity of history.
struct Tier {
    QString label;
    QString unit; ///< of its number
    std::array<TierChoice, 6> choices;
};

/// A policy with a name.
struct Plan {
    QString name;
    QString description;
    Policy values{};
};

inline constexpr std::size_t planCount = 3;
inline constexpr std::size_t recommendedPlan = 1; ///< "Standard"
inline constexpr Policy standardPolicy{720, 24, 7, 4, 6, 1};

[[nodiscard]] const Tier &tierAt(std::size_t index);
[[nodiscard]] const Plan &planAt(std::size_t index);

/// The plan whose numbers these are; nothing for numbers of one's own.
[[nodiscard]] std::optional<std::size_t> planOf(const Policy &values);
/// The name of that plan, "No history" for nothing but zeros, else "Custom".
[[nodiscard]] QString planName(const Policy &values);

/// How long a tier with this number is kept, in words; a dash for nothing.
[[nodiscard]] QString spanText(std::size_t tier, std::int64_t number);
/// The whole policy in words, "every second for 12 hours, …", for those who cannot see its picture.
[[nodiscard]] QString policyWords(const Policy &values);
/// How far a tier with this number reaches on the logarithmic scale that ends at ten years; 0 for nothing, at most 1.
[[nodiscard]] double reachShare(std::size_t tier, std::int64_t number);

/// Reads the agent's six numbers, "720,24,7,4,6,1". Nothing unless there are exactly six and none is negative.
[[nodiscard]] std::optional<Policy> parsedPolicy(const QString &text);
/// The numbers as the agent wants them, without spaces.
[[nodiscard]] QString wireForm(const Policy &values);

} // namespace quillfen
