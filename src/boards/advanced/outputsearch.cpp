// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "outputsearch.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <optional>
#include <vector>

namespace quillfen {

namespace {

using Table = std::array<unsigned char, std::numeric_limits<unsigned char>::max() + 1>;

constexpr Table foldTable()
{
    Table table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        table.at(byte) = static_cast<unsigned char>(byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte);
    }
    return table;
}

constexpr Table folds = foldTable();

unsigned char folded(char byte)
{
    return folds[static_cast<unsigned char>(byte)];
}

/// Finds words by looking at their last byte first and skipping as far as the byte found there allows (R. N. Horspool,
/// "Practical fast searching in strings", 1980).
class Finder final {
public:
    explicit Finder(std::string_view words)
    {
        std::ranges::transform(words, std::back_inserter(m_words), [](char byte) { return folded(byte); });
        m_skips.fill(m_words.size());
        for (std::size_t at = 0; at + 1 < m_words.size(); ++at) {
            m_skips[m_words[at]] = m_words.size() - 1 - at;
        }
    }

    [[nodiscard]] std::optional<std::size_t> next(std::string_view text, std::size_t from) const
    {
        const std::size_t length = m_words.size();
        while (from + length <= text.size()) {
            const unsigned char last = folded(text[from + length - 1]);
            if (last == m_words.back() && matches(text.data() + from)) {
                return from;
            }
            from += m_skips[last];
        }
        return std::nullopt;
    }

private:
    [[nodiscard]] bool matches(const char *text) const
    {
        return std::ranges::equal(m_words, std::string_view(text, m_words.size()), {}, {},
                                  [](char byte) { return folded(byte); });
    }

    std::vector<unsigned char> m_words;
    std::array<std::size_t, std::numeric_limits<unsigned char>::max() + 1> m_skips{};
};

} // namespace

OutputMatch findIn(std::string_view text, std::string_view words, std::size_t from, SearchDirection direction)
{
    OutputMatch found;
    if (words.empty()) {
        return found;
    }
    const Finder finder(words);
    std::optional<std::size_t> first;
    std::optional<std::size_t> picked;
    std::size_t last = 0;
    std::size_t number = 0;
    for (std::optional<std::size_t> at = finder.next(text, 0); at; at = finder.next(text, *at + words.size())) {
        ++found.count;
        first = first.value_or(*at);
        last = *at;
        const bool isNext = direction == SearchDirection::Forward ? *at >= from && !picked : *at < from;
        if (isNext) {
            picked = *at;
            number = found.count;
        }
    }
    if (found.count == 0) {
        return found;
    }
    if (!picked) {
        const bool forward = direction == SearchDirection::Forward;
        picked = forward ? *first : last;
        number = forward ? 1 : found.count;
    }
    found.begin = *picked;
    found.end = *picked + words.size();
    found.number = number;
    return found;
}

} // namespace quillfen
