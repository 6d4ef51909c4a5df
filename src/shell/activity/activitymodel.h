// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/activity/activitywords.h"

#include <QAbstractListModel>

#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace quillfen {

/// The activity as rows: what runs, the newest first, and below it the past, the newest first.
///
/// It keeps a number per row and reads what the row says when asked; `sync` takes over what came and lets go what gave
/// way, at a cost that depends on these alone. Between an announcement of the activity and `sync` a row may have lost
/// its entry. Main thread.
class ActivityModel final : public QAbstractListModel {
    Q_OBJECT

public:
    /// Which call or entry a row stands for.
    struct Key {
        bool runs = false;
        std::uint64_t number = 0;

        bool operator==(const Key &) const = default;
    };

    /// `activity` must outlive the model.
    explicit ActivityModel(const Activity &activity, QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

    [[nodiscard]] int runningCount() const noexcept { return static_cast<int>(m_running.size()); }
    /// What the row says; none when there is nothing any more that it could say.
    [[nodiscard]] std::optional<ActivityRow> row(int row) const;
    /// `row` must be there.
    [[nodiscard]] Key key(int row) const;
    /// -1 when it is not shown.
    [[nodiscard]] int rowOf(const Key &key) const;
    /// Null when it is not there any more.
    [[nodiscard]] const RunningCall *call(const Key &key) const;
    [[nodiscard]] const ActivityEntry *entry(const Key &key) const;

    /// Takes over what happened since.
    void sync();
    /// Shows only what has `search` in its words or its method, and of the past only the failures where `problemsOnly`.
    void setFilter(const QString &search, bool problemsOnly);

private:
    [[nodiscard]] bool accepts(const RunningCall &call) const;
    [[nodiscard]] bool accepts(const ActivityEntry &entry) const;
    void syncRunning();
    void letGo();
    void takeOver();
    void foldTo(std::uint64_t last);
    [[nodiscard]] std::uint64_t oldest() const;

    const Activity &m_activity;
    std::vector<std::uint64_t> m_running;
    std::deque<std::uint64_t> m_past; ///< the oldest first
    std::uint64_t m_newest = 0;       ///< the last that was taken over, shown or not
    std::uint64_t m_runningVersion = 0;
    QString m_search; ///< folded
    bool m_problemsOnly = false;
    std::deque<QString> m_keys;   ///< what a search looks at, of each entry since …
    std::uint64_t m_firstKey = 1; ///< … this one; made for the first search
};

} // namespace quillfen
