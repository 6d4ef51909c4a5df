// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/restorepoints.h"

#include "rpc/linereader.h"
#include "state/format.h"
#include "state/values.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <vector>

namespace quillfen {

namespace {

/// Stands between a timestamp and its label: a byte that no text in UTF-8 has.
constexpr char labelMark = '\xFF';

QString fromUtf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

bool isRecord(const json::value &element)
{
    return element.is_object();
}

/// The list under `key`, if there is a record in it.
const json::array *recordsUnder(const Record &answer, std::string_view key)
{
    const json::value *const value = answer.if_contains(key);
    const json::array *const list = value == nullptr ? nullptr : value->if_array();
    return list != nullptr && std::any_of(list->begin(), list->end(), isRecord) ? list : nullptr;
}

/// What the text under "raw" holds, null when that is no JSON.
json::value rawAnswer(const Record &answer)
{
    const json::value *const raw = answer.if_contains("raw");
    if (raw == nullptr || !raw->is_string()) {
        return nullptr;
    }
    json::parse_options options;
    options.max_depth = LineReader::maxDepth; // as deep as if the points had come in the answer itself
    json::error_code error;
    json::value parsed =
        json::parse(raw->get_string(), error, json::make_shared_resource<json::monotonic_resource>(), options);
    if (error) {
        return nullptr;
    }
    return parsed;
}

/// Appends `str` of the value, nearly always a text already.
void append(std::string &texts, const json::value *value)
{
    if (value != nullptr && value->is_string()) {
        texts += value->get_string();
    } else if (value != nullptr) {
        texts += str(value).toStdString();
    }
}

} // namespace

struct RestorePoints::Data {
    std::vector<std::int64_t> moments;
    std::string texts;               ///< of one point after the other: its timestamp, and a mark and its label
    std::vector<std::size_t> begins; ///< of each point's texts, and the end of the last

    void add(const json::array &list);
    void add(const Record &point);
    void sort();

    [[nodiscard]] std::size_t size() const { return begins.size() - 1; }
    [[nodiscard]] std::string_view textsOf(std::size_t place) const
    {
        return std::string_view(texts).substr(begins[place], begins[place + 1] - begins[place]);
    }
    [[nodiscard]] std::string_view timestamp(std::size_t place) const
    {
        const std::string_view all = textsOf(place);
        return all.substr(0, all.find(labelMark));
    }
    [[nodiscard]] std::string_view label(std::size_t place) const
    {
        const std::string_view all = textsOf(place);
        const std::size_t mark = all.find(labelMark);
        return mark == std::string_view::npos ? std::string_view() : all.substr(mark + 1);
    }

    bool inOrder = true;

private:
    void rearrange();
};

void RestorePoints::Data::add(const json::array &list)
{
    constexpr std::size_t usualTimestamp = 20; // 2026-11-15T21:04:05Z
    moments.reserve(list.size());
    begins.reserve(list.size() + 1);
    texts.reserve(list.size() * usualTimestamp);
    begins.push_back(0);
    for (const json::value &element : list) {
        if (const Record *const point = element.if_object()) {
            add(*point);
        }
    }
    texts.shrink_to_fit();
}

void RestorePoints::Data::add(const Record &point)
{
    const std::size_t begin = begins.back();
    append(texts, point.if_contains("timestamp"));
    const std::size_t length = texts.size() - begin;
    const std::string_view fresh(texts.data() + begin, length);
    if (const std::optional<Instant> moment = parseDate(fresh)) {
        moments.push_back(moment->time_since_epoch().count());
    }
    inOrder = inOrder && (begins.size() < 2 || timestamp(begins.size() - 2) <= fresh);

    if (const json::value *const label = point.if_contains("label")) {
        texts += labelMark;
        append(texts, label);
        if (texts.size() == begin + length + 1) {
            texts.pop_back();
        }
    }
    begins.push_back(texts.size());
}

/// They come in order nearly always, and finding that out costs a fraction of sorting.
void RestorePoints::Data::sort()
{
    if (!inOrder) {
        rearrange();
    }
    // Not the same order: texts may carry zones.
    if (!std::is_sorted(moments.begin(), moments.end())) {
        std::sort(moments.begin(), moments.end());
    }
}

void RestorePoints::Data::rearrange()
{
    std::vector<std::size_t> places(size());
    std::iota(places.begin(), places.end(), 0);
    std::stable_sort(places.begin(), places.end(),
                     [this](std::size_t left, std::size_t right) { return timestamp(left) < timestamp(right); });
    std::string sortedTexts;
    sortedTexts.reserve(texts.size());
    std::vector<std::size_t> sortedBegins;
    sortedBegins.reserve(begins.size());
    sortedBegins.push_back(0);
    for (const std::size_t place : places) {
        sortedTexts += textsOf(place);
        sortedBegins.push_back(sortedTexts.size());
    }
    texts = std::move(sortedTexts);
    begins = std::move(sortedBegins);
    inOrder = true;
}

RestorePoints::RestorePoints()
{
    static const std::shared_ptr<const Data> none = [] {
        auto data = std::make_shared<Data>();
        data->begins.push_back(0);
        return data;
    }();
    m_data = none;
}

RestorePoints RestorePoints::of(const json::value &answer)
{
    const Record &record = object(&answer);
    std::optional<json::value> raw; // keeps what the list lies in
    const json::array *list = recordsUnder(record, "recovery_points");
    if (list == nullptr) {
        raw.emplace(rawAnswer(record));
        list = recordsUnder(object(&*raw), "recovery_points");
    }
    if (list == nullptr) {
        list = recordsUnder(record, "points");
    }
    if (list == nullptr) {
        return {};
    }
    const auto data = std::make_shared<Data>();
    data->add(*list);
    data->sort();
    return RestorePoints(data);
}

std::size_t RestorePoints::size() const noexcept
{
    return m_data->size();
}

QString RestorePoints::timestamp(std::size_t place) const
{
    return fromUtf8(m_data->timestamp(place));
}

QString RestorePoints::label(std::size_t place) const
{
    return fromUtf8(m_data->label(place));
}

std::size_t RestorePoints::placeOf(const QString &timestamp) const
{
    const QByteArray wanted = timestamp.toUtf8();
    const std::string_view text(wanted.constData(), static_cast<std::size_t>(wanted.size()));
    std::size_t first = 0;
    for (std::size_t count = size(); count > 0;) {
        const std::size_t middle = first + count / 2;
        if (m_data->timestamp(middle) < text) {
            first = middle + 1;
            count -= count / 2 + 1;
        } else {
            count /= 2;
        }
    }
    return first;
}

std::span<const std::int64_t> RestorePoints::moments() const noexcept
{
    return m_data->moments;
}

std::size_t RestorePoints::bytes() const noexcept
{
    return m_data->moments.capacity() * sizeof(std::int64_t) + m_data->begins.capacity() * sizeof(std::size_t) +
           m_data->texts.capacity();
}

bool operator==(const RestorePoints &left, const RestorePoints &right)
{
    return left.m_data == right.m_data ||
           (left.m_data->begins == right.m_data->begins && left.m_data->texts == right.m_data->texts);
}

} // namespace quillfen
