// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "waiting.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace quillfen::e2e {

using Environment = std::map<std::string, std::string>;

/// A program that was started, in a process group of its own, with nothing but the given environment. It ends, with
/// everything it started in turn, when this object or the test program does.
class Process final {
public:
    /// Output and errors go to `log`. Throws std::system_error when the program cannot be started.
    Process(const std::vector<std::string> &command, const Environment &environment, std::filesystem::path log);
    ~Process();
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;

    [[nodiscard]] pid_t id() const noexcept { return m_id; }
    [[nodiscard]] bool running();
    /// What the program wrote so far.
    [[nodiscard]] std::string output() const;

    void signal(int number) const;
    /// Waits for the end: the exit status, 128 and the signal's number after a signal, nothing when it still runs.
    [[nodiscard]] std::optional<int> finish(std::chrono::milliseconds bound = patience);

private:
    pid_t m_id = -1;
    std::filesystem::path m_log;
    std::optional<int> m_status;
};

/// Whether somebody accepts connections at a Unix socket. The file alone says little: it is there before and after.
[[nodiscard]] bool listensAt(const std::filesystem::path &socket);

/// The number that Xvfb's option "-displayfd 1" adds to its output, among warnings; empty while it is not there.
[[nodiscard]] std::string displayIn(const std::string &output);

} // namespace quillfen::e2e
