// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/methods/faults.h"
#include "localagent/world/state.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace quillfen::localagent {

/// The command line is not right; the text says why.
class UsageError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What the command line asks for.
struct Options {
    enum class Action { Serve, Help, Version };

    Action action = Action::Serve;
    std::string socket; ///< resolved: never empty unless the user says so
    std::string home;
    std::string world = "everyday";
    double speed = 1;
    std::uint64_t seed = 1;
    PointsForm pointsForm = PointsForm::Points;
    Faults faults;
};

/// Reads the arguments (without the program's name). Throws UsageError.
[[nodiscard]] Options parseOptions(const std::vector<std::string> &arguments);

/// The text of --help.
[[nodiscard]] std::string helpText();

} // namespace quillfen::localagent
