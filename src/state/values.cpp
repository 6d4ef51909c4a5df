// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/values.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

namespace quillfen {

namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

QString fromUtf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::int64_t clamped(std::uint64_t number) noexcept
{
    return number > static_cast<std::uint64_t>(largest) ? largest : static_cast<std::int64_t>(number);
}

QString textOf(double number)
{
    if (number == std::round(number)) {
        return QString::number(truncated(number));
    }
    std::array<char, 32> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return QString::fromLatin1(buffer.data(), end - buffer.data());
}

/// One optional sign, then digits and nothing else; anything different is 0.
std::int64_t parsed(std::string_view text) noexcept
{
    const char *first = text.data();
    const char *const last = first + text.size();
    if (first != last && *first == '+') {
        ++first;
        if (first != last && *first == '-') {
            return 0;
        }
    }
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(first, last, number);
    return error == std::errc() && end == last ? number : 0;
}

} // namespace

QString str(const json::value *value)
{
    if (value == nullptr) {
        return {};
    }
    switch (value->kind()) {
    case json::kind::null:
        return {};
    case json::kind::string:
        return fromUtf8(value->get_string());
    case json::kind::bool_:
        return QString::number(value->get_bool() ? 1 : 0);
    case json::kind::int64:
        return QString::number(value->get_int64());
    case json::kind::uint64:
        return QString::number(clamped(value->get_uint64()));
    case json::kind::double_:
        return textOf(value->get_double());
    case json::kind::array:
    case json::kind::object:
        break;
    }
    return fromUtf8(json::serialize(*value));
}

QString str(const Record &record, std::string_view key)
{
    return str(record.if_contains(key));
}

std::int64_t num(const json::value *value)
{
    if (value == nullptr) {
        return 0;
    }
    switch (value->kind()) {
    case json::kind::bool_:
        return value->get_bool() ? 1 : 0;
    case json::kind::int64:
        return value->get_int64();
    case json::kind::uint64:
        return clamped(value->get_uint64());
    case json::kind::double_:
        return truncated(value->get_double());
    case json::kind::string:
        return parsed(value->get_string());
    case json::kind::null:
    case json::kind::array: // The text of a list or an object begins with a bracket, so it is no number.
    case json::kind::object:
        break;
    }
    return 0;
}

std::int64_t num(const Record &record, std::string_view key)
{
    return num(record.if_contains(key));
}

std::int64_t truncated(double number) noexcept
{
    // 2^63 is a double, the largest integer below it is not.
    constexpr double limit = 9'223'372'036'854'775'808.0;
    if (std::isnan(number)) {
        return 0;
    }
    if (number >= limit) {
        return largest;
    }
    return number < -limit ? std::numeric_limits<std::int64_t>::min() : static_cast<std::int64_t>(number);
}

bool isTrue(const Record &record, std::string_view key)
{
    const json::value *const value = record.if_contains(key);
    return value != nullptr && value->is_bool() && value->get_bool();
}

const Record &object(const json::value *value)
{
    static const Record empty;
    const Record *const record = value == nullptr ? nullptr : value->if_object();
    return record == nullptr ? empty : *record;
}

const Record &object(const Record &record, std::string_view key)
{
    return object(record.if_contains(key));
}

Records records(const json::value *value)
{
    const json::array *const list = value == nullptr ? nullptr : value->if_array();
    Records all;
    if (list != nullptr) {
        all.reserve(static_cast<qsizetype>(list->size()));
        for (const json::value &element : *list) {
            all.emplaceBack(object(&element));
        }
    }
    return all;
}

Record takeObject(json::value &&value)
{
    Record *const record = value.if_object();
    return record == nullptr ? Record() : Record(std::move(*record));
}

Records takeRecords(json::value &&value)
{
    json::array *const list = value.if_array();
    Records all;
    if (list != nullptr) {
        all.reserve(static_cast<qsizetype>(list->size()));
        for (json::value &element : *list) {
            all.emplaceBack(takeObject(std::move(element)));
        }
    }
    return all;
}

} // namespace quillfen
