// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "agentmethods.h"
#include "consolesession.h"

#include "state/appstate.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QString>

#include <memory>
#include <vector>

namespace quillfen {

/// What the Advanced board can do: list the agent's methods, remember what is typed for each, and run one. What was
/// started goes on when the board has gone, and its outcome is there when it comes back. Main thread.
class AdvancedModel final : public std::enable_shared_from_this<AdvancedModel> {
    Q_DECLARE_TR_FUNCTIONS(AdvancedModel)

public:
    explicit AdvancedModel(std::shared_ptr<AppState> state);

    Published<std::vector<AgentMethod>> methods; ///< those that may be seen, by name
    Published<bool> loaded{false};               ///< the agent has been asked, with whatever success

    [[nodiscard]] AppState &state() noexcept { return *m_state; }
    [[nodiscard]] ConsoleSession &session() const noexcept { return *m_session; }

    /// Asks for the list. A call that fails leaves the list as it is, which at first is empty.
    QCoro::Task<> load();
    /// The account may have become an operator's, or be one no longer.
    void followAccount();

    void pick(const QString &name);
    /// The picked method; null while there is none in the list.
    [[nodiscard]] const AgentMethod *picked() const;

    /// What was typed for a method.
    [[nodiscard]] MethodInputs inputs(const QString &method) const;
    void typeField(const QString &method, const QString &parameter, const QString &text);
    void typeJson(const QString &method, const QString &text);

    /// Calls a method. Its answer, or why there is none, becomes the session's outcome.
    QCoro::Task<> run(QString method, json::object request);

private:
    std::shared_ptr<AppState> m_state;
    std::shared_ptr<ConsoleSession> m_session;
    std::vector<AgentMethod> m_all; ///< for operators too
    std::uint64_t m_generation = 0;
};

} // namespace quillfen
