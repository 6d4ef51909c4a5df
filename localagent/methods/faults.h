// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/refusal.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillfen::localagent {

/// The error object of an answer.
struct Error {
    std::int64_t code = 0;
    std::string message;
    std::optional<std::int64_t> status;
};

/// What goes wrong with one method.
struct MethodFault {
    std::chrono::duration<double> delay{0};
    std::optional<Error> failure;
    bool silent = false; ///< never answers
    bool drop = false;   ///< ends the connection it was called on
};

/// A fault switch could not be read; the text says how it is written.
class FaultError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The trouble an agent can make on request, for tests and demonstrations. Times are real seconds, whatever the speed
/// of the world. A method named "*" stands for every method that has no faults of its own.
struct Faults {
    std::unordered_map<std::string, MethodFault> methods;
    std::optional<std::chrono::duration<double>> dropAfter;   ///< every connection ends so long after it began
    std::optional<std::chrono::duration<double>> stopReading; ///< … or is no longer read
    bool garbage = false;                                     ///< a line of rubbish before every answer

    [[nodiscard]] const MethodFault *of(std::string_view method) const;

    /// "METHOD=SECONDS"
    void addDelay(std::string_view text);
    /// "METHOD=CODE[:STATUS]:MESSAGE"
    void addFailure(std::string_view text);
};

/// A number of seconds, zero or more. Throws FaultError, naming the switch.
[[nodiscard]] std::chrono::duration<double> parseSeconds(std::string_view text, std::string_view name);

/// One line of rubbish after the other: broken JSON, bytes that are no text, answers nobody waits for.
[[nodiscard]] std::string_view garbageLine(std::size_t number);

} // namespace quillfen::localagent
