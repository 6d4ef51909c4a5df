// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/wire/outqueue.h"

#include <sys/socket.h>

#include <cerrno>
#include <utility>

namespace quillfen::localagent {

namespace {

// A client that hangs up must cost its connection, not the process. macOS knows no such flag for send; there the
// socket carries the option.
#ifdef MSG_NOSIGNAL
constexpr int sendFlags = MSG_NOSIGNAL;
#else
constexpr int sendFlags = 0;
#endif

} // namespace

void OutQueue::push(std::string line)
{
    m_bytes += line.size();
    m_lines.push_back(std::move(line));
}

OutQueue::Flushed OutQueue::flush(int descriptor)
{
    while (!m_lines.empty()) {
        const std::string &line = m_lines.front();
        const ssize_t written = ::send(descriptor, line.data() + m_sent, line.size() - m_sent, sendFlags);
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return errno == EAGAIN || errno == EWOULDBLOCK ? Flushed::Some : Flushed::Failed;
        }
        m_sent += static_cast<std::size_t>(written);
        m_bytes -= static_cast<std::size_t>(written);
        if (m_sent == line.size()) {
            m_lines.pop_front();
            m_sent = 0;
        }
    }
    return Flushed::All;
}

} // namespace quillfen::localagent
