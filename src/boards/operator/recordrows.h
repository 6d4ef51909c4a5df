// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/values.h"
#include "ui/lists/columnheader.h"

#include <QString>

#include <functional>
#include <vector>

namespace quillfen {

/// What a list can be sorted and searched by: a text, or a number where a text would sort wrongly.
struct RecordField {
    QString caption;                                    ///< empty: nothing to sort by
    std::function<QString(const Record &)> text;        ///< searched, and sorted as words are
    std::function<std::int64_t(const Record &)> number; ///< sorted by instead, where there is one
};

/// Records as a list shows them: those that the search finds, in the chosen order. Knows texts only as far as it is
/// asked to search or sort; what a row says is read from its record when it is seen.
class RecordRows final {
public:
    using Wanted = std::function<bool(const Record &)>;

    explicit RecordRows(std::vector<RecordField> fields);

    [[nodiscard]] const std::vector<RecordField> &fields() const noexcept { return m_fields; }
    [[nodiscard]] int count() const noexcept { return static_cast<int>(m_shown.size()); }
    /// How many there are without the search.
    [[nodiscard]] int total() const noexcept { return static_cast<int>(m_ordered.size()); }
    [[nodiscard]] const Record &record(int row) const;
    /// Which record of the list the row shows: two with the same id stay two.
    [[nodiscard]] std::int64_t id(int row) const;

    /// The list as it came, and which of it to show at all; all when `wanted` is empty.
    void setRecords(const Records &records, const Wanted &wanted = {});
    /// Shows the records that have `query` in one of their texts.
    void search(const QString &query);
    void sort(int field, Sorting sorting);
    /// Makes some more records ready to be searched, so that the first search has nothing left to do; true while there
    /// are more. A search that comes before does the rest by itself.
    bool prepareSearch(qsizetype records);

private:
    void choose();
    void order();
    void find();
    void foldUpTo(qsizetype count);

    std::vector<RecordField> m_fields;
    Records m_records;
    Wanted m_wanted;
    QString m_key;
    int m_field = -1;
    Sorting m_sorting = Sorting::None;
    std::vector<QString> m_folded; ///< of the first records, of all once somebody searches
    std::vector<qsizetype> m_ordered;
    std::vector<qsizetype> m_shown;
};

} // namespace quillfen
