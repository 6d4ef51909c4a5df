// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/masking.h"

#include "rpc/json.h"

#include <QUtf8StringView>

#include <algorithm>
#include <array>
#include <cctype>

namespace quillfen {

namespace {

constexpr std::string_view mask = "••••••";
constexpr std::size_t longestLine = std::size_t{64} * 1'024;
// A shorter one may be part of any word; and nobody guards a door with three letters.
constexpr qsizetype shortestSecret = 4;

constexpr std::array<std::string_view, 6> secretNames{"code", "token", "secret", "password", "passphrase", "key"};

bool isSecretName(std::string_view name)
{
    std::string lower(name);
    std::ranges::transform(lower, lower.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return std::ranges::any_of(secretNames, [&lower](std::string_view secret) {
        return lower == secret || (lower.ends_with(secret) && lower.at(lower.size() - secret.size() - 1) == '_');
    });
}

/// Whether anything was masked.
bool maskIn(json::value &value, bool isSecret, QStringList &secrets)
{
    bool found = false;
    if (json::object *const object = value.if_object()) {
        for (auto &member : *object) {
            found |= maskIn(member.value(), isSecret || isSecretName(member.key()), secrets);
        }
    } else if (json::array *const array = value.if_array()) {
        for (json::value &element : *array) {
            found |= maskIn(element, isSecret, secrets);
        }
    } else if (isSecret && (value.is_string() || value.is_number())) {
        const std::string text = value.is_string() ? std::string(value.get_string()) : json::serialize(value);
        secrets.append(QString::fromStdString(text));
        if (const std::size_t end = text.find_last_of("=/"); end != std::string::npos && end + 1 < text.size()) {
            secrets.append(QString::fromStdString(text.substr(end + 1))); // a link's code may be quoted alone
        }
        value = mask;
        found = true;
    }
    return found;
}

/// What is too long to be kept, and to be searched for secrets while somebody waits, leaves its beginning.
std::string beginningOf(std::string_view line)
{
    constexpr std::string_view parametersBegin = R"(,"params":)";
    const std::size_t end = std::min(line.find(parametersBegin), line.size());
    return std::string(line.substr(0, end)) + "… (+" + std::to_string(line.size() - end) + " bytes)";
}

} // namespace

MaskedLine masked(std::string_view requestLine)
{
    while (requestLine.ends_with('\n')) {
        requestLine.remove_suffix(1);
    }
    MaskedLine result;
    if (requestLine.size() > longestLine) {
        result.line = beginningOf(requestLine);
        result.isWhole = false;
        return result;
    }
    boost::system::error_code problem;
    json::parse_options deep;
    deep.max_depth = longestLine;
    json::value request = json::parse(requestLine, problem, {}, deep);
    if (problem) {
        return result; // not one of ours: better nothing than a secret
    }
    json::object *const object = request.if_object();
    json::value *const params = object == nullptr ? nullptr : object->if_contains("params");
    const bool changed = params != nullptr && maskIn(*params, false, result.secrets);
    // The longest first: one may be a part of another.
    std::ranges::stable_sort(result.secrets, std::ranges::greater(), &QString::size);
    result.line = changed ? json::serialize(request) : std::string(requestLine);
    return result;
}

QString without(const QStringList &secrets, QString text)
{
    for (const QString &secret : secrets) {
        if (secret.size() >= shortestSecret) {
            text.replace(secret, QString::fromUtf8(mask.data(), static_cast<qsizetype>(mask.size())));
        }
    }
    return text;
}

} // namespace quillfen
