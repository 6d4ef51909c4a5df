// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QString>

#include <memory>

namespace quillfen {

/// What the Volumes board can do, and the little it remembers by itself. No widgets; held by shared_ptr, so that work
/// begun on the board ends well after the board has gone. Main thread.
class VolumesModel final : public std::enable_shared_from_this<VolumesModel> {
    Q_DECLARE_TR_FUNCTIONS(VolumesModel)

public:
    explicit VolumesModel(std::shared_ptr<AppState> state);

    /// The text of the search field.
    Published<QString> query;

    [[nodiscard]] const std::shared_ptr<AppState> &state() const noexcept { return m_state; }

    /// Chooses a volume for all boards. Choosing the chosen one again changes nothing.
    void selectVolume(std::int64_t id);
    /// Asks the shell for the new-volume sheet.
    void newVolume();

    /// Removes an appliance whose volume is not in the account.
    QCoro::Task<> removeOrphan(QString container);
    QCoro::Task<> discardCopy(std::int64_t id);
    /// Makes a ready copy a volume called `name`.
    QCoro::Task<> promoteCopy(std::int64_t id, QString name);

private:
    std::shared_ptr<AppState> m_state;
};

} // namespace quillfen
