// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace quillfen::e2e {

/// What a program wants shown.
struct Notification {
    unsigned id = 0;
    std::string program;
    std::string icon;
    std::string summary;
    std::string body;
    std::vector<std::string> actions;
    std::string hints; ///< as GVariant writes them, in the order in which they came
};

/// The desktop's notifications (org.freedesktop.Notifications), as long as this object lives. It shows nothing: tests
/// read and click in its user's place.
class NotificationServer final {
public:
    NotificationServer();
    ~NotificationServer();
    NotificationServer(const NotificationServer &) = delete;
    NotificationServer &operator=(const NotificationServer &) = delete;

    /// How often anything was asked of it.
    [[nodiscard]] int calls() const noexcept;
    /// What stands now, oldest first.
    [[nodiscard]] const std::vector<Notification> &standing() const noexcept;
    /// Clicks one, which goes by that.
    void click(unsigned id, const std::string &activationToken);

private:
    class Service;

    std::unique_ptr<Service> m_service;
};

} // namespace quillfen::e2e
