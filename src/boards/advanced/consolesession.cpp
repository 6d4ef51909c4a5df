// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "consolesession.h"

#include <map>

namespace quillfen {

std::shared_ptr<ConsoleSession> ConsoleSession::of(const std::shared_ptr<AppState> &state)
{
    // Beside the state and not in it, which knows no board; gone with it at the next look.
    static std::map<std::weak_ptr<AppState>, std::shared_ptr<ConsoleSession>, std::owner_less<>> sessions;
    std::erase_if(sessions, [](const auto &entry) { return entry.first.expired(); });

    std::shared_ptr<ConsoleSession> &session = sessions[state];
    const QString account = str(state->auth(), "email");
    if (session == nullptr || session->m_account != account) {
        session = std::make_shared<ConsoleSession>();
        session->m_account = account;
    }
    return session;
}

} // namespace quillfen
