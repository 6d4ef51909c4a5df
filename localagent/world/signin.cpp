// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/signin.h"

#include "localagent/world/mounts.h"
#include "localagent/world/names.h"
#include "localagent/world/tokens.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace quillfen::localagent {

namespace {

constexpr std::string_view scheme = "quillfen:";
constexpr std::string_view codePrefix = "quill-";

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view space = " \t\r\n";
    const std::size_t first = text.find_first_not_of(space);
    return first == std::string_view::npos ? "" : text.substr(first, text.find_last_not_of(space) - first + 1);
}

std::string percentDecoded(std::string_view text)
{
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        unsigned char byte = 0;
        const char *const digits = text.data() + at + 1;
        if (text[at] == '%' && at + 2 < text.size() &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            plain += static_cast<char>(byte);
            at += 2;
        } else {
            plain += text[at];
        }
    }
    return plain;
}

bool isCode(std::string_view text)
{
    const auto plain = [](char letter) {
        return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '-';
    };
    return text.starts_with(codePrefix) && text.size() >= codePrefix.size() + 4 && text.size() <= 128 &&
           std::all_of(text.begin(), text.end(), plain);
}

void requireUrl(std::string_view api)
{
    const std::size_t host = api.starts_with("https://") ? 8 : api.starts_with("http://") ? 7 : 0;
    const bool blank = api.find_first_of(" \t\r\n") != std::string_view::npos;
    if (!api.empty() && (host == 0 || api.size() <= host || blank)) {
        throw Refusal(Refusal::Kind::Bad, "The control plane URL is not an address like https://manager.example.com.");
    }
}

} // namespace

std::string enrolmentCode(std::string_view codeOrLink)
{
    const std::string_view text = trimmed(codeOrLink);
    if (text.size() < scheme.size() || !sameFolder(text.substr(0, scheme.size()), scheme)) {
        return std::string(text);
    }
    // The code stands under "code" in the query, or as the last part of the path.
    const std::string_view link = text.substr(scheme.size());
    std::size_t begin = link.find("?code=");
    begin = begin == std::string_view::npos ? link.find("&code=") : begin;
    begin = begin == std::string_view::npos ? link.rfind('/') + 1 : begin + 6;
    const std::string_view rest = link.substr(begin);
    return percentDecoded(rest.substr(0, rest.find_first_of("&#?")));
}

void enroll(World &world, const std::string &codeOrLink, const std::string &api)
{
    Account &account = world.state.account;
    const std::string code = enrolmentCode(codeOrLink);
    const std::string url(trimmed(api));
    if (account.signedIn) {
        throw Refusal(Refusal::Kind::Conflict, "This computer is signed in as " + account.email + ". Sign out first.");
    }
    if (!isCode(code)) {
        throw Refusal(Refusal::Kind::Bad,
                      "That is not an enrolment code. Codes begin with quill- and are created on the "
                      "Download page.");
    }
    if (account.expiredCodes.contains(code)) {
        throw Refusal(Refusal::Kind::Forbidden, "The code has expired. Create a new one on the Download page.");
    }
    if (account.usedCodes.contains(code)) {
        throw Refusal(Refusal::Kind::Forbidden, "The code was already used. Create a new one on the Download page.");
    }
    requireUrl(url);
    account.usedCodes.insert(code);
    account.api = url;
    account.signedIn = true;
    issueOwnTokens(world);
    announceAuth(world);
}

void signOut(World &world)
{
    Account &account = world.state.account;
    if (!account.signedIn) {
        throw Refusal(Refusal::Kind::SignedOut, "This computer is not signed in.");
    }
    detachAll(world);
    revokeOwnTokens(world);
    account.signedIn = false;
    account.api.clear();
    announceAuth(world);
}

void closeAccount(World &world)
{
    Account &account = world.state.account;
    if (account.state == "closing") {
        throw Refusal(Refusal::Kind::Conflict, "The account is closing already.");
    }
    account.state = "closing";
}

void reclaimAccount(World &world)
{
    Account &account = world.state.account;
    if (account.state != "closing") {
        throw Refusal(Refusal::Kind::Conflict, "The account is not closing; there is nothing to recover.");
    }
    account.state = "active";
}

void requireOpenAccount(const World &world)
{
    if (world.state.account.state == "closing") {
        throw Refusal(Refusal::Kind::Conflict, "The account is closing. Recover it first.");
    }
}

} // namespace quillfen::localagent
