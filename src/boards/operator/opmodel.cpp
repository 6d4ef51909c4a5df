// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/opmodel.h"

#include "state/action.h"

#include <utility>

namespace quillfen {

OpModel::OpModel(std::shared_ptr<AppState> state) : m_state(std::move(state)) {}

QString OpModel::runningKey(const std::string &method, std::int64_t id)
{
    return QString::fromStdString(method) + u' ' + QString::number(id);
}

QCoro::Task<> OpModel::act(Act what)
{
    const auto self = shared_from_this();
    const QString key = runningKey(what.method, what.id);
    if (running().contains(key)) {
        co_return;
    }
    running.update([&key](QSet<QString> &keys) { keys.insert(key); });
    Action action = calling(what.method, what.params);
    if (!what.idName.empty()) {
        action.params[what.idName] = what.id;
    }
    action.timeout = what.timeout;
    action.done = saying(what.done);
    action.refresh = false;
    action.operation = what.operation;
    co_await perform(m_state, action);
    running.update([&key](QSet<QString> &keys) { keys.remove(key); });
    co_await load();
}

QCoro::Task<Answer> OpModel::ask(std::string method, RPC::Seconds timeout) const
{
    return quillfen::ask(m_state, std::move(method), json::object(), timeout);
}

} // namespace quillfen
