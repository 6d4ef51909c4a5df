// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "element.h"

#include <string>

namespace quillfen::e2e {

/// Presses and releases keys as a hand does, through the display: "Tab", "Ctrl+1", "Shift+Tab", "Escape". Keys have the
/// names that the X window system gives them. A window that is just coming up is given the time to take the keyboard.
void pressKeys(const std::string &chord);

/// Types a text of printable ASCII, key by key.
void typeText(const std::string &text);

/// Moves the pointer to a place on the screen and clicks the left button.
void clickAt(int x, int y);

/// Turns the wheel over a place on the screen, down when `clicks` is positive.
void turnWheel(int x, int y, int clicks);

/// The left button, pressed at a place on the screen and held until this object goes. What is being dragged answers
/// when it can: move on for as long as it has not.
class Drag final {
public:
    Drag(int x, int y);
    ~Drag();
    Drag(const Drag &) = delete;
    Drag &operator=(const Drag &) = delete;

    void moveBy(int dx, int dy);

private:
    int m_x;
    int m_y;
};

/// Where the window manager has the first window at this moment. The window's program is only told when a drag is over.
[[nodiscard]] Rect windowOnScreen();

/// The windows as the display has them, the lowest first, and where keyboard and pointer are: what to look at when the
/// program and the display are not of one mind.
[[nodiscard]] std::string describeDisplay();

} // namespace quillfen::e2e
