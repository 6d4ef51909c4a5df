// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "keyfiles.h"
#include "volumerows.h"

#include <QAbstractTableModel>

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace quillfen {

/// The volumes that match the search, in the state's order, as a table.
///
/// It keeps a snapshot of the list (shared, not copied) and one place per row; what a row says is read from the state
/// when it is asked for. `refresh` brings it up to date and announces what differs from what was asked for before: rows
/// that nobody has seen cost nothing. Main thread.
class VolumesTableModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit VolumesTableModel(std::shared_ptr<const AppState> state, QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// What the row says. `row` must be there.
    [[nodiscard]] VolumeRow row(int row) const;
    /// The id of the volume in `row`; none when there is no such row.
    [[nodiscard]] std::optional<std::int64_t> volumeId(int row) const;
    /// The first row of the volume, -1 when it is not shown.
    [[nodiscard]] int rowOf(std::int64_t id) const;

    /// Takes the state as it is now, and shows the volumes whose names contain `query`.
    void refresh(const QString &query);

private:
    struct Shown {
        std::vector<qsizetype> places; ///< of the shown volumes in the list
        std::vector<std::int64_t> ids; ///< of the same
    };

    void take(const Records &volumes, const QString &key);
    [[nodiscard]] Shown find(const Records &volumes, const QString &key);
    void foldNames(const Records &volumes);
    void reset(const Records &volumes, Shown shown);
    void change(const Records &volumes, const Shown &shown, const struct RowDiff &diff);
    void announceChanges();
    [[nodiscard]] VolumeRow read(int row) const;

    std::shared_ptr<const AppState> m_state;
    Records m_volumes;
    Shown m_shown;
    QString m_key;                ///< the search, folded
    Records m_folded;             ///< the list whose names stand folded in m_names
    std::vector<QString> m_names; ///< empty until somebody searches
    mutable KeyFiles m_keyFiles;
    mutable std::unordered_map<int, VolumeRow> m_seen; ///< what was told about rows, for `announceChanges`
    mutable bool m_forgotten = false;                  ///< more was told than m_seen holds
};

} // namespace quillfen
