// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/servicetokens.h"

#include <algorithm>

namespace quillfen::localagent {

json::object serviceTokenRecords(const World &world)
{
    json::array list;
    for (const ServiceToken &token : world.state.service.tokens) {
        json::object record{{"id", token.id},
                            {"label", token.label},
                            {"email", token.email},
                            {"created_at", isoTime(token.created)},
                            {"expires_at", isoTime(token.expires)},
                            {"revoked_at", nullptr},
                            {"revoked", token.revoked.has_value()}};
        if (token.revoked) {
            record["revoked_at"] = isoTime(*token.revoked);
        }
        list.push_back(std::move(record));
    }
    return {{"tokens", std::move(list)}};
}

void revokeServiceToken(World &world, std::int64_t id)
{
    std::vector<ServiceToken> &tokens = world.state.service.tokens;
    const auto token = std::ranges::find(tokens, id, &ServiceToken::id);
    if (token == tokens.end()) {
        throw Refusal(Refusal::Kind::Missing, "There is no token " + std::to_string(id) + ".");
    }
    if (token->revoked) {
        throw Refusal(Refusal::Kind::Conflict, "The token was revoked already.");
    }
    token->revoked = world.clock.now();
}

std::int64_t pruneServiceTokens(World &world)
{
    return static_cast<std::int64_t>(
        std::erase_if(world.state.service.tokens, [](const ServiceToken &token) { return token.revoked.has_value(); }));
}

} // namespace quillfen::localagent
