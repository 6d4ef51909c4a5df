// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/desktopnotifications.h"
#include "state/published.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <memory>
#include <set>

namespace quillfen {

class AppState;
struct ActivityEntry;

/// Tells on the desktop how an operation ended that took long, as long as no window is seen that tells it.
///
/// A few outcomes are told one by one; what comes on top of these is counted in one more. When a window is seen again,
/// what still stands is taken away. Nothing is asked of the desktop before there is something to tell.
class Notifier final : public QObject {
    Q_OBJECT

public:
    using Make = std::function<std::unique_ptr<DesktopNotifications>()>;

    /// How many outcomes stand beside each other.
    static constexpr std::size_t mostSingle = 3;

    /// `isSeen` says whether the user sees a window that tells outcomes. What has ended already is not told.
    Notifier(std::shared_ptr<AppState> state, std::function<bool()> isSeen, Make make = makeDesktopNotifications,
             QObject *parent = nullptr);
    ~Notifier() override;

Q_SIGNALS:
    /// Somebody clicked a notification; the token, which may be empty, lets a window come to the front for it.
    void openRequested(const QString &activationToken);

private:
    /// What is told in one notification for want of room.
    struct Further {
        qint64 ended = 0;
        qint64 failed = 0;
    };

    void lookForOutcomes();
    void tell(const ActivityEntry &entry);
    [[nodiscard]] bool reachDesktop();
    void forget(int number);
    void windowCame();

    std::shared_ptr<AppState> m_state;
    std::function<bool()> m_isSeen;
    Make m_make;
    std::unique_ptr<DesktopNotifications> m_desktop; ///< made for the first outcome
    std::uint64_t m_lastEntry = 0;                   ///< the last that was looked at
    int m_lastNumber = 0;
    std::set<int> m_single; ///< the numbers of those that stand
    Further m_further;
    Observer m_observer;
};

} // namespace quillfen
