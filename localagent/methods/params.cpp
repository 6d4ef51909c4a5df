// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/params.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace quillfen::localagent {

namespace {

template <typename Number>
std::optional<json::value> parsedNumber(std::string_view text)
{
    Number number = {};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return json::value(number);
}

// Beyond 2^53 a float no longer says which whole number it means.
constexpr double largestExact = 9007199254740992.0;

std::optional<json::value> asWhole(const json::value &value)
{
    if (value.is_int64()) {
        return value;
    }
    if (value.is_string()) {
        return parsedNumber<std::int64_t>(value.get_string());
    }
    if (const double *number = value.if_double();
        number && std::trunc(*number) == *number && std::abs(*number) <= largestExact) {
        return json::value(static_cast<std::int64_t>(*number));
    }
    return std::nullopt;
}

std::optional<json::value> asNumber(const json::value &value)
{
    if (value.is_number()) {
        return json::value(value.to_number<double>());
    }
    const auto number = value.is_string() ? parsedNumber<double>(value.get_string()) : std::nullopt;
    return number && std::isfinite(number->get_double()) ? number : std::nullopt;
}

std::optional<json::value> asFlag(const json::value &value)
{
    if (value.is_bool()) {
        return value;
    }
    if (value == json::value("true") || value == json::value("false")) {
        return json::value(value == json::value("true"));
    }
    return std::nullopt;
}

std::optional<json::value> asText(const json::value &value, const std::vector<std::string_view> &oneOf)
{
    const json::string *text = value.if_string();
    if (text == nullptr) {
        return std::nullopt;
    }
    const bool allowed = oneOf.empty() || std::find(oneOf.begin(), oneOf.end(), std::string_view(*text)) != oneOf.end();
    return allowed ? std::optional(value) : std::nullopt;
}

std::optional<json::value> converted(const Parameter &parameter, const json::value &value)
{
    switch (parameter.type) {
    case Type::Whole:
        return asWhole(value);
    case Type::Number:
        return asNumber(value);
    case Type::Flag:
        return asFlag(value);
    case Type::Text:
        break;
    }
    return asText(value, parameter.oneOf);
}

// "volumes.status needs volume_id, a whole number"
std::string demand(std::string_view method, const Parameter &parameter)
{
    std::string text(method);
    text += parameter.required ? " needs " : " takes ";
    text += parameter.name;
    text += ", ";
    if (parameter.oneOf.empty()) {
        return text.append(typeName(parameter.type));
    }
    text += "one of ";
    for (const std::string_view choice : parameter.oneOf) {
        text.append(choice == parameter.oneOf.front() ? "" : ", ").append(choice);
    }
    return text;
}

} // namespace

Params::Params(std::string_view method, const std::vector<Parameter> &parameters, const json::object &given)
{
    for (const Parameter &parameter : parameters) {
        const json::value *value = given.if_contains(parameter.name);
        if (value == nullptr || value->is_null()) {
            if (parameter.required) {
                throw ParamsError(demand(method, parameter));
            }
            continue;
        }
        const std::optional<json::value> good = converted(parameter, *value);
        if (!good) {
            throw ParamsError(demand(method, parameter));
        }
        m_values[parameter.name] = *good;
    }
}

std::string Params::text(std::string_view name) const
{
    return std::string(m_values.at(name).as_string());
}

std::int64_t Params::whole(std::string_view name) const
{
    return m_values.at(name).as_int64();
}

std::optional<std::string> Params::optionalText(std::string_view name) const
{
    return m_values.contains(name) ? std::optional(text(name)) : std::nullopt;
}

std::optional<std::int64_t> Params::optionalWhole(std::string_view name) const
{
    return m_values.contains(name) ? std::optional(whole(name)) : std::nullopt;
}

std::optional<double> Params::optionalNumber(std::string_view name) const
{
    return m_values.contains(name) ? std::optional(m_values.at(name).as_double()) : std::nullopt;
}

std::optional<bool> Params::optionalFlag(std::string_view name) const
{
    return m_values.contains(name) ? std::optional(m_values.at(name).as_bool()) : std::nullopt;
}

std::string_view typeName(Type type)
{
    switch (type) {
    case Type::Whole:
        return "a whole number";
    case Type::Number:
        return "a number";
    case Type::Flag:
        return "true or false";
    case Type::Text:
        break;
    }
    return "a text";
}

} // namespace quillfen::localagent
