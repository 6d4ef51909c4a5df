// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "accountmodel.h"

#include "engineoperations.h"
#include "state/ask.h"
#include "state/recordlists.h"

#include <optional>
#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

namespace {

constexpr std::int64_t tokenDays = 90;

/// One call that changes the account, with a word on its success.
Action accountAction(std::string method, const QString &done)
{
    Action action;
    action.method = std::move(method);
    action.timeout = 120s;
    action.done = saying(done);
    return action;
}

Action engineAction(std::string_view method, RPC::Seconds timeout, const QString &title, const QString &done)
{
    Action action;
    action.method = std::string(method);
    action.timeout = timeout;
    action.done = saying(done);
    action.operation = title;
    action.progressEvent = std::string(EngineOperation::progressEvent);
    return action;
}

} // namespace

AccountModel::AccountModel(std::shared_ptr<AppState> state, Reveal reveal)
    : m_state(std::move(state)), m_reveal(std::move(reveal))
{}

QCoro::Task<> AccountModel::load()
{
    const auto self = shared_from_this();
    co_await loadTokens();
    co_await loadAppliances();
}

QCoro::Task<> AccountModel::followEngine(bool running)
{
    const auto self = shared_from_this();
    if (!running && !appliances().isEmpty()) {
        appliances = Records();
    }
    co_await loadAppliances();
}

QCoro::Task<> AccountModel::loadTokens()
{
    const auto self = shared_from_this();
    const std::uint64_t generation = ++m_tokenLoads;
    const json::object none;
    std::optional<json::value> answer = co_await answerOrNothing(m_state, "auth.tokens.list", none);
    if (answer && generation == m_tokenLoads) {
        tokens = takeRecords(std::move(*answer), "tokens");
    }
}

QCoro::Task<> AccountModel::loadAppliances()
{
    const auto self = shared_from_this();
    const std::uint64_t generation = ++m_applianceLoads;
    const json::object none;
    std::optional<json::value> answer = co_await answerOrNothing(m_state, "appliance.list", none);
    if (answer && generation == m_applianceLoads) {
        appliances = takeRecords(std::move(*answer));
    }
}

QCoro::Task<std::optional<json::value>> AccountModel::once(Action action)
{
    const auto self = shared_from_this();
    const std::string method = action.method;
    if (!m_underway.insert(method).second) {
        co_return std::nullopt;
    }
    std::optional<json::value> answer = co_await perform(m_state, action);
    m_underway.erase(method);
    co_return answer;
}

QCoro::Task<> AccountModel::createToken(QString label)
{
    const auto self = shared_from_this();
    Action action = calling("auth.tokens.create", params("label", label, "expires_in_days", tokenDays), 60s);
    action.refresh = false;
    const std::optional<json::value> answer = co_await perform(m_state, action);
    if (answer) {
        m_reveal(tr("token %1").arg(label), str(object(&*answer), "token"));
        co_await load();
    }
}

QCoro::Task<> AccountModel::revokeToken(QString id)
{
    const auto self = shared_from_this();
    Action action = calling("auth.tokens.revoke", params("token_id", id), 60s);
    action.done = saying(tr("revoked"));
    action.refresh = false;
    const std::optional<json::value> answer = co_await perform(m_state, action);
    if (answer) {
        co_await load();
    }
}

QCoro::Task<> AccountModel::enrolComputer()
{
    const auto self = shared_from_this();
    Action action = calling("auth.enroll_code", params("label", "desktop"), 60s);
    action.refresh = false;
    const std::optional<json::value> answer = co_await once(action);
    if (answer) {
        m_reveal(tr("enrolment code (one use, 24 h)"), str(object(&*answer), "code"));
    }
}

QCoro::Task<> AccountModel::signOut()
{
    const auto self = shared_from_this();
    const Action action = accountAction("auth.signout", tr("signed out"));
    co_await once(action);
}

QCoro::Task<> AccountModel::closeAccount()
{
    const auto self = shared_from_this();
    const Action action = accountAction("account.close", tr("account closing"));
    co_await once(action);
}

QCoro::Task<> AccountModel::recoverAccount()
{
    const auto self = shared_from_this();
    const Action action = accountAction("account.reclaim", tr("account recovered"));
    co_await once(action);
}

QCoro::Task<> AccountModel::setUpEngine()
{
    const auto self = shared_from_this();
    Action action =
        engineAction(EngineOperation::setUp, 3600s, tr("Setting up the engine"), tr("The engine is ready."));
    action.before = tr("Setting up the engine…");
    co_await perform(m_state, action);
}

QCoro::Task<> AccountModel::startEngine()
{
    const auto self = shared_from_this();
    const Action action = engineAction(EngineOperation::startUp, 600s, tr("Starting the engine"), tr("engine started"));
    co_await perform(m_state, action);
}

QCoro::Task<> AccountModel::stopEngine()
{
    const auto self = shared_from_this();
    Action action = engineAction(EngineOperation::stopSafely, 4200s, tr("Stopping safely"),
                                 tr("Every change reached the vault; the engine is stopped."));
    action.before = tr("stopping safely…");
    co_await perform(m_state, action);
}

} // namespace quillfen
