// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "jsontext.h"

#include <QCoreApplication>

#include <variant>

namespace quillfen {

namespace {

/// As deep as answers may be nested, so that a part of one can be sent back.
constexpr std::size_t maxDepth = 1'024;

/// Where parsing ended, in bytes, and whether only the rest is missing.
struct Stop {
    std::size_t offset = 0;
    bool early = false;
};

std::variant<json::value, Stop> parsed(const QByteArray &text)
{
    json::parse_options options;
    options.max_depth = maxDepth;
    json::stream_parser parser({}, options);
    json::error_code error;
    const auto size = static_cast<std::size_t>(text.size());
    const std::size_t taken = parser.write_some(text.constData(), size, error);
    if (error || taken < size) {
        return Stop{taken, false};
    }
    parser.finish(error);
    if (error) {
        return Stop{size, true};
    }
    return parser.release();
}

QString words(const char *text)
{
    return QCoreApplication::translate("JsonEditor", text);
}

QString messageOf(const QString &text, qsizetype position, bool early)
{
    if (early) {
        return words("The JSON is not complete: it is not sent.");
    }
    const QString before = text.left(position);
    const qsizetype line = before.count(u'\n') + 1;
    const qsizetype column = position - (before.lastIndexOf(u'\n') + 1) + 1;
    return words("Line %1, column %2 is not JSON: the text is not sent.").arg(line).arg(column);
}

} // namespace

json::object objectIn(const QString &text)
{
    std::variant<json::value, Stop> outcome = parsed(text.toUtf8());
    const auto *const value = std::get_if<json::value>(&outcome);
    return value != nullptr && value->is_object() ? value->get_object() : json::object();
}

std::optional<JsonProblem> problemIn(const QString &text)
{
    if (text.trimmed().isEmpty()) {
        return std::nullopt;
    }
    const QByteArray bytes = text.toUtf8();
    const std::variant<json::value, Stop> outcome = parsed(bytes);
    if (const auto *const value = std::get_if<json::value>(&outcome)) {
        if (value->is_object()) {
            return std::nullopt;
        }
        return JsonProblem{0, words("This is JSON, but not an object: it is not sent.")};
    }
    const Stop stop = std::get<Stop>(outcome);
    const qsizetype position = QString::fromUtf8(bytes.constData(), static_cast<qsizetype>(stop.offset)).size();
    return JsonProblem{position, messageOf(text, position, stop.early)};
}

} // namespace quillfen
