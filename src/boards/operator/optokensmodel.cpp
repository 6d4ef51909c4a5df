// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/optokensmodel.h"

#include "state/recordlists.h"

#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

QCoro::Task<> OpTokensModel::load()
{
    const auto self = shared_from_this();
    const std::uint64_t generation = beginLoad();
    Answer list = co_await ask("admin.tokens.list", 60s);
    if (isLate(generation)) {
        co_return;
    }
    if (list.value) {
        tokens = takeRecords(std::move(*list.value), "tokens");
    }
    error = list.problem;
    known = true;
}

QCoro::Task<> OpTokensModel::revoke(std::int64_t id)
{
    Act action;
    action.method = "admin.tokens.revoke";
    action.idName = "token_id";
    action.id = id;
    action.done = tr("revoked");
    action.timeout = 60s;
    return act(std::move(action));
}

QCoro::Task<> OpTokensModel::prune()
{
    Act action;
    action.method = "admin.tokens.prune";
    action.done = tr("pruned");
    return act(std::move(action));
}

} // namespace quillfen
