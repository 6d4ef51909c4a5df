// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

typedef struct _AtspiAccessible AtspiAccessible; // NOLINT(bugprone-reserved-identifier): the library's own name

namespace quillfen::e2e {

struct Rect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// One element of a program's accessibility tree as a screen reader knows it. Every question goes to the program and is
/// answered as of now; an element that is gone answers with nothing (empty texts, no states, no children).
class Element final {
public:
    Element() = default;
    /// Takes over the caller's reference.
    explicit Element(AtspiAccessible *accessible);

    [[nodiscard]] explicit operator bool() const noexcept { return m_accessible != nullptr; }

    [[nodiscard]] std::string name() const;
    [[nodiscard]] std::string role() const; ///< in AT-SPI's words: "push button", "page tab", "table cell"
    [[nodiscard]] std::string description() const;
    [[nodiscard]] std::string text() const; ///< the contents of a field
    [[nodiscard]] double value() const;     ///< of a slider, a spin button or a bar
    [[nodiscard]] unsigned processId() const;
    [[nodiscard]] Rect place() const; ///< on the screen
    [[nodiscard]] Element parent() const;
    [[nodiscard]] std::vector<Element> children() const;

    [[nodiscard]] bool showing() const;
    [[nodiscard]] bool enabled() const;
    [[nodiscard]] bool focusable() const;
    [[nodiscard]] bool focused() const;
    [[nodiscard]] bool selected() const;
    [[nodiscard]] bool checked() const;
    [[nodiscard]] bool active() const; ///< the window that has the keyboard

    /// Does what a click does, through the element's first action. Returns false when it has none or is disabled.
    [[nodiscard]] bool press() const;

    /// Gives it the keyboard. Returns false when it does not take it.
    [[nodiscard]] bool takeFocus() const;
    /// Replaces the contents of a field, as a screen reader's user pastes them: any UTF-8, which keys cannot type.
    [[nodiscard]] bool setText(const std::string &text) const;
    /// Moves a slider or a spin button.
    [[nodiscard]] bool setValue(double value) const;

    /// The first showing element at or below this one that `wanted` accepts, parents before children.
    [[nodiscard]] Element find(const std::function<bool(const Element &)> &wanted) const;
    [[nodiscard]] Element find(const std::string &role, const std::string &name) const;
    /// All of them, in the tree's order.
    [[nodiscard]] std::vector<Element> all(const std::function<bool(const Element &)> &wanted) const;
    [[nodiscard]] std::vector<Element> all(const std::string &role) const;

    /// The tree at and below this element, one line each: role, name, states.
    [[nodiscard]] std::string dump() const;

    [[nodiscard]] AtspiAccessible *handle() const noexcept { return m_accessible.get(); }

private:
    [[nodiscard]] bool state(int state) const;
    void dumpInto(std::string &lines, int depth) const;

    std::shared_ptr<AtspiAccessible> m_accessible;
};

} // namespace quillfen::e2e
