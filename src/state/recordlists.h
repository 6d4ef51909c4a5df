// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/values.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace quillfen {

/// The "id" of each record, in the order of the list.
[[nodiscard]] std::vector<std::int64_t> idsOf(const Records &list);

/// The first record with this "id", null when there is none. It is the list's own, and lives as long.
[[nodiscard]] const Record *recordWithId(const Records &list, std::int64_t id);

/// The list under `key` of an answer that is not needed any more, read as `takeRecords` does.
[[nodiscard]] Records takeRecords(json::value &&answer, std::string_view key);

} // namespace quillfen
