// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QSet>
#include <QString>

#include <cstdint>
#include <memory>

namespace quillfen {

/// What the card of a volume can do. One model follows the selection from volume to volume; what was started for one
/// goes on, and ends with its notice, when another is chosen. Main thread.
class VolumeSectionModel final : public std::enable_shared_from_this<VolumeSectionModel> {
    Q_DECLARE_TR_FUNCTIONS(VolumeSectionModel)

public:
    explicit VolumeSectionModel(std::shared_ptr<AppState> state);

    Published<std::int64_t> points{0};      ///< the number of restore points
    Published<QString> oldest;              ///< the short date of the first, empty while there is none
    Published<QSet<std::int64_t>> mounting; ///< volumes whose mount was started from here and is running

    [[nodiscard]] AppState &state() noexcept { return *m_state; }

    /// Follows the selection: reads the restore points of `id`. An answer that comes after another volume was chosen is
    /// dropped.
    QCoro::Task<> show(std::int64_t id);

    QCoro::Task<> startAppliance(std::int64_t id, QString name);
    QCoro::Task<> mount(std::int64_t id, QString name);
    QCoro::Task<> unmount(std::int64_t id, QString name);
    /// `from` and `to` in whole GB.
    QCoro::Task<> resize(std::int64_t id, QString name, std::int64_t from, std::int64_t to);
    QCoro::Task<> remove(std::int64_t id, QString name);

    /// Puts the key on the clipboard; a file that cannot be read leaves the clipboard alone.
    void copyKey(const QString &path);
    /// Asks the main window for the volume's history.
    void timeTravel(std::int64_t id);

private:
    std::shared_ptr<AppState> m_state;
    std::int64_t m_shown = 0;
    std::uint64_t m_generation = 0; ///< grows with every choice, so that late answers can be told
};

} // namespace quillfen
