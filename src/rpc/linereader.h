// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/json.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace quillfen {

/// Cuts a byte stream into lines and parses each line as one JSON object (RFC 8259).
///
/// The caller reads into `room()` and reports how much came. A line that lies within the one fixed buffer is parsed
/// where it lies; a longer one goes to an incremental parser one bufferful at a time, so that no line is ever held as
/// text and each byte is looked at once and moved at most once, whatever the sizes of reads and lines. Lines that are
/// not a JSON object, in valid UTF-8 and nested at most `maxDepth` deep, are dropped. Every message brings an arena of
/// its own.
class LineReader final {
public:
    static constexpr std::size_t bufferSize = 65'536;

    /// Far above anything an agent sends (and the JSON library's 32), far below what a thread's stack holds: parsing
    /// and freeing recurse once per level.
    static constexpr std::size_t maxDepth = 1'024;

    /// A message, which is a JSON object, to be taken apart and let go of.
    using Message = std::optional<json::value>;
    /// Receives a message and the length of its line.
    using Sink = std::function<void(Message &message, std::size_t bytes)>;

    LineReader();

    /// Where the next bytes go; never empty.
    [[nodiscard]] std::span<char> room() noexcept { return {m_buffer.get() + m_end, bufferSize - m_end}; }

    /// Hands every line that these bytes complete to `sink`, in order.
    void received(std::size_t count, const Sink &sink);

private:
    void finishLine(std::string_view text, const Sink &sink);
    void continueLongLine(std::string_view text);
    void finishLongLine(std::string_view text, const Sink &sink);
    void makeRoom();

    std::unique_ptr<char[]> m_buffer;
    std::size_t m_begin = 0; ///< of the unfinished line, as far as it is in the buffer
    std::size_t m_end = 0;   ///< of what was received
    json::parser m_parser;
    std::optional<json::stream_parser> m_longLine; ///< has the beginning of a line that did not fit
    std::size_t m_longLineBytes = 0;
    bool m_longLineBroken = false; ///< its rest is only skipped
};

} // namespace quillfen
