// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/platform.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

namespace quillfen::platform {

int openLocalSocket() noexcept
{
    return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

void setBlocking(int descriptor) noexcept
{
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
}

ssize_t sendSome(int descriptor, const char *bytes, std::size_t count) noexcept
{
    return ::send(descriptor, bytes, count, MSG_DONTWAIT | MSG_NOSIGNAL);
}

void nameReadingThread() noexcept
{
    // The full name is io.quillfen.rpc.read; the kernel keeps 15 characters and refuses more.
    ::pthread_setname_np(::pthread_self(), "io.quillfen.rpc");
}

WakeUp::WakeUp() : m_reader(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), m_writer(m_reader)
{
    if (m_reader < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
}

WakeUp::~WakeUp()
{
    ::close(m_reader);
}

void WakeUp::set() noexcept
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(m_writer, &one, sizeof one); // fails only when it is set already
}

void WakeUp::clear() noexcept
{
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t read = ::read(m_reader, &count, sizeof count); // fails only when it is clear already
}

} // namespace quillfen::platform
