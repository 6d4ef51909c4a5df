// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/linereader.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace quillfen {

namespace {

json::parse_options options()
{
    json::parse_options result;
    result.max_depth = LineReader::maxDepth;
    return result;
}

/// An arena whose first block lies in one piece with its reference count: most messages cost one allocation in all.
class Arena final : public json::memory_resource {
    void *do_allocate(std::size_t size, std::size_t alignment) override { return m_blocks.allocate(size, alignment); }
    void do_deallocate(void *, std::size_t, std::size_t) override {}
    [[nodiscard]] bool do_is_equal(const json::memory_resource &other) const noexcept override
    {
        return this == &other;
    }

    // The whole stays below the size from which on the allocator has no quick list any more.
    alignas(std::max_align_t) std::array<unsigned char, 800> m_first;
    json::monotonic_resource m_blocks{m_first.data(), m_first.size()};
};

/// Every value of a message counts itself as a user of the arena, so that parts may outlive the rest.
json::storage_ptr arena()
{
    return json::make_shared_resource<Arena>();
}

void deliver(LineReader::Message &message, std::size_t bytes, const LineReader::Sink &sink)
{
    if (message->is_object()) {
        sink(message, bytes);
    }
}

} // namespace

LineReader::LineReader() : m_buffer(std::make_unique_for_overwrite<char[]>(bufferSize)), m_parser({}, options()) {}

void LineReader::received(std::size_t count, const Sink &sink)
{
    const char *fresh = m_buffer.get() + m_end;
    m_end += count;
    const char *const end = m_buffer.get() + m_end;
    while (const void *feed = std::memchr(fresh, '\n', static_cast<std::size_t>(end - fresh))) {
        const char *const line = m_buffer.get() + m_begin;
        fresh = static_cast<const char *>(feed) + 1;
        m_begin = static_cast<std::size_t>(fresh - m_buffer.get());
        finishLine({line, static_cast<std::size_t>(fresh - 1 - line)}, sink);
    }
    if (m_begin == m_end) {
        m_begin = m_end = 0;
    } else if (m_end == bufferSize) {
        makeRoom();
    }
}

/// Moves the beginning of a line to the front of the buffer. One that fills the buffer from the front has been moved
/// before or never had to be, and is parsed as far as it goes.
void LineReader::makeRoom()
{
    const std::size_t length = m_end - m_begin;
    if (m_begin == 0) {
        continueLongLine({m_buffer.get(), length});
        m_end = 0;
        return;
    }
    std::memmove(m_buffer.get(), m_buffer.get() + m_begin, length);
    m_begin = 0;
    m_end = length;
}

void LineReader::finishLine(std::string_view text, const Sink &sink)
{
    if (m_longLine) {
        finishLongLine(text, sink);
        return;
    }
    json::error_code error;
    m_parser.reset(arena());
    m_parser.write(text.data(), text.size(), error);
    if (error) {
        return;
    }
    Message message(m_parser.release());
    deliver(message, text.size(), sink);
}

void LineReader::continueLongLine(std::string_view text)
{
    if (!m_longLine) {
        m_longLine.emplace(json::storage_ptr{}, options());
        m_longLine->reset(arena());
        m_longLineBytes = 0;
        m_longLineBroken = false;
    }
    m_longLineBytes += text.size();
    if (m_longLineBroken) {
        return;
    }
    json::error_code error;
    m_longLine->write(text.data(), text.size(), error);
    if (error) {
        m_longLineBroken = true;
        m_longLine->reset(); // what was parsed so far is of no use to anybody
    }
}

void LineReader::finishLongLine(std::string_view text, const Sink &sink)
{
    continueLongLine(text);
    Message message;
    if (!m_longLineBroken) {
        json::error_code error;
        m_longLine->finish(error);
        if (!error) {
            message.emplace(m_longLine->release());
        }
    }
    m_longLine.reset(); // its working memory has grown with the line
    if (message) {
        deliver(message, m_longLineBytes, sink);
    }
}

} // namespace quillfen
