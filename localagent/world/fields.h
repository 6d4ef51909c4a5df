// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/clock.h"

#include <boost/json.hpp>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quillfen::localagent {

namespace json = boost::json;

/// A world file is not right. The text names the place.
class WorldError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads one object of a world file: what is missing gets its default, what has the wrong type is a WorldError with the
/// place in it ("volumes[2].size_gb is not a number").
class Fields final {
public:
    Fields(const json::object &object, std::string place) : m_object(object), m_place(std::move(place)) {}

    [[nodiscard]] bool has(std::string_view key) const { return m_object.contains(key); }
    [[nodiscard]] std::string text(std::string_view key, std::string_view missing = {}) const;
    [[nodiscard]] bool flag(std::string_view key, bool missing) const;
    [[nodiscard]] double number(std::string_view key, double missing = 0) const;
    [[nodiscard]] std::int64_t whole(std::string_view key, std::int64_t missing = 0) const;
    /// A size written in GB, as bytes.
    [[nodiscard]] std::int64_t size(std::string_view key, double missing = 0) const;
    /// A moment relative to `now`, like "-3h".
    [[nodiscard]] Time moment(std::string_view key, Time now, std::string_view missing = "now") const;

    /// The object under `key`; an empty one when it is missing.
    [[nodiscard]] Fields object(std::string_view key) const;
    /// The objects of the list under `key`.
    [[nodiscard]] std::vector<Fields> objects(std::string_view key) const;
    [[nodiscard]] std::vector<std::string> texts(std::string_view key) const;

    /// Throws a WorldError about `key`.
    [[noreturn]] void fail(std::string_view key, const std::string &what) const;

private:
    [[nodiscard]] const json::value *find(std::string_view key) const;
    [[nodiscard]] std::string placeOf(std::string_view key) const;
    [[nodiscard]] const json::array &list(std::string_view key) const;

    const json::object &m_object;
    std::string m_place;
};

} // namespace quillfen::localagent
