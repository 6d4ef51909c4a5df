// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/opexportsmodel.h"

#include "state/recordlists.h"

#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

QCoro::Task<> OpExportsModel::load()
{
    const auto self = shared_from_this();
    const std::uint64_t generation = beginLoad();
    Answer list = co_await ask("admin.exports.list", 60s);
    if (isLate(generation)) {
        co_return;
    }
    if (list.value) {
        const bool older = object(&*list.value).if_contains("exports") == nullptr;
        jobs = takeRecords(std::move(*list.value), older ? "jobs" : "exports");
    }
    error = list.problem;
    known = true;
}

QCoro::Task<> OpExportsModel::ship(std::int64_t id, const QString &carrier, const QString &tracking)
{
    Act action;
    action.method = "admin.exports.ship";
    action.idName = "job_id";
    action.id = id;
    action.params = params("carrier", carrier, "tracking", tracking);
    action.done = tr("marked shipped");
    action.timeout = 60s;
    return act(std::move(action));
}

QCoro::Task<> OpExportsModel::remove(std::int64_t id)
{
    Act action;
    action.method = "admin.exports.delete";
    action.idName = "job_id";
    action.id = id;
    action.done = tr("deleted");
    return act(std::move(action));
}

} // namespace quillfen
