// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

namespace quillfen::e2e {

/// A window of another program, in which the user works, and a panel that listens to what starting programs tell.
class OtherWindow final {
public:
    /// Returns when the window has the keyboard.
    OtherWindow();
    ~OtherWindow();
    OtherWindow(const OtherWindow &) = delete;
    OtherWindow &operator=(const OtherWindow &) = delete;

    /// Types a letter into it; the display's time of that.
    [[nodiscard]] unsigned long type();
    /// The last message of a start (startup-notification) that everybody was told; empty when there was none.
    [[nodiscard]] std::string heard();

private:
    class Connection;

    std::unique_ptr<Connection> m_connection;
};

} // namespace quillfen::e2e
