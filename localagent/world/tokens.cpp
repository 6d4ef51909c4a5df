// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/tokens.h"

#include "localagent/world/signin.h"

#include <algorithm>
#include <array>
#include <cctype>

#include <unistd.h>

namespace quillfen::localagent {

namespace {

using Days = std::chrono::days;

constexpr std::size_t longestLabel = 100;
constexpr std::int64_t mostDays = 3650;
constexpr Seconds codeLife = std::chrono::hours(24);
constexpr std::string_view appPrefix = "desktop:";
constexpr std::string_view commandPrefix = "cli:";

std::string trimmed(const std::string &text)
{
    constexpr std::string_view space = " \t\r\n";
    const std::size_t first = text.find_first_not_of(space);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(space) - first + 1);
}

bool holds(const World &world, const Token &token)
{
    return !token.expires || *token.expires > world.clock.now();
}

Token &add(World &world, std::string label, Time created, std::optional<Time> expires)
{
    Tokens &tokens = world.state.tokens;
    tokens.list.push_back({"tok-" + std::to_string(++tokens.lastId), std::move(label), created, expires});
    return tokens.list.back();
}

json::object recordOf(const Token &token)
{
    json::object record = {{"token_id", token.id}, {"label", token.label}, {"created_at", isoTime(token.created)}};
    if (token.expires) {
        record["expires_at"] = isoTime(*token.expires);
    }
    return record;
}

void requireLabel(const World &world, const std::string &label)
{
    const auto isControl = [](char letter) { return std::iscntrl(static_cast<unsigned char>(letter)) != 0; };
    if (label.empty()) {
        throw Refusal(Refusal::Kind::Bad, "A token needs a label, so that you recognise it later.");
    }
    if (label.size() > longestLabel || std::any_of(label.begin(), label.end(), isControl)) {
        throw Refusal(Refusal::Kind::Bad, "A label is one line of at most 100 characters.");
    }
    if (label.starts_with(appPrefix) || label.starts_with(commandPrefix)) {
        throw Refusal(Refusal::Kind::Bad, "Labels that begin with desktop: and cli: belong to signed-in computers.");
    }
    const auto same = [&](const Token &token) { return holds(world, token) && token.label == label; };
    if (std::any_of(world.state.tokens.list.begin(), world.state.tokens.list.end(), same)) {
        throw Refusal(Refusal::Kind::Conflict, "There is a token " + label + " already.");
    }
}

std::string withComputer(std::string label)
{
    constexpr std::string_view placeholder = "{computer}";
    if (const std::size_t at = label.find(placeholder); at != std::string::npos) {
        label.replace(at, placeholder.size(), computerName());
    }
    return label;
}

bool isOwn(const Token &token, std::string_view prefix)
{
    return token.label == std::string(prefix) + computerName();
}

} // namespace

void loadTokens(World &world, const std::vector<Fields> &tokens)
{
    const Time now = world.clock.now();
    for (const Fields &token : tokens) {
        const Time created = token.moment("created", now);
        const std::optional<Time> expires =
            token.has("expires") ? std::optional(token.moment("expires", now)) : std::nullopt;
        add(world, withComputer(token.text("label")), created, expires);
    }
}

std::string computerName()
{
    std::array<char, 256> name = {};
    return gethostname(name.data(), name.size() - 1) == 0 ? std::string(name.data()) : std::string("this-computer");
}

json::object tokenRecords(const World &world)
{
    json::array records;
    for (const Token &token : world.state.tokens.list) {
        if (holds(world, token)) {
            records.push_back(recordOf(token));
        }
    }
    return {{"tokens", std::move(records)}};
}

json::object createToken(World &world, const std::string &label, std::optional<std::int64_t> days)
{
    requireOpenAccount(world);
    const std::string name = trimmed(label);
    requireLabel(world, name);
    if (days && (*days < 1 || *days > mostDays)) {
        throw Refusal(Refusal::Kind::Bad, "A token lasts from 1 to 3650 days.");
    }
    const Time now = world.clock.now();
    json::object record = recordOf(add(world, name, now, days ? std::optional(now + Days(*days)) : std::nullopt));
    record["token"] = "quill_token_" + randomText(world, 32);
    return record;
}

void revokeToken(World &world, const std::string &id)
{
    std::vector<Token> &list = world.state.tokens.list;
    const auto found = std::find_if(list.begin(), list.end(), [&](const Token &token) { return token.id == id; });
    if (found == list.end() || !holds(world, *found)) {
        throw Refusal(Refusal::Kind::Missing, "There is no such token in this account any more.");
    }
    if (isOwn(*found, appPrefix)) {
        throw Refusal(Refusal::Kind::Conflict, "This app itself uses that token. Sign out this computer instead.");
    }
    list.erase(found);
}

std::string createEnrolmentCode(World &world)
{
    requireOpenAccount(world);
    std::string code = "quill-" + randomText(world, 4) + "-" + randomText(world, 4) + "-" + randomText(world, 4);
    world.clock.after(codeLife, [&world, code] { world.state.account.expiredCodes.insert(code); });
    return code;
}

void issueOwnTokens(World &world)
{
    revokeOwnTokens(world);
    for (const std::string_view prefix : {appPrefix, commandPrefix}) {
        add(world, std::string(prefix) + computerName(), world.clock.now(), std::nullopt);
    }
}

void revokeOwnTokens(World &world)
{
    std::erase_if(world.state.tokens.list,
                  [](const Token &token) { return isOwn(token, appPrefix) || isOwn(token, commandPrefix); });
}

} // namespace quillfen::localagent
