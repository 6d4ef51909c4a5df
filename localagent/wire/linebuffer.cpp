// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/wire/linebuffer.h"

namespace quillfen::localagent {

void LineBuffer::append(std::string_view bytes)
{
    // What is left over after a line was taken came with the last read alone, so this moves each byte at most once.
    if (m_start > 0) {
        m_bytes.erase(0, m_start);
        m_scanned -= m_start;
        m_start = 0;
    }
    m_bytes.append(bytes);
}

LineBuffer::Next LineBuffer::next()
{
    const std::size_t feed = m_bytes.find('\n', m_scanned);
    if (feed == std::string::npos) {
        m_scanned = m_bytes.size();
        if (m_skipping || m_scanned - m_start > m_limit) {
            const bool reported = m_skipping;
            m_skipping = true;
            m_start = m_scanned; // the bytes of a line that is too long are let go as they come
            return reported ? Next(NeedMore{}) : Next(TooLong{});
        }
        return NeedMore{};
    }
    const std::string_view line(m_bytes.data() + m_start, feed - m_start);
    m_start = m_scanned = feed + 1;
    if (m_skipping) {
        m_skipping = false;
        return next();
    }
    if (line.size() > m_limit) {
        return TooLong{};
    }
    return line;
}

} // namespace quillfen::localagent
