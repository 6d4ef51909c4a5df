// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/faults.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace quillfen::localagent {

namespace {

std::pair<std::string, std::string_view> split(std::string_view text, const char *form)
{
    const std::size_t equals = text.find('=');
    if (equals == 0 || equals == std::string_view::npos) {
        throw FaultError("\"" + std::string(text) + "\" is not of the form " + form);
    }
    return {std::string(text.substr(0, equals)), text.substr(equals + 1)};
}

// The whole number before the next colon, with `text` moved behind it; nothing (and `text` untouched) without one.
std::optional<std::int64_t> takeNumber(std::string_view &text)
{
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end == text.data() + text.size() || *end != ':') {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
    return number;
}

} // namespace

const MethodFault *Faults::of(std::string_view method) const
{
    if (methods.empty()) {
        return nullptr;
    }
    auto found = methods.find(std::string(method));
    if (found == methods.end()) {
        found = methods.find("*");
    }
    return found == methods.end() ? nullptr : &found->second;
}

void Faults::addDelay(std::string_view text)
{
    const auto [method, seconds] = split(text, "METHOD=SECONDS");
    methods[method].delay = parseSeconds(seconds, "--delay");
}

void Faults::addFailure(std::string_view text)
{
    static constexpr const char *form = "METHOD=CODE[:STATUS]:MESSAGE";
    auto [method, rest] = split(text, form);
    const std::optional<std::int64_t> code = takeNumber(rest);
    if (!code) {
        throw FaultError("\"" + std::string(text) + "\" is not of the form " + form);
    }
    const std::optional<std::int64_t> status = takeNumber(rest);
    methods[method].failure = Error{*code, std::string(rest), status};
}

std::chrono::duration<double> parseSeconds(std::string_view text, std::string_view name)
{
    double seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc() || end != text.data() + text.size() || !(seconds >= 0) || std::isinf(seconds)) {
        throw FaultError(std::string(name) + " needs a number of seconds, not \"" + std::string(text) + "\"");
    }
    return std::chrono::duration<double>(seconds);
}

std::string_view garbageLine(std::size_t number)
{
    static constexpr std::array<std::string_view, 8> lines = {
        "{\"jsonrpc\": \"2.0\", \"id\": ",
        "\xff\xfe\xc3\x28 not text",
        "[1, 2, 3]",
        "",
        "{\"id\": 999999999, \"result\": \"late\"}",
        "[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[",
        "{\"event\": \"no.such.event\", \"result\": 1}",
        "null",
    };
    return lines[number % lines.size()];
}

} // namespace quillfen::localagent
