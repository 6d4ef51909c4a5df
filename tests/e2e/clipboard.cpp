// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "clipboard.h"

#include "waiting.h"

#include <memory>
#include <stdexcept>

#include <X11/Xatom.h>
#include <X11/Xlib.h>

namespace quillfen::e2e {
namespace {

constexpr auto answerTime = std::chrono::seconds(5);

/// One question to the owner of the clipboard (ICCCM 2.4), with a connection and a window of its own to be answered at.
class Question final {
public:
    Question() : m_display(XOpenDisplay(nullptr), XCloseDisplay)
    {
        if (!m_display) {
            throw std::runtime_error("no display to ask for the clipboard");
        }
        m_window = XCreateSimpleWindow(m_display.get(), DefaultRootWindow(m_display.get()), 0, 0, 1, 1, 0, 0, 0);
        m_place = atom("QUILLFEN_ANSWER");
    }

    [[nodiscard]] Atom atom(const std::string &name) const { return XInternAtom(m_display.get(), name.c_str(), False); }

    [[nodiscard]] std::string nameOf(Atom value) const
    {
        const std::unique_ptr<char, int (*)(void *)> name(XGetAtomName(m_display.get(), value), XFree);
        return name ? name.get() : "";
    }

    /// The bytes of the answer; atoms come as an array of `Atom`. Nothing when there is no owner or no such form.
    [[nodiscard]] std::string ask(const std::string &type)
    {
        XConvertSelection(m_display.get(), atom("CLIPBOARD"), atom(type), m_place, m_window, CurrentTime);
        XEvent event{};
        const auto answered = [&] {
            return XCheckTypedWindowEvent(m_display.get(), m_window, SelectionNotify, &event) != False;
        };
        return waitFor(answered, answerTime) && event.xselection.property != None ? contents() : std::string();
    }

private:
    [[nodiscard]] std::string contents() const
    {
        constexpr long most = 1L << 20; // in units of four bytes
        Atom type = None;
        int format = 0;
        unsigned long count = 0;
        unsigned long left = 0;
        unsigned char *value = nullptr;
        XGetWindowProperty(m_display.get(), m_window, m_place, 0, most, True, AnyPropertyType, &type, &format, &count,
                           &left, &value);
        const std::unique_ptr<unsigned char, int (*)(void *)> bytes(value, XFree);
        // The library widens items of 32 bits to longs.
        const std::size_t width = format == 32 ? sizeof(long) : static_cast<std::size_t>(format) / 8;
        return bytes ? std::string(reinterpret_cast<const char *>(bytes.get()), count * width) : std::string();
    }

    std::unique_ptr<Display, int (*)(Display *)> m_display;
    Window m_window = None;
    Atom m_place = None;
};

} // namespace

std::string clipboardText()
{
    return clipboardData("UTF8_STRING");
}

std::vector<std::string> clipboardTypes()
{
    Question question;
    const std::string answer = question.ask("TARGETS");
    const auto *const atoms = reinterpret_cast<const Atom *>(answer.data());
    std::vector<std::string> result;
    for (std::size_t index = 0; index < answer.size() / sizeof(Atom); ++index) {
        result.push_back(question.nameOf(atoms[index]));
    }
    return result;
}

std::string clipboardData(const std::string &type)
{
    return Question().ask(type);
}

} // namespace quillfen::e2e
