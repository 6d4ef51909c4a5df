// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/arrival/firstrunmodel.h"

#include "shell/process/product.h"
#include "state/action.h"
#include "state/ask.h"

#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

namespace {

/// API tokens and enrolment codes differ by one character, and people paste one for the other.
constexpr QLatin1String tokenPrefix("quill_");

QString words(const char *text)
{
    return QCoreApplication::translate("FirstRunModel", text);
}

} // namespace

std::optional<QString> problemOf(const SignInForm &form)
{
    const QString code = form.code.trimmed();
    if (code.isEmpty()) {
        return words("Paste the code or the link first.");
    }
    if (code.startsWith(tokenPrefix)) {
        return words("That is an API token. The app signs in with an enrolment code (quill-…) or link: on the Download "
                     "page, Create enrolment code.");
    }
    return std::nullopt;
}

json::object enrolParams(const SignInForm &form)
{
    json::object request = params("code", form.code.trimmed());
    if (form.selfHosted && !form.api.isEmpty()) {
        request["api"] = form.api.toStdString();
    }
    return request;
}

FirstRunModel::FirstRunModel(std::shared_ptr<AppState> state, Ask ask)
    : m_state(std::move(state)), m_ask(std::move(ask))
{}

QCoro::Task<> FirstRunModel::appear()
{
    const auto self = shared_from_this();
    if (const QString pending = m_state->pendingEnrol(); !pending.isEmpty()) {
        code = pending;
        m_state->pendingEnrol = QString();
        SignInForm form;
        form.code = pending;
        co_await signIn(form);
    }
    co_await check();
}

QCoro::Task<> FirstRunModel::signIn(SignInForm form)
{
    const auto self = shared_from_this();
    if (m_state->busy()) {
        co_return;
    }
    const std::optional<QString> problem = problemOf(form);
    error = problem.value_or(QString());
    if (problem) {
        co_return;
    }

    Action enrolment = calling("auth.enroll", enrolParams(form), 60s);
    enrolment.done = [](const json::value &answer) { return tr("Signed in as %1").arg(str(object(&answer), "email")); };
    m_state->busy = true;
    const CallOutcome outcome = co_await attempt(m_state, enrolment);
    if (!outcome.answer) {
        error = outcome.words;
    }
    m_state->busy = false;
    if (!outcome.answer) {
        co_return;
    }

    m_state->showOutcome(outcome.words);
    co_await m_state->refresh();
    if (isTrue(m_state->vm(), "exists")) {
        co_return;
    }
    const bool agreed = m_ask(tr("Set up the engine?"),
                              tr("Quillfen runs your volumes in a small virtual machine on this Mac. Setting it up "
                                 "downloads about 500 MB from %1 and takes a few minutes.")
                                  .arg(product::webHost()),
                              tr("Set up"));
    if (agreed) {
        co_await prepareEngine();
    }
}

QCoro::Task<> FirstRunModel::prepareEngine()
{
    const auto self = shared_from_this();
    Action preparation = calling("vm.prepare", {}, 3600s);
    preparation.operation = tr("Setting up the engine");
    preparation.progressEvent = "vm.progress";
    preparation.done = saying(tr("The engine is ready."));
    m_state->show(tr("Setting up the engine…"));
    m_state->busy = true;
    const CallOutcome outcome = co_await attempt(m_state, preparation);
    m_state->showOutcome(outcome.words);
    m_state->busy = false;
    co_await m_state->refresh();
}

QCoro::Task<> FirstRunModel::check()
{
    const auto self = shared_from_this();
    const json::object none;
    const std::optional<json::value> answer = co_await answerOrNothing(m_state, "preflight.run", none);
    // The checks are advice: without them the card stays empty and signing in works all the same.
    checks = answer ? records(&*answer) : Records();
}

} // namespace quillfen
