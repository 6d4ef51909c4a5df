// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/timetravel/timetravelrows.h"
#include "state/action.h"
#include "state/appstate.h"

#include <QCoreApplication>
#include <QCoroTask>

#include <cstdint>
#include <memory>
#include <optional>

namespace quillfen {

/// What the Time travel board shows of one volume's past, and what it can do with it. Work that was started for one
/// volume goes on, and ends with its notice, when another is chosen or the board has gone. Main thread.
class TimeTravelModel final : public std::enable_shared_from_this<TimeTravelModel> {
    Q_DECLARE_TR_FUNCTIONS(TimeTravelModel)

public:
    explicit TimeTravelModel(std::shared_ptr<AppState> state);

    Published<std::optional<std::int64_t>> volumeId; ///< the volume that was chosen
    Published<Instant> at;                           ///< the second that was chosen; an hour ago to begin with
    Published<RestorePoints> points;
    Published<Records> views;
    Published<Records> recoveries; ///< the new volumes in the making
    Published<bool> loading{false};

    [[nodiscard]] const std::shared_ptr<AppState> &state() const noexcept { return m_state; }

    /// The volume that is shown: the chosen one, or the first when there is no such volume (any more).
    [[nodiscard]] std::optional<PastVolume> volume() const;

    /// The volume whose lists these are: another than the one that is shown for as long as it takes to notice.
    [[nodiscard]] const std::optional<PastVolume> &loadedVolume() const noexcept { return m_loaded; }

    /// Whether its points and its views have been asked for already; a million points take their time.
    [[nodiscard]] bool pointsKnown() const noexcept { return m_pointsKnown; }
    [[nodiscard]] bool viewsKnown() const noexcept { return m_viewsKnown; }

    /// Reads the lists of the volume that is shown, one after the other. A list that cannot be read becomes empty,
    /// without a word. What comes after a later load has begun is dropped. Nothing without a volume.
    QCoro::Task<> load();
    /// Reads the new volumes in the making again while one of them is still being copied, so that it can be watched.
    QCoro::Task<> watchCopies();

    /// `timestamp` is the moment as everything says it: the notice, the request, and the view that comes of it.
    QCoro::Task<> openView(PastVolume volume, QString timestamp, std::optional<QString> name);
    QCoro::Task<> releaseView(PastVolume volume, QString name);
    QCoro::Task<> mountView(PastVolume volume, QString name);
    /// Has a writable copy of that second prepared.
    QCoro::Task<> newVolume(PastVolume volume, QString timestamp, QString name);
    QCoro::Task<> promote(std::int64_t recovery, QString newName);
    QCoro::Task<> discard(std::int64_t recovery);

private:
    /// Whether the state is read afresh after an action, before the board's own lists are.
    enum class Refresh { Never, AfterSuccess, Always };

    QCoro::Task<> run(Action action, Refresh refresh);
    [[nodiscard]] bool isCopying() const;
    void follow(const std::optional<PastVolume> &volume);

    std::shared_ptr<AppState> m_state;
    std::optional<PastVolume> m_loaded;
    bool m_pointsKnown = false;
    bool m_viewsKnown = false;
    std::uint64_t m_generation = 0; ///< grows with every load, so that late answers can be told
};

} // namespace quillfen
