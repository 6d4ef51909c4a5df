// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/rpc.h"
#include "state/activity.h"
#include "state/notifications.h"
#include "state/pauses.h"
#include "state/published.h"
#include "state/restorepoints.h"
#include "state/timing.h"
#include "state/values.h"
#include "state/worker.h"

#include <QColor>
#include <QCoreApplication>
#include <QCoroTask>
#include <QHash>
#include <QMap>
#include <QTimer>

#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace quillfen {

/// How far a volume's data is offsite, in words.
struct OffsiteState {
    enum class Kind { Unknown, Synced, Uploading, Connecting, NotStarted };
    Kind kind = Kind::Unknown;
    bool complete = false; ///< the label begins with "100%"
    QString label;
    QColor colour;
};

/// Where a volume's appliance runs, in words.
struct ApplianceState {
    QString label;
    QColor colour;
    bool startable = false; ///< its container is on this computer and does not run
    bool running = false;   ///< here, or on another computer
};

/// The one observable state of the program: what the agent last said, and what the user has chosen.
///
/// Main thread only. Held by shared_ptr: its coroutines keep it until their calls have completed, callbacks from other
/// threads hold it weakly.
class AppState final : public std::enable_shared_from_this<AppState> {
    Q_DECLARE_TR_FUNCTIONS(AppState)

public:
    using Statuses = std::unordered_map<std::int64_t, Record>;

    [[nodiscard]] static std::shared_ptr<AppState> create(const Timing &timing = {});
    ~AppState();
    AppState(const AppState &) = delete;
    AppState &operator=(const AppState &) = delete;

    Published<bool> connected{false};
    Published<std::optional<QString>> agentError;
    Published<Record> auth;
    Published<Record> vm;
    Published<Records> volumes;
    Published<Records> mounts;
    Published<Statuses> statuses;
    Published<Record> account;
    Published<std::optional<QString>> toast;
    Published<bool> busy{false}; ///< a long operation runs: the ticker holds still
    Published<QString> pendingEnrol;
    Published<std::optional<std::int64_t>> selectedVolume;
    Published<QString> agentVersion;
    Published<Records> orphans;
    Published<QMap<QString, QString>> localAppliances; ///< container to status
    Published<bool> showNewVolume{false};
    Published<Records> readyCopies;
    Activity activity; ///< what is being done, and what was said and done in this run

    [[nodiscard]] RPC &rpc() noexcept { return m_rpc; }
    [[nodiscard]] Notifications &notifications() noexcept { return m_notifications; }
    [[nodiscard]] const Timing &timing() const noexcept { return m_timing; }

    /// Opens the connection and starts what depends on it; on failure schedules the next attempt by itself. Does
    /// nothing while connected.
    void connect();
    /// Ends the connection for good: no more attempts, waiting calls fail, pauses end. For the end of the program.
    void shutDown();
    /// (Re)starts the refresh timer.
    void startTicker();
    /// Applies a pushed event; unknown names are ignored.
    void event(const std::string &name, std::optional<json::value> data);
    /// Shows a notice for eight seconds, and keeps it in the activity.
    void show(const QString &message);
    /// The same for the outcome of a call, which the activity tells with the call.
    void showOutcome(const QString &message);

    /// Asks the agent for everything the views show, one call at a time. A call that fails leaves what it would have
    /// set; the end of the connection ends the refresh, the next connection begins with its own.
    QCoro::Task<> refresh();
    QCoro::Task<> refreshStatuses();
    QCoro::Task<> refreshCopies();

    /// Starts a volume's appliance in the engine on this computer and mounts the volume, telling by toasts how it goes.
    QCoro::Task<> deployAndMount(std::int64_t id, QString name);
    /// A volume's restore points in the order of their times. Throws RPCError.
    QCoro::Task<RestorePoints> restorePoints(std::int64_t volumeId);

    [[nodiscard]] bool signedIn() const;
    /// The agent has answered who is signed in at least once since the program started.
    [[nodiscard]] bool authKnown() const noexcept { return m_authKnown; }
    [[nodiscard]] bool isAdmin() const;
    [[nodiscard]] bool engineRunning() const;
    [[nodiscard]] static QString appVersion();
    /// What a program built as `version` calls itself.
    [[nodiscard]] static QString versionOrDev(const QString &version);
    [[nodiscard]] static QString keyPath(const Record &volume);

    [[nodiscard]] QString planName() const;
    [[nodiscard]] std::int64_t capacityBytes() const;
    [[nodiscard]] std::int64_t allocatedBytes() const;
    [[nodiscard]] OffsiteState offsiteState(const Record &volume) const;
    [[nodiscard]] ApplianceState applianceState(const Record &volume) const;
    [[nodiscard]] bool allSynced() const;
    [[nodiscard]] std::optional<QString> mountOf(const QString &name) const;

private:
    /// What is derived from all volumes together, kept so that no render has to walk ten thousand of them.
    struct Totals {
        std::uint64_t volumesVersion = 0;
        std::uint64_t statusesVersion = 0;
        bool known = false;
        std::int64_t allocated = 0;
        std::int64_t unsettled = 0;    ///< volumes that are uploading or connecting
        std::vector<std::int64_t> ids; ///< of the volumes, ascending
    };
    /// `mounts` by name, the first of each.
    struct MountIndex {
        std::uint64_t version = 0;
        bool known = false;
        QHash<QString, QString> mountpoints;
    };

    explicit AppState(const Timing &timing);
    void listen();
    void lost(const QString &message);
    void retryLater();
    void tick();
    QCoro::Task<> follow();
    QCoro::Task<std::optional<json::value>> answerOrNothing(std::string method, json::object params);
    void setStatus(std::int64_t id, Record status);
    [[nodiscard]] const Record &statusOf(std::int64_t id) const;
    [[nodiscard]] bool totalsHold() const;
    [[nodiscard]] const Totals &totals() const;

    RPC m_rpc;
    Notifications m_notifications;
    Timing m_timing;
    QObject m_context; ///< what one-shot timers hang on, so that none fires for a state that is gone
    QTimer m_ticker;
    Pauses m_pauses;
    Worker m_worker{m_rpc.mainQueue()};
    std::uint64_t m_connection = 0; ///< grows with every connection made and lost: work compares it after each wait
    bool m_retrying = false;
    bool m_authKnown = false;
    bool m_shutDown = false;
    mutable Totals m_totals;
    mutable MountIndex m_mountIndex;
};

} // namespace quillfen
