// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <boost/json.hpp>

#include <concepts>
#include <string_view>
#include <type_traits>
#include <utility>

namespace quillfen {

namespace json = boost::json;

namespace detail {

inline json::string toJson(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    return json::string(utf8.constData(), static_cast<std::size_t>(utf8.size()));
}

template <typename T>
requires(!std::same_as<std::remove_cvref_t<T>, QString>) json::value toJson(T &&value)
{
    return json::value(std::forward<T>(value));
}

inline void addPairs(json::object &) {}

template <typename Value, typename... Rest>
void addPairs(json::object &object, std::string_view key, Value &&value, Rest &&...rest)
{
    object[key] = toJson(std::forward<Value>(value));
    addPairs(object, std::forward<Rest>(rest)...);
}

} // namespace detail

/// Builds the parameters of a call: `params("volume_id", id, "name", name)`. Texts may be QString or UTF-8.
/// Use it on a line of its own before the `co_await` (a braced list inside one does not compile with g++ 12).
template <typename... Pairs>
requires(sizeof...(Pairs) % 2 == 0) [[nodiscard]] json::object params(Pairs &&...pairs)
{
    json::object object;
    detail::addPairs(object, std::forward<Pairs>(pairs)...);
    return object;
}

} // namespace quillfen
