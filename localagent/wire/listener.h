// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/wire/descriptor.h"

#include <sys/types.h>

#include <stdexcept>
#include <string>

namespace quillfen::localagent {

/// Why the agent cannot listen, in a sentence for the person who started it.
class ListenError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The agent's socket file: made in a folder that only its user can enter, taken away when the agent ends.
class Listener final {
public:
    /// Listens on `path`. Missing folders are made with mode 0700; a folder that is open to others is refused, and so
    /// is one that others could exchange because they own a folder above it or can write there. A socket file that
    /// nobody answers on is a leftover and is replaced; anything else in the way stays and throws ListenError.
    explicit Listener(std::string path);

    /// Removes the socket file, unless somebody else has put another one in its place.
    ~Listener();
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

    [[nodiscard]] const std::string &path() const { return m_path; }
    [[nodiscard]] int descriptor() const { return m_socket.get(); }

    /// The next waiting connection, non-blocking; an invalid descriptor when there is none (errno says why).
    [[nodiscard]] Descriptor accept() const;

private:
    std::string m_path;
    Descriptor m_socket;
    dev_t m_device = 0;
    ino_t m_inode = 0;
};

} // namespace quillfen::localagent
