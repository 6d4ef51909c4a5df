// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "agentmethods.h"
#include "outputtext.h"

#include "state/appstate.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <chrono>
#include <memory>

namespace quillfen {

/// What the last run that ended came to.
struct RunOutcome {
    QString method; ///< empty as long as nothing was run
    bool failed = false;
    std::chrono::milliseconds took{}; ///< from the call to its answer
    std::shared_ptr<const OutputText> text = std::make_shared<OutputText>();
};

/// What the console remembers beyond the board: it is still there when the board is left and entered again, or the
/// agent was away meanwhile. Main thread.
class ConsoleSession final {
public:
    /// The session of this state's present account. Another account gets a new one: what was typed and answered before
    /// is not for it.
    [[nodiscard]] static std::shared_ptr<ConsoleSession> of(const std::shared_ptr<AppState> &state);

    Published<QString> picked;        ///< the name of the picked method, null while there is none
    Published<QSet<QString>> running; ///< the methods whose answers are awaited
    Published<RunOutcome> outcome;

    QHash<QString, MethodInputs> inputs; ///< by method

private:
    QString m_account;
};

} // namespace quillfen
