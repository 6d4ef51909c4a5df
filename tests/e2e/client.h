// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "element.h"
#include "process.h"

#include <string>
#include <vector>

namespace quillfen::e2e {

/// The real client in a real window, seen as a screen reader sees it and driven by keys and the pointer.
class Client final {
public:
    /// Starts it with these variables and arguments on top of the desktop's; returns once its window has the keyboard.
    explicit Client(const Environment &variables = {}, const std::vector<std::string> &arguments = {});
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;

    [[nodiscard]] Process &process() noexcept { return m_process; }

    /// The showing top-level windows, dialogs among them.
    [[nodiscard]] std::vector<Element> windows() const;
    /// The first showing element of this role and name in any window; nothing when there is none.
    [[nodiscard]] Element find(const std::string &role, const std::string &name) const;
    [[nodiscard]] Element find(const std::function<bool(const Element &)> &wanted) const;
    [[nodiscard]] std::vector<Element> all(const std::function<bool(const Element &)> &wanted) const;
    /// Whether an element that shows has exactly this text as its name or contents.
    [[nodiscard]] bool shows(const std::string &text) const;
    [[nodiscard]] Element focused() const;

    /// Waits for an element; throws with a dump of the whole tree when it does not come.
    [[nodiscard]] Element see(const std::string &role, const std::string &name) const;
    /// Waits until `text` shows; throws as `see` does.
    void seeText(const std::string &text) const;
    /// Waits for an element and does what a click on it does.
    void press(const std::string &role, const std::string &name) const;

    [[nodiscard]] std::string dump() const;

private:
    [[noreturn]] void giveUp(const std::string &what) const;

    Process m_process;
};

} // namespace quillfen::e2e
