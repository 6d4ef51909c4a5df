// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/policy/policytiers.h"
#include "state/appstate.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QSet>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace quillfen {

/// What the History policy board edits and can do: one volume's policy, as the agent has it and as the user wants it.
/// Main thread.
class PolicyModel final : public std::enable_shared_from_this<PolicyModel> {
    Q_DECLARE_TR_FUNCTIONS(PolicyModel)

public:
    explicit PolicyModel(std::shared_ptr<AppState> state);

    Published<std::optional<std::int64_t>> volumeId; ///< the volume that was picked
    Published<Policy> values{standardPolicy};        ///< as the user wants it
    Published<Policy> saved{standardPolicy};         ///< as the agent has it
    Published<QSet<std::int64_t>> saving;            ///< volumes whose policy is on its way to the agent
    Published<QSet<std::int64_t>> pinning;           ///< volumes whose present moment is

    [[nodiscard]] AppState &state() noexcept { return *m_state; }

    /// The place of the volume that is shown in the list of volumes: the picked one, else the first; none without any.
    [[nodiscard]] std::optional<qsizetype> volumeIndex() const;
    [[nodiscard]] std::optional<std::int64_t> shownId() const;
    /// There is something to save and a volume to save it for.
    [[nodiscard]] bool canSave() const;

    /// Shows the policy of another volume. What was chosen for the one before and not saved goes.
    void pickVolume(std::int64_t id);
    /// Reads the policy when the list of volumes has become another one since it was last called.
    void follow();
    /// Reads the policy of the volume that is shown. What the user has chosen and not saved stays; an answer that is
    /// none, or comes after another volume was picked, changes nothing.
    QCoro::Task<> load();

    void setValue(std::size_t tier, std::int64_t number);
    void usePlan(std::size_t plan);

    QCoro::Task<> save();
    /// Keeps the present moment whatever the policy says.
    QCoro::Task<> pin();

private:
    void forgetUnsaved();

    std::shared_ptr<AppState> m_state;
    std::optional<std::vector<std::int64_t>> m_known; ///< the ids of the volumes at the last look
    std::uint64_t m_seen = 0;                         ///< the version of the list of volumes at the last look
    std::optional<std::int64_t> m_loadedFor;
    std::uint64_t m_visit = 0;      ///< grows with every volume that comes to be shown
    std::uint64_t m_generation = 0; ///< grows with every load and save, so that late answers can be told
};

} // namespace quillfen
