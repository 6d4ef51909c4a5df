// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "input.h"

#include "desktop.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace quillfen::e2e {
namespace {

Display *display()
{
    // Never closed: the display is gone before static objects are, and saying goodbye to it would end the process.
    static Display *const connection = XOpenDisplay(nullptr);
    if (!connection) {
        throw std::runtime_error("no display to send keys to");
    }
    return connection;
}

KeySym keyOf(const std::string &name)
{
    if (name == "Ctrl") {
        return XK_Control_L;
    }
    if (name == "Shift") {
        return XK_Shift_L;
    }
    if (name == "Alt") {
        return XK_Alt_L;
    }
    const KeySym key = XStringToKeysym(name.c_str());
    if (key == NoSymbol) {
        throw std::invalid_argument("no key is called " + name);
    }
    return key;
}

void send(KeySym key, bool down)
{
    XTestFakeKeyEvent(display(), XKeysymToKeycode(display(), key), down ? True : False, CurrentTime);
    XSync(display(), False);
}

void tap(KeySym key)
{
    const bool shifted = XkbKeycodeToKeysym(display(), XKeysymToKeycode(display(), key), 0, 0) != key;
    if (shifted) {
        send(XK_Shift_L, true);
    }
    send(key, true);
    send(key, false);
    if (shifted) {
        send(XK_Shift_L, false);
    }
}

void movePointer(int x, int y)
{
    XTestFakeMotionEvent(display(), -1, x, y, CurrentTime);
    XSync(display(), False);
}

void button(bool down, unsigned number = 1)
{
    XTestFakeButtonEvent(display(), number, down ? True : False, CurrentTime);
    XSync(display(), False);
}

void describe(Window window, int depth, std::string &lines)
{
    XWindowAttributes attributes{};
    Window child = None;
    int x = 0;
    int y = 0;
    if (XGetWindowAttributes(display(), window, &attributes) == 0 || attributes.map_state != IsViewable) {
        return;
    }
    XTranslateCoordinates(display(), window, DefaultRootWindow(display()), 0, 0, &x, &y, &child);
    lines += std::string(static_cast<std::size_t>(depth) * 2, ' ') + std::to_string(window) + ": " +
             std::to_string(attributes.width) + 'x' + std::to_string(attributes.height) + '+' + std::to_string(x) +
             '+' + std::to_string(y) + '\n';
    Window root = None;
    Window parent = None;
    Window *windows = nullptr;
    unsigned count = 0;
    XQueryTree(display(), window, &root, &parent, &windows, &count);
    for (unsigned index = 0; index < count; ++index) {
        describe(windows[index], depth + 1, lines);
    }
    XFree(windows);
}

} // namespace

void pressKeys(const std::string &chord)
{
    Desktop::instance().awaitKeyboard();
    std::vector<KeySym> keys;
    for (std::size_t start = 0; start < chord.size();) {
        const std::size_t end = std::min(chord.find('+', start), chord.size());
        keys.push_back(keyOf(chord.substr(start, end - start)));
        start = end + 1;
    }
    for (auto key = keys.begin(); key != keys.end(); ++key) {
        send(*key, true);
    }
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        send(*key, false);
    }
}

void typeText(const std::string &text)
{
    Desktop::instance().awaitKeyboard();
    for (const char character : text) {
        tap(static_cast<KeySym>(character)); // the key symbols of printable ASCII are its codes
    }
}

void clickAt(int x, int y)
{
    movePointer(x, y);
    button(true);
    button(false);
}

void turnWheel(int x, int y, int clicks)
{
    constexpr unsigned up = 4;
    constexpr unsigned down = 5;
    movePointer(x, y);
    for (int click = 0; click != clicks; click += clicks > 0 ? 1 : -1) {
        button(true, clicks > 0 ? down : up);
        button(false, clicks > 0 ? down : up);
    }
}

Drag::Drag(int x, int y) : m_x(x), m_y(y)
{
    movePointer(x, y);
    button(true);
}

Drag::~Drag()
{
    button(false);
}

void Drag::moveBy(int dx, int dy)
{
    m_x += dx;
    m_y += dy;
    movePointer(m_x, m_y);
}

Rect windowOnScreen()
{
    const Window root = DefaultRootWindow(display());
    const Atom list = XInternAtom(display(), "_NET_CLIENT_LIST", False);
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char *value = nullptr;
    XGetWindowProperty(display(), root, list, 0, 1, False, XA_WINDOW, &type, &format, &count, &left, &value);
    const std::unique_ptr<unsigned char, int (*)(void *)> windows(value, XFree);
    if (count == 0) {
        return {};
    }
    const Window window = *reinterpret_cast<const Window *>(windows.get());
    Window child = None;
    Rect result;
    XWindowAttributes attributes{};
    XTranslateCoordinates(display(), window, root, 0, 0, &result.x, &result.y, &child);
    XGetWindowAttributes(display(), window, &attributes);
    result.width = attributes.width;
    result.height = attributes.height;
    return result;
}

std::string describeDisplay()
{
    // A window may go while it is asked about.
    const auto before = XSetErrorHandler([](Display *, XErrorEvent *) { return 0; });
    Window root = DefaultRootWindow(display());
    Window parent = None;
    Window *windows = nullptr;
    unsigned count = 0;
    XQueryTree(display(), root, &root, &parent, &windows, &count);
    std::string lines;
    for (unsigned index = 0; index < count; ++index) {
        describe(windows[index], 0, lines);
    }
    XFree(windows);
    Window focus = None;
    int revert = 0;
    XGetInputFocus(display(), &focus, &revert);
    Window under = None;
    int x = 0;
    int y = 0;
    int inX = 0;
    int inY = 0;
    unsigned buttons = 0;
    XQueryPointer(display(), root, &root, &under, &x, &y, &inX, &inY, &buttons);
    XSetErrorHandler(before);
    return lines + "keyboard in " + std::to_string(focus) + ", pointer over " + std::to_string(under) + " at " +
           std::to_string(x) + ',' + std::to_string(y) + " buttons " + std::to_string(buttons) + '\n';
}

} // namespace quillfen::e2e
