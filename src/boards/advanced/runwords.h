// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "consolesession.h"

#include <QString>

#include <chrono>

namespace quillfen {

/// "85 ms", "1.2 s", "2 min 5 s".
[[nodiscard]] QString durationWords(std::chrono::milliseconds duration);

/// What the last run came to in one line: the method, how long it took, how much came back. Empty while there is none.
[[nodiscard]] QString outcomeLine(const RunOutcome &outcome);

/// The line beside the button: what runs, or else what the last run came to.
[[nodiscard]] QString statusLine(const ConsoleSession &session);

} // namespace quillfen
