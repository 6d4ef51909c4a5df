// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"
#include "state/ask.h"

#include <QCoroTask>
#include <QSet>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace quillfen {

/// What the tabs of the operator console have in common: lists that are asked for as a whole, and actions that end in
/// one notice and the lists anew. No widgets; held by shared_ptr, so that an action begun on a tab ends well after the
/// tab has gone. Main thread.
class OpModel : public std::enable_shared_from_this<OpModel> {
public:
    explicit OpModel(std::shared_ptr<AppState> state);
    virtual ~OpModel() = default;
    OpModel(const OpModel &) = delete;
    OpModel &operator=(const OpModel &) = delete;

    Published<QString> error;         ///< why the list could not be had, empty when it could
    Published<bool> known{false};     ///< the agent was asked at least once, whatever came of it
    Published<QSet<QString>> running; ///< what has not ended yet, each as `runningKey` names it

    [[nodiscard]] AppState &state() const noexcept { return *m_state; }

    /// Asks the agent for the tab's lists. Answers that come after a later load began are dropped; a list that cannot
    /// be had leaves what was there.
    virtual QCoro::Task<> load() = 0;

    [[nodiscard]] static QString runningKey(const std::string &method, std::int64_t id);
    [[nodiscard]] bool runs(const std::string &method, std::int64_t id) const
    {
        return running().contains(runningKey(method, id));
    }

protected:
    /// One action on what has this id.
    struct Act {
        std::string method;
        std::string idName; ///< as the method calls it; none when empty
        std::int64_t id = 0;
        json::object params; ///< besides the id
        QString done;        ///< the notice on success
        RPC::Seconds timeout{120};
        QString operation; ///< its title among the long operations
    };

    /// Calls, tells how it went, and loads. Nothing while the same action on the same id runs: a second press is a
    /// slip.
    QCoro::Task<> act(Act what);
    /// Asks for what needs no parameters.
    [[nodiscard]] QCoro::Task<Answer> ask(std::string method, RPC::Seconds timeout) const;

    [[nodiscard]] std::uint64_t beginLoad() noexcept { return ++m_generation; }
    [[nodiscard]] bool isLate(std::uint64_t generation) const noexcept { return generation != m_generation; }

    [[nodiscard]] const std::shared_ptr<AppState> &shared() const noexcept { return m_state; }

private:
    std::shared_ptr<AppState> m_state;
    std::uint64_t m_generation = 0;
};

} // namespace quillfen
