// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "client.h"

#include "desktop.h"
#include "input.h"

#include <algorithm>
#include <stdexcept>

namespace quillfen::e2e {
namespace {

std::vector<std::string> command(const std::vector<std::string> &arguments)
{
    std::vector<std::string> result{QUILLFEN_CLIENT};
    result.insert(result.end(), arguments.begin(), arguments.end());
    return result;
}

Environment variablesWith(const Environment &more)
{
    auto result = Desktop::instance().environment();
    for (const auto &[name, value] : more) {
        result.insert_or_assign(name, value);
    }
    return result;
}

} // namespace

Client::Client(const Environment &variables, const std::vector<std::string> &arguments)
    : m_process(command(arguments), variablesWith(variables), Desktop::instance().folder() / "client.log")
{
    Desktop::instance().forgetEvents();
    const auto isActive = [](const Element &window) { return window.active(); };
    const auto ready = [&] {
        const auto open = windows();
        return !m_process.running() || std::any_of(open.begin(), open.end(), isActive);
    };
    if (!waitFor(ready) || !m_process.running()) {
        giveUp("the client's window did not open");
    }
}

std::vector<Element> Client::windows() const
{
    std::vector<Element> result;
    for (const auto &window : Desktop::instance().application(m_process.id()).children()) {
        if (window.showing()) {
            result.push_back(window);
        }
    }
    return result;
}

Element Client::find(const std::string &role, const std::string &name) const
{
    return find([&](const Element &element) { return element.name() == name && element.role() == role; });
}

Element Client::find(const std::function<bool(const Element &)> &wanted) const
{
    // The newest first: the button of a dialog may have the name of the one that has opened it.
    const auto open = windows();
    for (auto window = open.rbegin(); window != open.rend(); ++window) {
        if (auto found = window->find(wanted)) {
            return found;
        }
    }
    return {};
}

std::vector<Element> Client::all(const std::function<bool(const Element &)> &wanted) const
{
    std::vector<Element> result;
    for (const auto &window : windows()) {
        for (auto &found : window.all(wanted)) {
            result.push_back(std::move(found));
        }
    }
    return result;
}

bool Client::shows(const std::string &text) const
{
    // Asking for contents takes three questions; a name takes one, and is nearly always it.
    return find([&](const Element &element) { return element.name() == text; }) ||
           find([&](const Element &element) { return element.text() == text; });
}

Element Client::focused() const
{
    return find([](const Element &element) { return element.focused(); });
}

Element Client::see(const std::string &role, const std::string &name) const
{
    Element found;
    if (!waitFor([&] { return static_cast<bool>(found = find(role, name)); })) {
        giveUp("no " + role + " \"" + name + '"');
    }
    return found;
}

void Client::seeText(const std::string &text) const
{
    if (!waitFor([&] { return shows(text); })) {
        giveUp("no text \"" + text + '"');
    }
}

void Client::seeNo(const std::string &role, const std::string &name) const
{
    if (!waitFor([&] { return !find(role, name); })) {
        giveUp(role + " \"" + name + "\" is still there");
    }
}

void Client::hear(const std::string &text) const
{
    hearOneOf({text});
}

void Client::hearOneOf(const std::vector<std::string> &texts) const
{
    const auto isTold = [](const std::string &text) { return Desktop::instance().announced(text); };
    if (!waitFor([&] { return std::any_of(texts.begin(), texts.end(), isTold); })) {
        giveUp("nobody said \"" + texts.front() + '"');
    }
}

void Client::press(const std::string &role, const std::string &name) const
{
    if (!see(role, name).press()) {
        giveUp(role + " \"" + name + "\" cannot be pressed");
    }
}

void Client::settle(const Element &element) const
{
    // A dialog that has just opened is still to be placed by the window manager; a click would come before.
    Element window = element;
    for (Element parent = window.parent(); parent && parent.role() != "application"; parent = parent.parent()) {
        window = parent;
    }
    Rect before;
    Clock::time_point since = Clock::now();
    const auto isStill = [&] {
        const Rect now = element.place();
        if (now.x != before.x || now.y != before.y || now.width != before.width || !window.active()) {
            before = now;
            since = Clock::now();
        }
        return Clock::now() - since > std::chrono::milliseconds(150 * slowness);
    };
    if (!waitFor(isStill)) {
        giveUp("the window of \"" + element.name() + "\" does not come to rest");
    }
}

void Client::bringIntoReach(const Element &element) const
{
    // What scrolls may lie beneath what does not: the title block of a board, the foot of a sheet.
    constexpr int edge = 90;
    for (int turn = 0; turn < 60; ++turn) {
        const Rect place = element.place();
        const Rect window = windows().front().place();
        const int middle = place.y + place.height / 2;
        const bool above = middle < window.y + edge;
        const bool below = middle > window.y + window.height - edge;
        if (!above && !below) {
            break;
        }
        turnWheel(place.x + place.width / 2, window.y + window.height / 2, above ? -1 : 1);
        // At the end of its way it does not move: then it is in reach as it is.
        if (!waitFor([&] { return element.place().y != place.y; }, std::chrono::milliseconds(150 * slowness))) {
            break;
        }
    }
}

void Client::click(const std::string &role, const std::string &name) const
{
    const Element element = see(role, name);
    settle(element);
    bringIntoReach(element);
    const Rect place = element.place();
    clickAt(place.x + place.width / 2, place.y + place.height / 2);
}

void Client::fill(const std::string &field, const std::string &text) const
{
    Element element;
    const auto isField = [&](const Element &one) {
        return one.name() == field && (one.role() == "text" || one.role() == "spin button");
    };
    if (!waitFor([&] { return static_cast<bool>(element = find(isField)); })) {
        giveUp("no field \"" + field + '"');
    }
    settle(element);
    bringIntoReach(element);
    const auto isTyped = [](char character) { return character >= ' ' && character <= '~'; };
    if (!std::all_of(text.begin(), text.end(), isTyped)) {
        static_cast<void>(element.setText(text));
    } else {
        const Rect place = element.place();
        clickAt(place.x + place.width / 2, place.y + place.height / 2);
        if (!waitFor([&] { return element.focused(); })) {
            giveUp("a click does not put the keyboard into \"" + field + '"');
        }
        pressKeys("Ctrl+a");
        pressKeys("BackSpace");
        typeText(text);
    }
    // A field for numbers shows their unit behind them.
    if (!waitFor([&] { return element.text() == text || element.text().starts_with(text + ' '); })) {
        giveUp('"' + field + "\" does not take \"" + text + '"');
    }
}

Element Client::picker(const std::string &name) const
{
    Element found;
    const auto isIt = [&](const Element &element) {
        return element.role() == "combo box" && element.description() == name;
    };
    if (!waitFor([&] { return static_cast<bool>(found = find(isIt)); })) {
        giveUp("no picker \"" + name + '"');
    }
    return found;
}

void Client::choose(const std::string &pickerName, const std::string &entry) const
{
    const Element box = picker(pickerName);
    if (box.name() == entry) {
        return;
    }
    // The list is in the tree also while it is closed.
    std::vector<std::string> entries;
    for (const auto &list : box.children()) {
        for (const auto &item : list.children()) {
            entries.push_back(item.name());
        }
    }
    const auto place = std::find(entries.begin(), entries.end(), entry);
    if (place == entries.end() || !box.press()) {
        giveUp("the picker \"" + pickerName + "\" does not offer \"" + entry + '"');
    }
    // Before its list is on the screen, keys choose in the picker itself.
    if (!waitFor([&] { return std::ranges::any_of(box.children(), &Element::showing); })) {
        giveUp("the picker \"" + pickerName + "\" does not open");
    }
    pressKeys("Home");
    for (auto walked = entries.begin(); walked != place; ++walked) {
        pressKeys("Down");
    }
    pressKeys("Return");
    if (!waitFor([&] { return picker(pickerName).name() == entry; })) {
        giveUp("the picker \"" + pickerName + "\" did not take \"" + entry + '"');
    }
}

void Client::tabTo(const std::string &role, const std::string &name) const
{
    const Element wanted = see(role, name);
    std::string walked;
    for (int stop = 0; stop < 80; ++stop) {
        if (wanted.focused()) {
            return;
        }
        const Element before = Desktop::instance().lastFocused();
        walked += "\n  " + before.role() + " \"" + before.name() + '"';
        pressKeys("Tab");
        const auto hasMoved = [&] {
            const Element now = Desktop::instance().lastFocused();
            return wanted.focused() || (now && now.handle() != before.handle());
        };
        if (!waitFor(hasMoved)) {
            break;
        }
    }
    giveUp("Tab does not come by " + role + " \"" + name + "\", but by" + walked);
}

void Client::enter(const std::string &role, const std::string &name) const
{
    tabTo(role, name);
    pressKeys("Return");
}

std::string Client::dump() const
{
    return Desktop::instance().application(m_process.id()).dump();
}

void Client::giveUp(const std::string &what) const
{
    std::string places;
    for (const auto &window : windows()) {
        const Rect place = window.place();
        places += window.role() + " \"" + window.name() + "\": " + std::to_string(place.width) + 'x' +
                  std::to_string(place.height) + '+' + std::to_string(place.x) + '+' + std::to_string(place.y) +
                  (window.active() ? " active\n" : "\n");
    }
    throw std::runtime_error(what + "\n" + dump() + places + describeDisplay() + m_process.output());
}

} // namespace quillfen::e2e
