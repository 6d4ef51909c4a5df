// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/request.h"

#include "rpc/rpc.h"

#include <QUtf8StringView>

#include <algorithm>
#include <cmath>

namespace quillfen {

namespace {

/// The JSON library writes infinities as 1e99999 and NaN as null, which the agent would take for something else.
bool hasOnlyFiniteNumbers(const json::value &value)
{
    switch (value.kind()) {
    case json::kind::double_:
        return std::isfinite(value.get_double());
    case json::kind::array:
        return std::ranges::all_of(value.get_array(), hasOnlyFiniteNumbers);
    case json::kind::object:
        return std::ranges::all_of(value.get_object(),
                                   [](const auto &pair) { return hasOnlyFiniteNumbers(pair.value()); });
    default:
        return true;
    }
}

} // namespace

std::string requestLine(std::int64_t id, const std::string &method, const json::object &params)
{
    std::string line = R"({"jsonrpc":"2.0","id":)" + std::to_string(id) + R"(,"method":)";
    line += json::serialize(json::string_view(method));
    bool encodable = true;
    if (!params.empty()) {
        line += R"(,"params":)";
        line += json::serialize(params);
        encodable = std::ranges::all_of(params, [](const auto &pair) { return hasOnlyFiniteNumbers(pair.value()); });
    }
    line += "}\n";
    // The library copies every byte above ASCII as it stands, so that the line is UTF-8 exactly if all its texts are.
    if (!encodable || !QUtf8StringView(line.data(), static_cast<qsizetype>(line.size())).isValidUtf8()) {
        throw RPCError(RPCError::badParams, RPC::tr("bad params"));
    }
    return line;
}

} // namespace quillfen
