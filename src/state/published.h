// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTimer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <utility>
#include <vector>

namespace quillfen {

class Observer;

/// What every published field has in common: a list of observers who are told before the value changes.
class PublishedBase {
public:
    PublishedBase() = default;
    PublishedBase(const PublishedBase &) = delete;
    PublishedBase &operator=(const PublishedBase &) = delete;

    /// Counts the announcements: as long as it stands, so does whatever was derived from the value.
    [[nodiscard]] std::uint64_t version() const noexcept { return m_version; }

protected:
    ~PublishedBase();
    void willChange();

private:
    friend class Observer;
    mutable std::vector<Observer *> m_observers;
    std::uint64_t m_version = 0;
};

/// A field of the state that announces each assignment before it happens. Main thread only.
///
/// Reading is a call, `state.volumes()`; writing is an assignment, `state.busy = true`.
template <typename T>
class Published final : public PublishedBase {
public:
    Published() = default;
    explicit Published(T initial) : m_value(std::move(initial)) {}

    [[nodiscard]] const T &operator()() const noexcept { return m_value; }

    Published &operator=(T value)
    {
        willChange();
        m_value = std::move(value);
        return *this;
    }

    /// Changes a part of a large value in place: `statuses.update([&](auto &map) { … })`.
    template <typename Change>
    void update(Change &&change)
    {
        willChange();
        std::forward<Change>(change)(m_value);
    }

private:
    T m_value{};
};

/// Calls `render` once for any number of announcements within a frame: at once after a pause, later in a burst.
///
/// "At once" is the next turn of the event loop, when the announced values have come in. Owned by the view whose render
/// it calls; it ends its subscriptions with it, a render on its way included. A field that dies first is forgotten.
class Observer final {
public:
    Observer(std::initializer_list<const PublishedBase *> fields, std::function<void()> render,
             std::chrono::milliseconds frame = std::chrono::milliseconds(16));
    ~Observer();
    Observer(const Observer &) = delete;
    Observer &operator=(const Observer &) = delete;

private:
    friend class PublishedBase;
    void announced();
    void forget(const PublishedBase *field);
    void render();

    std::vector<const PublishedBase *> m_fields;
    std::function<void()> m_render;
    std::chrono::milliseconds m_frame;
    std::chrono::steady_clock::time_point m_nextFrame{};
    QTimer m_timer;
};

} // namespace quillfen
