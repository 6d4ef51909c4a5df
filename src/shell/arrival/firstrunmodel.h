// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace quillfen {

/// What the sign-in form holds.
struct SignInForm {
    QString code; ///< the enrolment code or link, as typed or pasted
    bool selfHosted = false;
    QString api; ///< the control plane of a self-hosted manager
};

/// What keeps the form from being sent, in words; none when it can be.
[[nodiscard]] std::optional<QString> problemOf(const SignInForm &form);

/// The parameters of "auth.enroll".
[[nodiscard]] json::object enrolParams(const SignInForm &form);

/// Signs this computer in. The sign-in moves the window on to its boards, so the model outlives the screen that started
/// it: it asks about the engine, and sets it up, when that screen is gone.
class FirstRunModel final : public std::enable_shared_from_this<FirstRunModel> {
    Q_DECLARE_TR_FUNCTIONS(FirstRunModel)

public:
    /// Puts a yes-or-no question to the user: title, text, verb. Called on the main thread; may block.
    using Ask = std::function<bool(const QString &title, const QString &text, const QString &verb)>;

    FirstRunModel(std::shared_ptr<AppState> state, Ask ask);

    Published<QString> code;   ///< a code handed over by a link or on the command line, for the field to show
    Published<QString> error;  ///< the text under the form, empty when there is none
    Published<Records> checks; ///< what the engine needs: "name", "ok", "info", "fix"

    /// What happens when the screen appears: a code that waits is signed in with, then the computer is checked.
    QCoro::Task<> appear();
    /// Signs in; offers to set up an engine where there is none.
    QCoro::Task<> signIn(SignInForm form);

private:
    QCoro::Task<> check();
    QCoro::Task<> prepareEngine();

    std::shared_ptr<AppState> m_state;
    Ask m_ask;
};

} // namespace quillfen
