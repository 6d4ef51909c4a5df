// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/json.h"

#include <cstdint>
#include <string>

namespace quillfen {

/// The line of a request, line feed included; "params" is left out when there are none.
/// Throws RPCError "bad params" for what JSON cannot carry: infinities, NaN, texts that are not UTF-8.
[[nodiscard]] std::string requestLine(std::int64_t id, const std::string &method, const json::object &params);

} // namespace quillfen
