// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/activity.h"

#include <algorithm>
#include <utility>

namespace quillfen {

using std::chrono::steady_clock;

std::uint64_t Activity::begin(RunningCall call)
{
    call.id = ++m_lastId;
    call.since = now();
    call.begun = steady_clock::now();
    running.update([&call](QList<RunningCall> &all) { all.append(std::move(call)); });
    return m_lastId;
}

void Activity::end(std::uint64_t id, Outcome outcome)
{
    const auto found = std::ranges::find(running(), id, &RunningCall::id);
    if (found == running().end()) {
        return;
    }
    ActivityEntry entry;
    entry.kind = outcome.failed ? ActivityEntry::Kind::Failed : ActivityEntry::Kind::Done;
    entry.words = std::move(outcome.words);
    entry.code = outcome.code;
    entry.title = found->title;
    entry.method = found->method;
    entry.line = found->line;
    entry.took = std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now() - found->begun);
    running.update(
        [id](QList<RunningCall> &all) { all.removeIf([id](const RunningCall &call) { return call.id == id; }); });
    keep(std::move(entry));
}

void Activity::noticed(const QString &words)
{
    if (words.isEmpty()) {
        return;
    }
    ActivityEntry entry;
    entry.words = words;
    keep(std::move(entry));
}

void Activity::progress(std::string_view event, const QString &message)
{
    const auto isMeant = [event](const RunningCall &call) {
        return !call.progressEvent.empty() && call.progressEvent == event;
    };
    if (message.isEmpty() || std::ranges::none_of(running(), isMeant)) {
        return;
    }
    running.update([&](QList<RunningCall> &all) {
        for (RunningCall &call : all) {
            if (isMeant(call)) {
                call.lastLine = message;
                call.saidAt = now();
            }
        }
    });
}

const RunningCall *Activity::find(std::string_view method) const
{
    const auto found = std::ranges::find_if(
        running(), [method](const RunningCall &call) { return call.method == method && !call.title.isEmpty(); });
    return found == running().end() ? nullptr : &*found;
}

void Activity::keep(ActivityEntry entry)
{
    entry.number = ++m_lastNumber;
    entry.at = now();
    past.update([&entry](std::deque<ActivityEntry> &all) {
        if (all.size() == mostEntries) {
            all.pop_front();
        }
        all.push_back(std::move(entry));
    });
}

} // namespace quillfen
