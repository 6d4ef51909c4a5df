// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

namespace quillfen::localagent {

/// Cuts a stream of bytes into lines. Linear in the bytes received: every byte is searched once and moved at most once
/// after it arrived, whatever the sizes of reads and lines.
class LineBuffer final {
public:
    struct NeedMore {};
    struct TooLong {};
    /// A line without its line feed (valid until the next `append`), a line that was skipped, or nothing yet.
    using Next = std::variant<NeedMore, TooLong, std::string_view>;

    /// `limit` bounds what one client can make the agent hold.
    explicit LineBuffer(std::size_t limit) : m_limit(limit) {}

    void append(std::string_view bytes);
    [[nodiscard]] Next next();

private:
    std::size_t m_limit;
    std::string m_bytes;
    std::size_t m_start = 0;   ///< where the line that is being read begins
    std::size_t m_scanned = 0; ///< up to here there is no line feed after m_start
    bool m_skipping = false;   ///< inside a line that was too long
};

} // namespace quillfen::localagent
