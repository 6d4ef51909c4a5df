// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "client.h"

#include "desktop.h"

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
    for (const auto &window : windows()) {
        if (auto found = window.find(wanted)) {
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
    return static_cast<bool>(
        find([&](const Element &element) { return element.name() == text || element.text() == text; }));
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

void Client::press(const std::string &role, const std::string &name) const
{
    if (!see(role, name).press()) {
        giveUp(role + " \"" + name + "\" cannot be pressed");
    }
}

std::string Client::dump() const
{
    return Desktop::instance().application(m_process.id()).dump();
}

void Client::giveUp(const std::string &what) const
{
    throw std::runtime_error(what + "\n" + dump() + m_process.output());
}

} // namespace quillfen::e2e
