// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

namespace quillfen {

/// What the new-volume sheet asks for.
struct NewVolumeForm {
    QString name;
    std::int64_t sizeGB = 100;
    QString share = QStringLiteral("smb"); ///< "smb", "nfs" or "iscsi"
    bool encrypt = false;                  ///< with a key that only the user holds
    bool mountHere = true;                 ///< on this computer, as soon as it is created
};

/// What the plan has left for a new volume.
struct PlanRoom {
    bool known = false;  ///< the plan has been answered
    double freeGB = 0.0; ///< in units of 2^30 bytes; negative when more is allocated than bought

    /// Whole GB left, never below zero.
    [[nodiscard]] std::int64_t wholeGB() const;
    /// The largest size the sheet offers: at least 2, so that its slider has somewhere to go.
    [[nodiscard]] std::int64_t largestGB() const;
    /// The size the sheet starts with: 100 GB, or what is left.
    [[nodiscard]] std::int64_t suggestedGB() const;
};

[[nodiscard]] PlanRoom planRoom(const AppState &state);

/// The line under the size: what is left on the plan, in words.
[[nodiscard]] QString planRoomText(const PlanRoom &room);

/// What keeps the form from being sent, in words; none when it can be.
[[nodiscard]] std::optional<QString> problemOf(const NewVolumeForm &form, const PlanRoom &room);

/// Whether the name is what keeps the form from being sent.
[[nodiscard]] bool lacksName(const NewVolumeForm &form);

/// The parameters of "volumes.create".
[[nodiscard]] json::object createParams(const NewVolumeForm &form);

/// Creates volumes on behalf of the sheet; what it started goes on when the sheet has closed.
class NewVolumeModel final : public std::enable_shared_from_this<NewVolumeModel> {
    Q_DECLARE_TR_FUNCTIONS(NewVolumeModel)

public:
    explicit NewVolumeModel(std::shared_ptr<AppState> state);

    Published<bool> busy{false};
    Published<QString> error;           ///< the text under the form, empty when there is none
    Published<bool> nameInvalid{false}; ///< the error is about the name, or the agent's, which nearly always is

    [[nodiscard]] AppState &state() noexcept { return *m_state; }

    /// Checks the form and creates the volume; on success closes the sheet and, when asked to, mounts the volume.
    QCoro::Task<> create(NewVolumeForm form);
    /// The form has been changed: a problem that was told stays only as long as it is there. What the agent has said
    /// stays until the next attempt.
    void edited(const NewVolumeForm &form);
    /// Closes the sheet; not while a volume is being created.
    void cancel();

private:
    void tell(const NewVolumeForm &form);

    std::shared_ptr<AppState> m_state;
    bool m_told = false; ///< `error` is a problem of the form
};

} // namespace quillfen
