// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/wire/stopsignal.h"

#include <fcntl.h>

#include <atomic>
#include <cerrno>

namespace quillfen::localagent {

namespace {

std::atomic<int> wakeUp = -1;

extern "C" void onStopSignal(int)
{
    const int former = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(wakeUp.load(), &byte, 1);
    errno = former;
}

} // namespace

StopSignal::StopSignal()
{
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0) {
        return; // without it the signals end the process in their own way
    }
    m_read = Descriptor(ends[0]);
    m_write = Descriptor(ends[1]);
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    wakeUp = m_write.get();
    struct sigaction action = {};
    action.sa_handler = onStopSignal;
    ::sigemptyset(&action.sa_mask);
    ::sigaction(SIGTERM, &action, &m_formerTerm);
    ::sigaction(SIGINT, &action, &m_formerInt);
}

StopSignal::~StopSignal()
{
    if (!m_write.valid()) {
        return;
    }
    ::sigaction(SIGTERM, &m_formerTerm, nullptr);
    ::sigaction(SIGINT, &m_formerInt, nullptr);
    wakeUp = -1;
}

} // namespace quillfen::localagent
