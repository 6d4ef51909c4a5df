// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/action.h"
#include "state/appstate.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>

namespace quillfen {

/// What the Account & engine board loads and what can be done there. Whoever calls has asked the user before. What was
/// started goes on when the board is left. Main thread.
class AccountModel final : public std::enable_shared_from_this<AccountModel> {
    Q_DECLARE_TR_FUNCTIONS(AccountModel)

public:
    /// Shows a secret to the user. It comes once: the board may have gone meanwhile, the secret is shown all the same.
    using Reveal = std::function<void(const QString &what, const QString &secret)>;

    AccountModel(std::shared_ptr<AppState> state, Reveal reveal);

    Published<Records> tokens;
    Published<Records> appliances;

    [[nodiscard]] AppState &state() noexcept { return *m_state; }

    /// Reads both lists; one that cannot be read stays as it was.
    QCoro::Task<> load();
    /// The engine has come up or gone down: what is known of the appliances holds no longer.
    QCoro::Task<> followEngine(bool running);

    QCoro::Task<> createToken(QString label);
    QCoro::Task<> revokeToken(QString id);
    QCoro::Task<> enrolComputer();

    QCoro::Task<> signOut();
    QCoro::Task<> closeAccount();
    QCoro::Task<> recoverAccount();

    QCoro::Task<> setUpEngine();
    QCoro::Task<> startEngine();
    QCoro::Task<> stopEngine();

private:
    QCoro::Task<> loadTokens();
    QCoro::Task<> loadAppliances();
    /// Performs it unless the same runs already: two codes for one impatient click, or a refusal behind a success,
    /// help nobody.
    QCoro::Task<std::optional<json::value>> once(Action action);

    std::shared_ptr<AppState> m_state;
    Reveal m_reveal;
    std::set<std::string> m_underway; ///< methods
    // Grow with every load, so that an answer that comes after the one to a later question can be told.
    std::uint64_t m_tokenLoads = 0;
    std::uint64_t m_applianceLoads = 0;
};

} // namespace quillfen
