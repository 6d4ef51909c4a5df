// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/json.h"

#include <QString>

#include <optional>

namespace quillfen {

/// Where and why a typed text is not the JSON object that it should be.
struct JsonProblem {
    qsizetype position = 0; ///< in the text, in UTF-16 units; its length when something is missing at the end
    QString message;

    bool operator==(const JsonProblem &) const = default;
};

/// The JSON object that a text holds (RFC 8259); an empty one for any other text.
[[nodiscard]] json::object objectIn(const QString &text);

/// What is wrong with the text; nothing when it holds an object, or nothing at all.
[[nodiscard]] std::optional<JsonProblem> problemIn(const QString &text);

} // namespace quillfen
