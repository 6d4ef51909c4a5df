// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/json.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillfen {

/// The in-process notification centre: a name and a map of values, to whoever listens now. Main thread only.
class Notifications final {
    struct Entry {
        std::string name;
        std::function<void(const json::object &)> listener;
    };

public:
    using Listener = std::function<void(const json::object &)>;

    /// Ends its subscription when it goes; safe after the centre is gone.
    class Subscription final {
    public:
        Subscription() = default;

    private:
        friend class Notifications;
        explicit Subscription(std::shared_ptr<Entry> entry) : m_entry(std::move(entry)) {}
        std::shared_ptr<Entry> m_entry;
    };

    /// The name under which boards ask the main window to show a section: {"section", "volume"}.
    static constexpr std::string_view navigate = "io.quillfen.navigate";

    /// Calls `listener` for every later post of that name, for as long as the subscription is kept.
    [[nodiscard]] Subscription listen(std::string_view name, Listener listener);

    /// Tells everyone who listens to `name`, in the order of their subscriptions. A listener may end any subscription,
    /// its own included, and may listen or post anew; who comes in during a post is told from the next one on.
    void post(std::string_view name, const json::object &values) const;

private:
    std::vector<std::weak_ptr<Entry>> m_entries;
};

} // namespace quillfen
