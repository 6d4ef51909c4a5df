// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <cstddef>

namespace quillfen::platform {

/// A new local stream socket that does not block, never raises SIGPIPE and is not inherited by child processes.
/// -1 with errno set when there is none to be had.
[[nodiscard]] int openLocalSocket() noexcept;

/// From now on reading from the socket waits for something to read.
void setBlocking(int descriptor) noexcept;

/// Sends what fits without waiting; otherwise as send(2).
[[nodiscard]] ssize_t sendSome(int descriptor, const char *bytes, std::size_t count) noexcept;

/// Names the calling thread for debuggers and process viewers.
void nameReadingThread() noexcept;

/// A flag that poll(2) can wait for: readable from `set` to `clear`. Any thread.
class WakeUp final {
public:
    /// Throws std::system_error when the process is out of descriptors.
    WakeUp();
    ~WakeUp();
    WakeUp(const WakeUp &) = delete;
    WakeUp &operator=(const WakeUp &) = delete;

    [[nodiscard]] int descriptor() const noexcept { return m_reader; }
    void set() noexcept;
    void clear() noexcept;

private:
    int m_reader = -1;
    int m_writer = -1; ///< the same as the reader where one descriptor does both
};

} // namespace quillfen::platform
