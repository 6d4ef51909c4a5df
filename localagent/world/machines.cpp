// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/machines.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdint>

namespace quillfen::localagent {

namespace {

constexpr std::size_t longestName = 40;
constexpr std::size_t longestHost = 253;
constexpr std::size_t keyLength = 43;
constexpr int mostPort = 65535;

bool isNameSign(char sign)
{
    return std::isalnum(static_cast<unsigned char>(sign)) != 0 || sign == '-';
}

bool isHost(std::string_view host)
{
    return !host.empty() && host.size() <= longestHost && host.front() != '.' && host.back() != '.' &&
           host.find("..") == std::string_view::npos &&
           std::ranges::all_of(host, [](char sign) { return isNameSign(sign) || sign == '.'; });
}

bool isPort(std::string_view text)
{
    int port = 0;
    const char *const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, port);
    return read.ec == std::errc() && read.ptr == end && port > 0 && port <= mostPort;
}

} // namespace

void requireHubName(const World &world, std::string_view name)
{
    if (name.empty() || name.size() > longestName || !std::ranges::all_of(name, isNameSign)) {
        throw Refusal(Refusal::Kind::Bad, "A hub needs a name of letters, digits and hyphens, like hub-e.");
    }
    const auto &hubs = world.state.service.hubs;
    if (std::ranges::find(hubs, name, &Hub::name) != hubs.end()) {
        throw Refusal(Refusal::Kind::Conflict, "There is a hub called " + std::string(name) + " already.");
    }
}

void requireHubAddress(const World &world, std::string_view address)
{
    const std::size_t colon = address.rfind(':');
    const std::string_view host = address.substr(0, colon);
    const bool withPort = colon != std::string_view::npos;
    if (!isHost(host) || !withPort || !isPort(address.substr(colon + 1))) {
        throw Refusal(Refusal::Kind::Bad, "A hub needs an address with a port, like 10.40.2.14:8443.");
    }
    const auto &hubs = world.state.service.hubs;
    if (const auto other = std::ranges::find(hubs, address, &Hub::address); other != hubs.end()) {
        throw Refusal(Refusal::Kind::Conflict, other->name + " has the address " + std::string(address) + " already.");
    }
    if (host.ends_with(".invalid")) {
        throw Refusal(Refusal::Kind::Missing, "Nothing answers at " + std::string(address) + ".");
    }
}

std::string hostKeyOf(std::string_view address)
{
    static constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::uint64_t mixed = 0xcbf29ce484222325U;
    for (const char sign : address) {
        mixed = (mixed ^ static_cast<unsigned char>(sign)) * 0x100000001b3U;
    }
    std::string key = "SHA256:";
    for (std::size_t at = 0; at < keyLength; ++at) {
        mixed = mixed * 6364136223846793005U + 1442695040888963407U;
        key += letters[mixed >> 58U];
    }
    return key;
}

} // namespace quillfen::localagent
