// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "process.h"
#include "screen.h"

#include <memory>
#include <string>
#include <vector>

#include <sys/types.h>

namespace quillfen::bench {

/// Ends the run with a sentence when what it stands on is not there.
void require(bool holds, const char *problem);

/// What belongs to a process alone, in bytes; it must still run.
[[nodiscard]] double privateMemory(pid_t process);

/// What a measured program finds around it: a display, a session bus, the bundled agent, folders of its own.
class Surroundings final {
public:
    explicit Surroundings(const std::string &world = "everyday");
    ~Surroundings();
    Surroundings(const Surroundings &) = delete;
    Surroundings &operator=(const Surroundings &) = delete;

    [[nodiscard]] const Screen &screen() const { return *m_screen; }
    /// Starts a program that ends with the surroundings.
    e2e::Process &start(const std::vector<std::string> &command, const std::string &name);
    /// A program that ends with what is returned.
    [[nodiscard]] std::unique_ptr<e2e::Process> run(const std::vector<std::string> &command) const;

private:
    std::string m_folder;
    e2e::Environment m_environment;
    std::vector<std::unique_ptr<e2e::Process>> m_processes;
    std::unique_ptr<Screen> m_screen;
};

} // namespace quillfen::bench
