// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "volumestablemodel.h"

#include "state/searchkey.h"
#include "ui/lists/rowdiff.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace quillfen {

namespace {

/// More rows than a screen shows; beyond it the model announces everything instead of remembering more.
constexpr std::size_t rowsRemembered = 128;
/// Each range costs a view about a tenth of what a reset costs it.
constexpr std::size_t rangesBeforeReset = 12;

bool sameList(const Records &one, const Records &other)
{
    return one.size() == other.size() && one.constData() == other.constData();
}

bool sameName(const Record &one, const Record &other)
{
    const json::value *name = one.if_contains("name");
    const json::value *otherName = other.if_contains("name");
    return name && otherName && *name == *otherName;
}

Qt::Alignment alignment(int column)
{
    const auto which = static_cast<VolumeColumn>(column);
    const bool number = which == VolumeColumn::Size || which == VolumeColumn::Used;
    return (number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

} // namespace

VolumesTableModel::VolumesTableModel(std::shared_ptr<const AppState> state, QObject *parent)
    : QAbstractTableModel(parent), m_state(std::move(state))
{}

int VolumesTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.places.size());
}

int VolumesTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : volumeColumns;
}

QVariant VolumesTableModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return cellText(row(index.row()), static_cast<VolumeColumn>(index.column()));
    case Qt::AccessibleDescriptionRole:
        return index.column() == 0 ? rowDescription(row(index.row())) : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(alignment(index.column()));
    default:
        return {};
    }
}

QVariant VolumesTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= volumeColumns) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return columnTitle(static_cast<VolumeColumn>(section));
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant::fromValue(alignment(section));
    }
    return {};
}

VolumeRow VolumesTableModel::read(int row) const
{
    return volumeRow(*m_state, m_volumes.at(m_shown.places[static_cast<std::size_t>(row)]), m_keyFiles);
}

VolumeRow VolumesTableModel::row(int row) const
{
    if (const auto seen = m_seen.find(row); seen != m_seen.end()) {
        return seen->second;
    }
    if (m_seen.size() >= rowsRemembered) {
        m_seen.clear();
        m_forgotten = true;
    }
    return m_seen.emplace(row, read(row)).first->second;
}

std::optional<std::int64_t> VolumesTableModel::volumeId(int row) const
{
    if (row < 0 || row >= rowCount()) {
        return std::nullopt;
    }
    return m_shown.ids[static_cast<std::size_t>(row)];
}

int VolumesTableModel::rowOf(std::int64_t id) const
{
    const auto found = std::ranges::find(m_shown.ids, id);
    return found == m_shown.ids.end() ? -1 : static_cast<int>(found - m_shown.ids.begin());
}

void VolumesTableModel::refresh(const QString &query)
{
    const QString key = searchKey(query);
    if (const Records volumes = m_state->volumes(); key != m_key || !sameList(volumes, m_volumes)) {
        take(volumes, key);
    }
    announceChanges();
}

void VolumesTableModel::take(const Records &volumes, const QString &key)
{
    Shown shown = find(volumes, key);
    m_key = key;
    const RowDiff diff = rowDiff(m_shown.ids, shown.ids);
    if (diff.steps() > rangesBeforeReset) {
        reset(volumes, std::move(shown));
    } else {
        change(volumes, shown, diff);
    }
}

VolumesTableModel::Shown VolumesTableModel::find(const Records &volumes, const QString &key)
{
    Shown shown;
    if (key.isEmpty()) {
        shown.places.resize(static_cast<std::size_t>(volumes.size()));
        std::iota(shown.places.begin(), shown.places.end(), 0);
    } else {
        foldNames(volumes);
        for (std::size_t place = 0; place < m_names.size(); ++place) {
            if (m_names[place].contains(key)) {
                shown.places.push_back(static_cast<qsizetype>(place));
            }
        }
    }
    shown.ids.reserve(shown.places.size());
    for (const qsizetype place : shown.places) {
        shown.ids.push_back(num(volumes.at(place), "id"));
    }
    return shown;
}

// Folding a name costs far more than comparing it with its predecessor: the list comes anew with every refresh, its
// names hardly ever do.
void VolumesTableModel::foldNames(const Records &volumes)
{
    if (sameList(volumes, m_folded) && !m_names.empty()) {
        return;
    }
    std::vector<QString> names;
    names.reserve(static_cast<std::size_t>(volumes.size()));
    for (qsizetype place = 0; place < volumes.size(); ++place) {
        const bool known = place < m_folded.size() && sameName(volumes.at(place), m_folded.at(place));
        names.push_back(known ? std::move(m_names[static_cast<std::size_t>(place)])
                              : searchKey(str(volumes.at(place), "name")));
    }
    m_names = std::move(names);
    m_folded = volumes;
}

void VolumesTableModel::reset(const Records &volumes, Shown shown)
{
    beginResetModel();
    m_volumes = volumes;
    m_shown = std::move(shown);
    m_seen.clear();
    m_forgotten = false;
    endResetModel();
}

void VolumesTableModel::change(const Records &volumes, const Shown &shown, const RowDiff &diff)
{
    const auto range = [](auto &list, RowRange rows) {
        const auto first = list.begin() + rows.first;
        return std::pair(first, first + rows.count);
    };
    for (const RowRange rows : diff.removed) {
        beginRemoveRows({}, rows.first, rows.first + rows.count - 1);
        const auto [place, placeEnd] = range(m_shown.places, rows);
        m_shown.places.erase(place, placeEnd);
        const auto [id, idEnd] = range(m_shown.ids, rows);
        m_shown.ids.erase(id, idEnd);
        m_seen.clear();
        endRemoveRows();
    }
    // What is left stands in both lists in the same order: from here on it is read from the new one.
    Shown kept = shown;
    for (auto rows = diff.inserted.rbegin(); rows != diff.inserted.rend(); ++rows) {
        const auto [place, placeEnd] = range(kept.places, *rows);
        kept.places.erase(place, placeEnd);
    }
    m_shown.places = std::move(kept.places);
    m_volumes = volumes;
    if (!diff.isEmpty()) {
        m_seen.clear();
    }
    for (const RowRange rows : diff.inserted) {
        beginInsertRows({}, rows.first, rows.first + rows.count - 1);
        const auto [place, placeEnd] = range(shown.places, rows);
        m_shown.places.insert(m_shown.places.begin() + rows.first, place, placeEnd);
        const auto [id, idEnd] = range(shown.ids, rows);
        m_shown.ids.insert(m_shown.ids.begin() + rows.first, id, idEnd);
        m_seen.clear();
        endInsertRows();
    }
    if (!diff.isEmpty()) {
        m_seen.clear();
        m_forgotten = true;
    }
}

void VolumesTableModel::announceChanges()
{
    if (std::exchange(m_forgotten, false)) {
        m_seen.clear();
        if (rowCount() > 0) {
            Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, volumeColumns - 1));
        }
        return;
    }
    std::vector<int> changed;
    for (auto &[row, seen] : m_seen) {
        VolumeRow present = read(row);
        if (present == seen) {
            continue;
        }
        seen = std::move(present);
        changed.push_back(row);
    }
    std::ranges::sort(changed);
    for (const int row : changed) {
        Q_EMIT dataChanged(index(row, 0), index(row, volumeColumns - 1));
    }
}

} // namespace quillfen
