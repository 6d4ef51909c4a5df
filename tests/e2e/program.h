// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "process.h"

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The program as a desktop starts and calls it.
namespace quillfen::e2e::program {

/// Runs a command on the desktop to its end: its exit status and what it wrote.
[[nodiscard]] std::pair<std::optional<int>, std::string> run(const std::vector<std::string> &command,
                                                             const Environment &variables = {});
/// Starts the program once more beside the one that runs.
[[nodiscard]] std::pair<std::optional<int>, std::string> startAgain(const std::vector<std::string> &arguments,
                                                                    const Environment &variables = {});

/// Calls a method of org.freedesktop.Application; `arguments` are written as GVariant texts. Throws when nobody takes
/// the call.
void call(const std::string &method, const std::vector<std::string> &arguments);
void activate(const std::string &platformData = "@a{sv} {}");

/// The process that has the program's name on the bus; nothing while none has.
[[nodiscard]] std::optional<pid_t> onBus();

/// Lets the bus start the program by itself while this object lives, and ends what it has started.
class Activatable final {
public:
    /// `service` is the file that an installation leaves for the bus; `variables` are of the program on top of the
    /// desktop's.
    explicit Activatable(const std::filesystem::path &service, const Environment &variables = {});
    ~Activatable();
    Activatable(const Activatable &) = delete;
    Activatable &operator=(const Activatable &) = delete;

private:
    std::filesystem::path m_file;
};

/// Such a file for the program that is tested.
[[nodiscard]] std::filesystem::path serviceFile();

} // namespace quillfen::e2e::program
