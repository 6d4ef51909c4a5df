// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/notifications.h"

namespace quillfen {

Notifications::Subscription Notifications::listen(std::string_view name, Listener listener)
{
    // Whoever left has left an empty place. Tidying here keeps the list as long as the number of listeners.
    std::erase_if(m_entries, [](const std::weak_ptr<Entry> &entry) { return entry.expired(); });

    auto entry = std::make_shared<Entry>(Entry{std::string(name), std::move(listener)});
    m_entries.push_back(entry);
    return Subscription(std::move(entry));
}

void Notifications::post(std::string_view name, const json::object &values) const
{
    // A listener may change the list, or end the centre itself: the walk goes over a copy.
    const std::vector<std::weak_ptr<Entry>> entries = m_entries;
    for (const std::weak_ptr<Entry> &place : entries) {
        const std::shared_ptr<Entry> entry = place.lock();
        if (entry != nullptr && entry->name == name) {
            entry->listener(values);
        }
    }
}

} // namespace quillfen
