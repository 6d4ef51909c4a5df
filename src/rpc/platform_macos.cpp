// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/platform.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace quillfen::platform {

namespace {

void makePrivateAndNonBlocking(int descriptor) noexcept
{
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
}

} // namespace

int openLocalSocket() noexcept
{
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    if (descriptor < 0) {
        return -1;
    }
    makePrivateAndNonBlocking(descriptor);
    const int yes = 1;
    ::setsockopt(descriptor, SOL_SOCKET, SO_NOSIGPIPE, &yes, sizeof yes);
    return descriptor;
}

void setBlocking(int descriptor) noexcept
{
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
}

ssize_t sendSome(int descriptor, const char *bytes, std::size_t count) noexcept
{
    return ::send(descriptor, bytes, count, MSG_DONTWAIT);
}

void nameReadingThread() noexcept
{
    ::pthread_setname_np("io.quillfen.rpc.read");
}

WakeUp::WakeUp()
{
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) < 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    m_reader = ends[0];
    m_writer = ends[1];
    makePrivateAndNonBlocking(m_reader);
    makePrivateAndNonBlocking(m_writer);
}

WakeUp::~WakeUp()
{
    ::close(m_reader);
    ::close(m_writer);
}

void WakeUp::set() noexcept
{
    [[maybe_unused]] const ssize_t written = ::write(m_writer, "!", 1); // a full pipe is set already
}

void WakeUp::clear() noexcept
{
    std::array<char, 256> bytes{};
    while (::read(m_reader, bytes.data(), bytes.size()) > 0) {
    }
}

} // namespace quillfen::platform
