// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/json.h"

#include <QList>
#include <QString>

#include <cstdint>
#include <string_view>

namespace quillfen {

/// A record as the agent sent it. Fields are read with `str` and `num`, never decoded into a fixed type.
using Record = json::object;
/// A list of records; copying it costs nothing until somebody writes (implicit sharing).
using Records = QList<Record>;

/// Any value as text: numbers in their shortest form, null and absent (nullptr) empty. Any thread.
[[nodiscard]] QString str(const json::value *value);
[[nodiscard]] QString str(const Record &record, std::string_view key);

/// Any value as an integer: fractions truncated, texts parsed, everything unreadable 0, too large clamped. Any thread.
[[nodiscard]] std::int64_t num(const json::value *value);
[[nodiscard]] std::int64_t num(const Record &record, std::string_view key);

/// `number` without its fraction; beyond 64 bits the nearest integer there is, 0 for what is no number. Any thread.
[[nodiscard]] std::int64_t truncated(double number) noexcept;

/// True only for a JSON true; a missing key or any other kind of value is false.
[[nodiscard]] bool isTrue(const Record &record, std::string_view key);

/// The value read as an object, an empty one when it is anything else.
[[nodiscard]] const Record &object(const json::value *value);
[[nodiscard]] const Record &object(const Record &record, std::string_view key);

/// The value read as a list of objects: empty when it is no list, an empty object for each element that is none.
[[nodiscard]] Records records(const json::value *value);

/// The same two readings of a value that is not needed any more. Nothing is copied, so that ten thousand records cost
/// next to nothing; what comes out, and each copy made of it, lives in the memory of the whole answer.
[[nodiscard]] Record takeObject(json::value &&value);
[[nodiscard]] Records takeRecords(json::value &&value);

} // namespace quillfen
