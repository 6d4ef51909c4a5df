// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "element.h"
#include "process.h"

#include <functional>
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
    /// The first showing element of this role and name in any window, dialogs before what they cover; nothing when
    /// there is none.
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
    /// Waits until no such element shows; throws when it stays.
    void seeNo(const std::string &role, const std::string &name) const;
    /// Waits until an alert has told this text, be it only for a moment: a notice that another has replaced meanwhile,
    /// an error under a form.
    void hear(const std::string &text) const;
    /// Waits until one of these texts was told: of what passes quickly a busy machine may skip some.
    void hearOneOf(const std::vector<std::string> &texts) const;

    /// Waits for an element and does what a click on it does, through the accessibility tree.
    void press(const std::string &role, const std::string &name) const;
    /// The same with the pointer. What lies beyond the window's edge is scrolled to first.
    void click(const std::string &role, const std::string &name) const;
    /// Puts a text into a field in place of what it holds: typed after a click where keys can type it, else as a
    /// screen reader would.
    void fill(const std::string &field, const std::string &text) const;
    /// Chooses an entry of the picker that is called `picker`, by its list.
    void choose(const std::string &picker, const std::string &entry) const;
    /// The picker of this name; what is chosen is its name in the tree.
    [[nodiscard]] Element picker(const std::string &name) const;

    /// Goes on with Tab until the element has the keyboard; throws when a whole round does not come by it.
    void tabTo(const std::string &role, const std::string &name) const;
    /// Tab to an element, then Enter.
    void enter(const std::string &role, const std::string &name) const;

    [[nodiscard]] std::string dump() const;

private:
    [[noreturn]] void giveUp(const std::string &what) const;
    void settle(const Element &element) const;
    void bringIntoReach(const Element &element) const;

    Process m_process;
};

} // namespace quillfen::e2e
