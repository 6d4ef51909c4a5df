// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/json.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillfen {

/// An answer as text, however large: one buffer of UTF-8 and an index into it that is a hundredth of its size.
///
/// It is cut into segments: lines, and the pieces of lines too long to be looked at as a whole. How deep a line is
/// indented is not in the buffer but told beside it. Never changes; any thread.
class OutputText final {
public:
    /// No longer than this many bytes, so that nothing that is painted or measured ever takes long.
    static constexpr std::size_t longestSegment = 4'096;
    /// A view at least this many columns wide shows every segment that is not among the long ones in one row.
    static constexpr std::size_t fewestColumns = 40;
    /// Indentation goes up to here at most, as a part of the columns there are.
    [[nodiscard]] static constexpr std::size_t indent(std::size_t depth, std::size_t columns) noexcept
    {
        return depth * 2 < columns / 2 ? depth * 2 : columns / 2;
    }

    struct Segment {
        std::size_t number = 0;
        std::size_t begin = 0;
        std::size_t end = 0;   ///< without the line feed
        std::size_t next = 0;  ///< where the next segment begins
        std::size_t depth = 0; ///< of its line
        std::size_t depthAfter = 0;
        bool startsLine = true;
    };
    /// A segment that may need several rows.
    struct Long {
        std::uint32_t number;
        std::uint16_t columns;
        std::uint16_t depth;
    };

    OutputText() : OutputText(std::string(), false) {}
    [[nodiscard]] static OutputText ofJson(const json::value &value);
    /// A text of lines; whatever would not be seen in it is made visible.
    [[nodiscard]] static OutputText ofWords(const QString &text);

    [[nodiscard]] const std::string &bytes() const noexcept { return m_bytes; }
    [[nodiscard]] std::size_t lines() const noexcept { return m_lines; }
    [[nodiscard]] std::size_t segments() const noexcept { return m_segments; }
    [[nodiscard]] const std::vector<Long> &longSegments() const noexcept { return m_long; }

    /// `number` must be below `segments()`.
    [[nodiscard]] Segment segment(std::size_t number) const;
    /// The one after; `segment` must not be the last.
    [[nodiscard]] Segment after(const Segment &segment) const;
    /// The one that holds a place in the buffer, its end included.
    [[nodiscard]] Segment segmentAt(std::size_t offset) const;
    [[nodiscard]] std::string_view bytesOf(const Segment &segment) const;

    /// What lies between two places, its lines indented, for copying.
    [[nodiscard]] QString text(std::size_t begin, std::size_t end) const;

    /// How many columns a text takes: one a character, two for those that may be wide.
    [[nodiscard]] static std::size_t columnsOf(std::string_view text) noexcept;
    /// How many columns the character takes that begins with this byte; 0 within a character.
    [[nodiscard]] static std::size_t columnsOf(char byte) noexcept;

private:
    /// Where a segment begins, so that those after it can be told without looking at those before.
    struct Mark {
        std::size_t offset;
        std::size_t depth; ///< of the line before, as its end leaves it
    };

    OutputText(std::string bytes, bool isJson);
    void index();
    [[nodiscard]] Segment read(std::size_t number, std::size_t offset, std::size_t depth) const;

    std::string m_bytes;
    bool m_isJson;
    std::size_t m_lines = 0;
    std::size_t m_segments = 0;
    std::vector<Mark> m_marks; ///< one for every so many segments
    std::vector<Long> m_long;
};

} // namespace quillfen
