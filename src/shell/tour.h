// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <memory>

namespace quillfen {

class AppDelegate;
class AppState;
class MainWindow;

/// Shows every screen of `window` in turn and leaves a picture of each in `folder`, named after the screen. Waits for
/// what the agent has to say, but not for ever. Returns the program's exit code: 0, or 1 with the reason on the
/// terminal when the agent's screens never came or a picture could not be written.
[[nodiscard]] int runTour(MainWindow &window, AppDelegate &delegate, const std::shared_ptr<AppState> &state,
                          const QString &folder);

} // namespace quillfen
