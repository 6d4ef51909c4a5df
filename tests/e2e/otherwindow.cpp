// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "otherwindow.h"

#include "input.h"
#include "waiting.h"

#include <stdexcept>

#include <X11/Xlib.h>

namespace quillfen::e2e {

class OtherWindow::Connection final {
public:
    Connection() : m_display(XOpenDisplay(nullptr), XCloseDisplay)
    {
        if (!m_display) {
            throw std::runtime_error("no display for another window");
        }
        m_begins = XInternAtom(m_display.get(), "_NET_STARTUP_INFO_BEGIN", False);
        m_goesOn = XInternAtom(m_display.get(), "_NET_STARTUP_INFO", False);
        const Window root = DefaultRootWindow(m_display.get());
        XSelectInput(m_display.get(), root, PropertyChangeMask);
        const Window window = XCreateSimpleWindow(m_display.get(), root, 0, 0, 300, 200, 0, 0, 0);
        XStoreName(m_display.get(), window, "Other");
        XSelectInput(m_display.get(), window, KeyPressMask | FocusChangeMask);
        XMapWindow(m_display.get(), window);
        XFlush(m_display.get());
    }

    void read()
    {
        while (XPending(m_display.get()) > 0) {
            XEvent event{};
            XNextEvent(m_display.get(), &event);
            if (event.type == FocusIn || event.type == FocusOut) {
                hasKeyboard = event.type == FocusIn;
            } else if (event.type == KeyPress) {
                typedAt = event.xkey.time;
            } else if (event.type == ClientMessage) {
                append(event.xclient);
            }
        }
    }

    bool hasKeyboard = false;
    unsigned long typedAt = 0;
    std::string told;

private:
    void append(const XClientMessageEvent &message)
    {
        if (message.message_type != m_begins && message.message_type != m_goesOn) {
            return;
        }
        if (message.message_type == m_begins) {
            m_coming.clear();
        }
        m_coming.append(message.data.b, sizeof message.data.b);
        if (const auto end = m_coming.find('\0'); end != std::string::npos) {
            told = m_coming.substr(0, end);
        }
    }

    std::unique_ptr<Display, int (*)(Display *)> m_display;
    Atom m_begins = None;
    Atom m_goesOn = None;
    std::string m_coming;
};

OtherWindow::OtherWindow() : m_connection(std::make_unique<Connection>())
{
    const auto hasKeyboard = [this] {
        m_connection->read();
        return m_connection->hasKeyboard;
    };
    if (!waitFor(hasKeyboard)) {
        throw std::runtime_error("the other window does not get the keyboard");
    }
}

OtherWindow::~OtherWindow() = default;

unsigned long OtherWindow::type()
{
    m_connection->typedAt = 0;
    typeText("x");
    const auto arrived = [this] {
        m_connection->read();
        return m_connection->typedAt != 0;
    };
    if (!waitFor(arrived)) {
        throw std::runtime_error("no key comes to the other window");
    }
    return m_connection->typedAt;
}

std::string OtherWindow::heard()
{
    m_connection->read();
    return m_connection->told;
}

} // namespace quillfen::e2e
