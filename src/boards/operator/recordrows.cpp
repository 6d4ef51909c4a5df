// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/recordrows.h"

#include "state/searchkey.h"

#include <QCollator>

#include <algorithm>

namespace quillfen {

namespace {

/// Stands between the texts of a record, where no search can reach across.
constexpr QChar seam = u'\n';

/// Brings `places` into the order of their keys; equal ones stay as they are.
template <typename Key>
void sortBy(std::vector<qsizetype> &places, const std::vector<Key> &keys, Sorting sorting)
{
    const auto key = [&keys](qsizetype place) -> const Key & { return keys[static_cast<std::size_t>(place)]; };
    std::ranges::stable_sort(places, [&](qsizetype one, qsizetype other) {
        return sorting == Sorting::Ascending ? key(one) < key(other) : key(other) < key(one);
    });
}

/// The user's order of words, and numbers in them as numbers. The texts are folded already: where there is no locale,
/// the rules would tell upper case from lower.
QCollator collator()
{
    QCollator rules;
    rules.setNumericMode(true);
    return rules;
}

} // namespace

RecordRows::RecordRows(std::vector<RecordField> fields) : m_fields(std::move(fields)) {}

const Record &RecordRows::record(int row) const
{
    return m_records.at(m_shown[static_cast<std::size_t>(row)]);
}

std::int64_t RecordRows::id(int row) const
{
    return num(record(row), "id");
}

void RecordRows::setRecords(const Records &records, const Wanted &wanted)
{
    if (records.constData() != m_records.constData() || records.size() != m_records.size()) {
        m_records = records;
        m_folded.clear();
    }
    m_wanted = wanted;
    choose();
}

void RecordRows::search(const QString &query)
{
    m_key = searchKey(query);
    find();
}

void RecordRows::sort(int field, Sorting sorting)
{
    m_field = sorting == Sorting::None ? -1 : field;
    m_sorting = sorting;
    choose();
}

void RecordRows::choose()
{
    m_ordered.clear();
    m_ordered.reserve(static_cast<std::size_t>(m_records.size()));
    for (qsizetype place = 0; place < m_records.size(); ++place) {
        if (!m_wanted || m_wanted(m_records.at(place))) {
            m_ordered.push_back(place);
        }
    }
    order();
    find();
}

void RecordRows::order()
{
    if (m_field < 0) {
        return;
    }
    const RecordField &field = m_fields[static_cast<std::size_t>(m_field)];
    const auto count = static_cast<std::size_t>(m_records.size());
    if (field.number) {
        std::vector<std::int64_t> keys(count);
        for (const qsizetype place : m_ordered) {
            keys[static_cast<std::size_t>(place)] = field.number(m_records.at(place));
        }
        sortBy(m_ordered, keys, m_sorting);
        return;
    }
    const QCollator rules = collator();
    std::vector<QCollatorSortKey> keys;
    keys.reserve(count);
    for (const Record &record : m_records) {
        keys.push_back(rules.sortKey(searchKey(field.text(record))));
    }
    sortBy(m_ordered, keys, m_sorting);
}

void RecordRows::find()
{
    if (m_key.isEmpty()) {
        m_shown = m_ordered;
        return;
    }
    foldUpTo(m_records.size());
    m_shown.clear();
    for (const qsizetype place : m_ordered) {
        if (m_folded[static_cast<std::size_t>(place)].contains(m_key)) {
            m_shown.push_back(place);
        }
    }
}

bool RecordRows::prepareSearch(qsizetype records)
{
    foldUpTo(std::min(m_records.size(), static_cast<qsizetype>(m_folded.size()) + records));
    return static_cast<qsizetype>(m_folded.size()) < m_records.size();
}

void RecordRows::foldUpTo(qsizetype count)
{
    m_folded.reserve(static_cast<std::size_t>(m_records.size()));
    for (auto place = static_cast<qsizetype>(m_folded.size()); place < count; ++place) {
        QString texts;
        for (const RecordField &field : m_fields) {
            if (field.text) {
                texts += field.text(m_records.at(place)) + seam;
            }
        }
        m_folded.push_back(searchKey(texts));
    }
}

} // namespace quillfen
