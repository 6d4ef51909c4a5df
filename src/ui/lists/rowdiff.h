// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <iterator>
#include <numeric>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

namespace quillfen {

/// Rows next to one another.
struct RowRange {
    int first = 0;
    int count = 0;

    bool operator==(const RowRange &) const = default;
};

/// What turns one list of rows into another: first the removals, then the insertions, each in the order given here.
struct RowDiff {
    std::vector<RowRange> removed;  ///< rows of the old list, the last range first
    std::vector<RowRange> inserted; ///< rows of the new list, the first range first

    [[nodiscard]] bool isEmpty() const noexcept { return removed.empty() && inserted.empty(); }
    [[nodiscard]] std::size_t steps() const noexcept { return removed.size() + inserted.size(); }
};

namespace detail {

/// The places in `matches` (-1: none) of a longest sequence that grows, in order.
inline std::vector<int> longestGrowth(const std::vector<int> &matches)
{
    std::vector<int> tails; // tails[n]: where the growth of length n + 1 with the smallest end has that end
    std::vector<int> before(matches.size(), -1);
    for (std::size_t at = 0; at < matches.size(); ++at) {
        if (matches[at] < 0) {
            continue;
        }
        const auto place = std::ranges::lower_bound(tails, matches[at], {},
                                                    [&](int tail) { return matches[static_cast<std::size_t>(tail)]; });
        if (place != tails.begin()) {
            before[at] = *std::prev(place);
        }
        if (place == tails.end()) {
            tails.push_back(static_cast<int>(at));
        } else {
            *place = static_cast<int>(at);
        }
    }
    std::vector<int> growth(tails.size());
    int at = tails.empty() ? -1 : tails.back();
    for (auto slot = growth.rbegin(); slot != growth.rend(); ++slot) {
        *slot = at;
        at = before[static_cast<std::size_t>(at)];
    }
    return growth;
}

/// The ranges of 0 … size - 1 that hold none of `kept` (ascending), moved by `offset`.
inline std::vector<RowRange> gaps(const std::vector<int> &kept, int size, int offset)
{
    std::vector<RowRange> ranges;
    int next = 0;
    const auto upTo = [&](int end) {
        if (end > next) {
            ranges.push_back({offset + next, end - next});
        }
        next = end + 1;
    };
    std::ranges::for_each(kept, upTo);
    upTo(size);
    return ranges;
}

/// Where the keys of `part` stand in `whole`, when they stand there in the same order; empty when they do not.
template <typename Key>
std::vector<int> placesInOrder(std::span<const Key> part, std::span<const Key> whole)
{
    std::vector<int> places;
    places.reserve(part.size());
    auto at = whole.begin();
    for (const Key &key : part) {
        at = std::find(at, whole.end(), key);
        if (at == whole.end()) {
            return {};
        }
        places.push_back(static_cast<int>(at - whole.begin()));
        ++at;
    }
    return places;
}

/// For each key of `after` its place in `before`, -1 where it has none. Equal keys are matched in their order.
template <typename Key>
std::vector<int> matches(std::span<const Key> before, std::span<const Key> after)
{
    std::unordered_map<Key, int> first;       // the first place of a key that is not taken yet …
    std::vector<int> next(before.size(), -1); // … and the one after each
    first.reserve(before.size());
    for (std::size_t place = before.size(); place-- > 0;) {
        const auto [known, isNew] = first.try_emplace(before[place], -1);
        next[place] = std::exchange(known->second, static_cast<int>(place));
    }
    std::vector<int> found;
    found.reserve(after.size());
    for (const Key &key : after) {
        const auto known = first.find(key);
        found.push_back(known == first.end() ? -1 : known->second);
        if (found.back() >= 0) {
            known->second = next[static_cast<std::size_t>(found.back())];
        }
    }
    return found;
}

/// The rows that both lists keep: the same number of places in each, in order.
struct Kept {
    std::vector<int> before;
    std::vector<int> after;
};

template <typename Key>
Kept kept(std::span<const Key> before, std::span<const Key> after)
{
    const auto all = [](std::size_t count) {
        std::vector<int> places(count);
        std::iota(places.begin(), places.end(), 0);
        return places;
    };
    // A search only takes rows away or gives them back: no table of ten thousand keys for that.
    if (std::vector<int> places = placesInOrder(after, before); !places.empty()) {
        return {std::move(places), all(after.size())};
    }
    if (std::vector<int> places = placesInOrder(before, after); !places.empty()) {
        return {all(before.size()), std::move(places)};
    }
    const std::vector<int> found = matches(before, after);
    Kept rows{{}, longestGrowth(found)};
    for (const int place : rows.after) {
        rows.before.push_back(found[static_cast<std::size_t>(place)]);
    }
    return rows;
}

} // namespace detail

/// How the rows with the keys `before` become those with the keys `after`, keeping as many as possible; a row that
/// moves is removed and inserted. Keys may repeat: equal ones are matched in their order. Linear while the order stays.
template <typename Key>
[[nodiscard]] RowDiff rowDiff(const std::vector<Key> &before, const std::vector<Key> &after)
{
    const auto front = std::ranges::mismatch(before, after).in1 - before.begin();
    std::span<const Key> oldRows(before.begin() + front, before.end());
    std::span<const Key> newRows(after.begin() + front, after.end());
    while (!oldRows.empty() && !newRows.empty() && oldRows.back() == newRows.back()) {
        oldRows = oldRows.first(oldRows.size() - 1);
        newRows = newRows.first(newRows.size() - 1);
    }

    const detail::Kept kept = detail::kept(oldRows, newRows);
    const int offset = static_cast<int>(front);
    RowDiff diff{detail::gaps(kept.before, static_cast<int>(oldRows.size()), offset),
                 detail::gaps(kept.after, static_cast<int>(newRows.size()), offset)};
    std::ranges::reverse(diff.removed);
    return diff;
}

} // namespace quillfen
