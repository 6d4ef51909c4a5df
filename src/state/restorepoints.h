// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/json.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace quillfen {

/// A volume's restore points in the order of their times as text, kept as compactly as a million of them ask for: about
/// 36 bytes each, where the records they come in take five times that.
///
/// A value: never changed once read, and copying it costs nothing. Reading any of it is safe from any thread.
class RestorePoints final {
public:
    /// None.
    RestorePoints();

    /// Reads an answer of "restore_points.list". Agents differ in where they put the points: the first place with any
    /// in it counts. What is no record is dropped. Any thread; for the large answers, not the main one.
    [[nodiscard]] static RestorePoints of(const json::value &answer);

    [[nodiscard]] std::size_t size() const noexcept;
    [[nodiscard]] bool isEmpty() const noexcept { return size() == 0; }

    /// The "timestamp" of a point as the agent wrote it, which need be no moment at all.
    [[nodiscard]] QString timestamp(std::size_t place) const;
    /// Its "label", empty when it has none.
    [[nodiscard]] QString label(std::size_t place) const;

    /// The place of the first point whose timestamp is `timestamp` or comes after it; `size()` when there is none.
    [[nodiscard]] std::size_t placeOf(const QString &timestamp) const;

    /// The moments of all points whose timestamp is one, in milliseconds since 1970 (UTC), ascending.
    [[nodiscard]] std::span<const std::int64_t> moments() const noexcept;

    /// The memory that the points take.
    [[nodiscard]] std::size_t bytes() const noexcept;

    /// Whether both come from the same reading: cheap, and all that a view has to know to leave itself alone.
    [[nodiscard]] bool isSameAs(const RestorePoints &other) const noexcept { return m_data == other.m_data; }
    /// Whether both hold the same points.
    friend bool operator==(const RestorePoints &left, const RestorePoints &right);

private:
    struct Data;
    explicit RestorePoints(std::shared_ptr<const Data> data) noexcept : m_data(std::move(data)) {}

    std::shared_ptr<const Data> m_data;
};

} // namespace quillfen
