// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "../volumes/boardtest.h"

#include <QStringList>

#include <initializer_list>

namespace quillfen::test {

using namespace Qt::StringLiterals;

inline Record token(const char *id, const char *label)
{
    return params("token_id", id, "label", label, "created_at", "2024-10-14T09:00:00Z", "expires_at",
                  "2025-01-12T09:00:00Z");
}

inline Record appliance(const char *container, const char *status)
{
    return params("container", container, "status", status);
}

inline json::object tokenList(std::initializer_list<Record> tokens)
{
    return params("tokens", json::array(tokens.begin(), tokens.end()));
}

/// The board's own lists on top of what every board meets: two tokens, one appliance, the engine running.
class AccountTest : public BoardTest {
protected:
    AccountTest()
    {
        agent.answer("account", params("email", "mara@northmere.example", "plan", "pro", "state", "active"));
        agent.answer("vm.status", params("exists", true, "status", "Running", "memory", "4 GB", "disk", "80 GB",
                                         "docker", "27.3.1", "limactl", "1.0.2"));
        agent.answer("auth.tokens.list", tokenList({token("t-1", "laptop"), token("t-2", "backup")}));
        agent.answer("appliance.list", json::array({appliance("quill-vol-1", "Up 6 days")}));
    }
};

/// Every action of the board: the method it calls, and how it is begun.
struct ActionCase {
    const char *name;
    const char *method;
};

/// Keeps every notice that is shown, in order.
class Notices {
public:
    explicit Notices(AppState &state)
        : m_state(state), m_observer(
                              {&state.toast}, [this] { look(); }, std::chrono::milliseconds(0))
    {}

    QStringList seen;

private:
    void look()
    {
        if (const std::optional<QString> &toast = m_state.toast(); toast) {
            seen << *toast;
        }
    }

    AppState &m_state;
    Observer m_observer;
};

} // namespace quillfen::test
