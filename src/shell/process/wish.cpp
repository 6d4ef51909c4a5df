// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/process/wish.h"

#include "state/values.h"

#include <algorithm>

namespace quillfen {

namespace {

/// Codes are a dozen characters, links with their host and path well below a hundred.
constexpr qsizetype longest = 2048;

std::string_view text(const QByteArray &utf8)
{
    return {utf8.constData(), static_cast<std::size_t>(utf8.size())};
}

} // namespace

bool isAcceptable(const QString &codeOrLink)
{
    return codeOrLink.size() <= longest &&
           std::ranges::none_of(codeOrLink, [](QChar letter) { return letter.category() == QChar::Other_Control; });
}

QByteArray lineOf(const Wish &wish)
{
    const auto utf8 = [](const QString &words) { return json::string(text(words.toUtf8())); };
    json::array links;
    for (const QString &link : wish.links) {
        links.push_back(utf8(link));
    }
    const json::object record = {{"show", wish.show},
                                 {"code", utf8(wish.code)},
                                 {"links", std::move(links)},
                                 {"action", utf8(wish.action)},
                                 {"activation_token", utf8(wish.activationToken)},
                                 {"startup_id", utf8(wish.startupId)}};
    return QByteArray::fromStdString(json::serialize(record)) + '\n';
}

std::optional<Wish> wishFromLine(const QByteArray &line)
{
    json::error_code error;
    const json::value value = json::parse(text(line), error);
    if (error || !value.is_object()) {
        return std::nullopt;
    }
    const json::object &record = value.get_object();
    const json::value *show = record.if_contains("show");
    const json::value *links = record.if_contains("links");
    if (show == nullptr || !show->is_bool() || links == nullptr || !links->is_array()) {
        return std::nullopt;
    }
    Wish wish;
    wish.show = show->get_bool();
    wish.code = str(record, "code");
    for (const json::value &link : links->get_array()) {
        if (link.is_string()) {
            wish.links.append(
                QString::fromUtf8(link.get_string().data(), static_cast<qsizetype>(link.get_string().size())));
        }
    }
    wish.action = str(record, "action");
    wish.activationToken = str(record, "activation_token");
    wish.startupId = str(record, "startup_id");
    return wish;
}

} // namespace quillfen
