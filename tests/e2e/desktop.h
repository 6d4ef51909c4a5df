// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "element.h"
#include "process.h"

#include <deque>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace quillfen::e2e {

/// What the accessibility bus told: "object:state-changed:focused" and the like, and who it was about.
struct Event {
    std::string type;
    bool on = false; ///< for a change of state: whether it holds now
    Element source;
};

/// A whole desktop for one test program: an X display in memory, a session bus with the accessibility bus behind it, a
/// window manager, and folders that go with it. One per process: the accessibility library knows one bus.
class Desktop final {
public:
    /// Starts all of it; throws when a part does not come up.
    Desktop();
    ~Desktop();
    Desktop(const Desktop &) = delete;
    Desktop &operator=(const Desktop &) = delete;

    /// The one that runs.
    [[nodiscard]] static Desktop &instance();

    [[nodiscard]] const std::filesystem::path &folder() const noexcept { return m_folder; }
    [[nodiscard]] std::filesystem::path home() const { return m_folder / "home"; }
    [[nodiscard]] std::filesystem::path agentSocket() const { return m_folder / "agent.sock"; }
    /// What programs on this desktop find in their environment.
    [[nodiscard]] Environment environment() const;

    /// The accessibility tree of a program; nothing until it has joined.
    [[nodiscard]] Element application(pid_t process) const;
    /// Waits, as a person does before typing, until the window that has come up last has the keyboard. Not for long:
    /// there may be none that takes it.
    void awaitKeyboard() const;
    /// Whether a screen reader was given a reason to speak this text by itself: an alert appeared with it or changed to
    /// it.
    [[nodiscard]] bool announced(const std::string &text);
    /// The element that the keyboard went to last; nothing while it has not moved.
    [[nodiscard]] Element lastFocused() const;
    /// From here on only what comes is told.
    void forgetEvents();

private:
    class Listener;

    void receive(Event event);
    void readAlert(const Element &element);
    void start(const std::string &name, const std::vector<std::string> &command);
    void startDisplay();
    void startBus();
    void startWindowManager();

    std::filesystem::path m_folder;
    std::string m_display;
    std::vector<std::unique_ptr<Process>> m_processes;
    std::unique_ptr<Listener> m_listener;
    std::set<std::string> m_told; ///< by alerts
    std::size_t m_read = 0;       ///< events that have been looked through for alerts
    std::deque<Event> m_events;   ///< oldest first; grows during any question to a program, also while it is read
};

} // namespace quillfen::e2e
