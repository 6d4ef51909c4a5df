// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/fields.h"

#include "localagent/world/state.h"

namespace quillfen::localagent {

namespace {

const json::object noObject;
const json::array noList;

} // namespace

std::string Fields::text(std::string_view key, std::string_view missing) const
{
    const json::value *value = find(key);
    if (value == nullptr) {
        return std::string(missing);
    }
    if (!value->is_string()) {
        fail(key, "is not a text");
    }
    return std::string(value->get_string());
}

bool Fields::flag(std::string_view key, bool missing) const
{
    const json::value *value = find(key);
    if (value != nullptr && !value->is_bool()) {
        fail(key, "is neither true nor false");
    }
    return value == nullptr ? missing : value->get_bool();
}

double Fields::number(std::string_view key, double missing) const
{
    const json::value *value = find(key);
    if (value != nullptr && !value->is_number()) {
        fail(key, "is not a number");
    }
    return value == nullptr ? missing : value->to_number<double>();
}

std::int64_t Fields::whole(std::string_view key, std::int64_t missing) const
{
    const json::value *value = find(key);
    if (value != nullptr && !value->is_int64()) {
        fail(key, "is not a whole number");
    }
    return value == nullptr ? missing : value->get_int64();
}

std::int64_t Fields::size(std::string_view key, double missing) const
{
    const double amount = number(key, missing);
    if (!(amount >= 0 && amount < 1e9)) {
        fail(key, "is not a size in GB");
    }
    return static_cast<std::int64_t>(amount * static_cast<double>(gigabyte));
}

Time Fields::moment(std::string_view key, Time now, std::string_view missing) const
{
    try {
        return parseMoment(text(key, missing), now);
    } catch (const std::invalid_argument &error) {
        fail(key, std::string("is wrong: ") + error.what());
    }
}

Fields Fields::object(std::string_view key) const
{
    const json::value *value = find(key);
    if (value != nullptr && !value->is_object()) {
        fail(key, "is not an object");
    }
    return {value == nullptr ? noObject : value->get_object(), placeOf(key)};
}

std::vector<Fields> Fields::objects(std::string_view key) const
{
    std::vector<Fields> all;
    for (const json::value &value : list(key)) {
        const std::string place = placeOf(key) + "[" + std::to_string(all.size()) + "]";
        if (!value.is_object()) {
            throw WorldError(place + " is not an object");
        }
        all.emplace_back(value.get_object(), place);
    }
    return all;
}

std::vector<std::string> Fields::texts(std::string_view key) const
{
    std::vector<std::string> all;
    for (const json::value &value : list(key)) {
        if (!value.is_string()) {
            fail(key, "is not a list of texts");
        }
        all.emplace_back(value.get_string());
    }
    return all;
}

void Fields::fail(std::string_view key, const std::string &what) const
{
    throw WorldError(placeOf(key) + " " + what);
}

const json::value *Fields::find(std::string_view key) const
{
    return m_object.if_contains(key);
}

std::string Fields::placeOf(std::string_view key) const
{
    return m_place.empty() ? std::string(key) : m_place + "." + std::string(key);
}

const json::array &Fields::list(std::string_view key) const
{
    const json::value *value = find(key);
    if (value != nullptr && !value->is_array()) {
        fail(key, "is not a list");
    }
    return value == nullptr ? noList : value->get_array();
}

} // namespace quillfen::localagent
