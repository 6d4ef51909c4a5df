// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/activity/activitymodel.h"

#include "state/searchkey.h"
#include "ui/lists/rowdiff.h"

#include <algorithm>

namespace quillfen {

namespace {

/// A search looks so far into the words; a row shows no more of them.
constexpr qsizetype longestSearched = 1'024;

QString keyOf(const QString &words, const QString &title, const std::string &method)
{
    return searchKey(words.left(longestSearched) + u'\n' + title.left(longestSearched) + u'\n' +
                     QString::fromStdString(method));
}

} // namespace

ActivityModel::ActivityModel(const Activity &activity, QObject *parent)
    : QAbstractListModel(parent), m_activity(activity)
{
    sync();
}

int ActivityModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : runningCount() + static_cast<int>(m_past.size());
}

QVariant ActivityModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) ||
        (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)) {
        return {};
    }
    const std::optional<ActivityRow> row = this->row(index.row());
    return row ? QVariant(spokenLine(*row)) : QVariant();
}

std::optional<ActivityRow> ActivityModel::row(int row) const
{
    const Key shown = key(row);
    if (const RunningCall *running = call(shown)) {
        return activityRow(*running);
    }
    const ActivityEntry *const done = entry(shown);
    return done == nullptr ? std::nullopt : std::optional(activityRow(*done));
}

ActivityModel::Key ActivityModel::key(int row) const
{
    if (row < runningCount()) {
        return {true, m_running.at(static_cast<std::size_t>(row))};
    }
    const auto fromNewest = static_cast<std::size_t>(row - runningCount());
    return {false, m_past.at(m_past.size() - 1 - fromNewest)};
}

int ActivityModel::rowOf(const Key &key) const
{
    if (key.runs) {
        const auto found = std::ranges::find(m_running, key.number);
        return found == m_running.end() ? -1 : static_cast<int>(found - m_running.begin());
    }
    const auto found = std::ranges::lower_bound(m_past, key.number);
    const bool shown = found != m_past.end() && *found == key.number;
    return shown ? runningCount() + static_cast<int>(m_past.end() - found) - 1 : -1;
}

const RunningCall *ActivityModel::call(const Key &key) const
{
    const QList<RunningCall> &all = m_activity.running();
    const auto found = std::ranges::find(all, key.number, &RunningCall::id);
    return !key.runs || found == all.end() ? nullptr : &*found;
}

const ActivityEntry *ActivityModel::entry(const Key &key) const
{
    // The numbers of what is kept follow each other.
    const std::deque<ActivityEntry> &all = m_activity.past();
    const bool isThere = !key.runs && key.number >= oldest() && key.number - oldest() < all.size();
    return isThere ? &all[static_cast<std::size_t>(key.number - oldest())] : nullptr;
}

std::uint64_t ActivityModel::oldest() const
{
    return m_activity.past().empty() ? m_newest + 1 : m_activity.past().front().number;
}

void ActivityModel::sync()
{
    syncRunning();
    letGo();
    takeOver();
}

void ActivityModel::syncRunning()
{
    if (m_runningVersion == m_activity.running.version()) {
        return;
    }
    m_runningVersion = m_activity.running.version();
    std::vector<std::uint64_t> now;
    for (const RunningCall &call : m_activity.running()) {
        if (accepts(call)) {
            now.insert(now.begin(), call.id);
        }
    }
    const RowDiff diff = rowDiff(m_running, now);
    for (const RowRange &range : diff.removed) {
        beginRemoveRows({}, range.first, range.first + range.count - 1);
        const auto first = m_running.begin() + range.first;
        m_running.erase(first, first + range.count);
        endRemoveRows();
    }
    for (const RowRange &range : diff.inserted) {
        beginInsertRows({}, range.first, range.first + range.count - 1);
        const auto first = now.begin() + range.first;
        m_running.insert(m_running.begin() + range.first, first, first + range.count);
        endInsertRows();
    }
    if (!m_running.empty()) {
        Q_EMIT dataChanged(index(0), index(runningCount() - 1)); // what was last heard
    }
}

void ActivityModel::letGo()
{
    const auto end = std::ranges::lower_bound(m_past, oldest());
    if (end != m_past.begin()) {
        const int count = static_cast<int>(end - m_past.begin());
        beginRemoveRows({}, rowCount() - count, rowCount() - 1);
        m_past.erase(m_past.begin(), end);
        endRemoveRows();
    }
    while (!m_keys.empty() && m_firstKey < oldest()) {
        m_keys.pop_front();
        ++m_firstKey;
    }
}

void ActivityModel::takeOver()
{
    if (m_activity.past().empty()) {
        return;
    }
    const std::uint64_t last = m_activity.past().back().number;
    const std::uint64_t first = std::max(m_newest + 1, oldest());
    if (!m_search.isEmpty()) {
        foldTo(last);
    }
    std::vector<std::uint64_t> fresh;
    for (std::uint64_t number = first; number <= last; ++number) {
        if (accepts(*entry({false, number}))) {
            fresh.push_back(number);
        }
    }
    m_newest = last;
    if (!fresh.empty()) {
        beginInsertRows({}, runningCount(), runningCount() + static_cast<int>(fresh.size()) - 1);
        m_past.insert(m_past.end(), fresh.begin(), fresh.end());
        endInsertRows();
    }
}

void ActivityModel::setFilter(const QString &search, bool problemsOnly)
{
    const QString key = searchKey(search.trimmed());
    if (key == m_search && problemsOnly == m_problemsOnly) {
        return;
    }
    sync();
    m_search = key;
    m_problemsOnly = problemsOnly;
    if (!m_search.isEmpty()) {
        foldTo(m_newest);
    }
    beginResetModel();
    m_running.clear();
    for (const RunningCall &call : m_activity.running()) {
        if (accepts(call)) {
            m_running.insert(m_running.begin(), call.id);
        }
    }
    m_past.clear();
    for (const ActivityEntry &entry : m_activity.past()) {
        if (accepts(entry)) {
            m_past.push_back(entry.number);
        }
    }
    endResetModel();
}

/// Folding costs more than looking: each entry is folded once, and none before somebody searches.
void ActivityModel::foldTo(std::uint64_t last)
{
    if (m_keys.empty()) {
        m_firstKey = oldest();
    }
    for (std::uint64_t number = m_firstKey + m_keys.size(); number <= last; ++number) {
        const ActivityEntry &next = *entry({false, number});
        m_keys.push_back(keyOf(next.words, next.title, next.method));
    }
}

bool ActivityModel::accepts(const RunningCall &call) const
{
    return !m_problemsOnly && (m_search.isEmpty() || keyOf({}, call.title, call.method).contains(m_search));
}

bool ActivityModel::accepts(const ActivityEntry &entry) const
{
    if (m_problemsOnly && entry.kind != ActivityEntry::Kind::Failed) {
        return false;
    }
    return m_search.isEmpty() || m_keys.at(static_cast<std::size_t>(entry.number - m_firstKey)).contains(m_search);
}

} // namespace quillfen
