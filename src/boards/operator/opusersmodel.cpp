// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/opusersmodel.h"

#include "state/recordlists.h"

#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

QCoro::Task<> OpUsersModel::load()
{
    const auto self = shared_from_this();
    const std::uint64_t generation = beginLoad();
    Answer list = co_await ask("admin.users.list", 60s);
    if (isLate(generation)) {
        co_return;
    }
    if (list.value) {
        users = takeRecords(std::move(*list.value), "users");
    }
    error = list.problem;
    known = true;
    Answer houses = co_await ask("admin.tenants.list", 60s);
    if (isLate(generation) || !houses.value) {
        co_return;
    }
    tenants = takeRecords(std::move(*houses.value), "tenants");
}

QCoro::Task<> OpUsersModel::onUser(std::string method, std::int64_t id, QString done)
{
    Act action;
    action.method = std::move(method);
    action.idName = "user_id";
    action.id = id;
    action.done = std::move(done);
    return act(std::move(action));
}

QCoro::Task<> OpUsersModel::approve(std::int64_t id)
{
    return onUser("admin.users.approve", id, tr("approved"));
}

QCoro::Task<> OpUsersModel::reject(std::int64_t id)
{
    return onUser("admin.users.reject", id, tr("rejected"));
}

QCoro::Task<> OpUsersModel::remove(std::int64_t id)
{
    return onUser("admin.users.delete", id, tr("deleted"));
}

} // namespace quillfen
