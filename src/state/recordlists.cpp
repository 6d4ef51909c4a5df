// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/recordlists.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quillfen {

std::vector<std::int64_t> idsOf(const Records &list)
{
    std::vector<std::int64_t> ids;
    ids.reserve(static_cast<std::size_t>(list.size()));
    std::ranges::transform(list, std::back_inserter(ids), [](const Record &record) { return num(record, "id"); });
    return ids;
}

const Record *recordWithId(const Records &list, std::int64_t id)
{
    const auto found = std::ranges::find_if(list, [id](const Record &record) { return num(record, "id") == id; });
    return found == list.end() ? nullptr : &*found;
}

Records takeRecords(json::value &&answer, std::string_view key)
{
    json::object *const record = answer.if_object();
    json::value *const list = record == nullptr ? nullptr : record->if_contains(key);
    return list == nullptr ? Records() : takeRecords(std::move(*list));
}

} // namespace quillfen
