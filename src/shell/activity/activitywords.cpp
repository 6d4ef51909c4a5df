// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/activity/activitywords.h"

#include "state/format.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QStringList>

#include <algorithm>

namespace quillfen {

using namespace std::chrono;
using namespace Qt::StringLiterals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(Activity)
};

QString outcomeOf(ActivityEntry::Kind kind)
{
    switch (kind) {
    case ActivityEntry::Kind::Notice:
        break;
    case ActivityEntry::Kind::Done:
        return Words::tr("Done");
    case ActivityEntry::Kind::Failed:
        return Words::tr("Failed");
    }
    return Words::tr("Notice");
}

QColor markOf(ActivityEntry::Kind kind)
{
    switch (kind) {
    case ActivityEntry::Kind::Notice:
        break;
    case ActivityEntry::Kind::Done:
        return Theme::ok;
    case ActivityEntry::Kind::Failed:
        return Theme::danger;
    }
    return Theme::muted;
}

QString codeWords(const ActivityEntry &entry)
{
    return entry.code ? Words::tr("code %1").arg(*entry.code) : QString();
}

/// A duration that is still counted, by whole seconds.
QString countedWords(milliseconds duration)
{
    return lastedWords(floor<seconds>(std::max(duration, milliseconds(0))));
}

QString ageWords(Instant moment)
{
    const milliseconds age = now() - moment;
    return age < 1s ? Words::tr("just now") : Words::tr("%1 ago").arg(countedWords(age));
}

QString runningFor(const RunningCall &call)
{
    return countedWords(duration_cast<milliseconds>(steady_clock::now() - call.begun));
}

/// "40 % · 12 s ago"; nothing as long as nothing was said.
QString lastHeard(const RunningCall &call)
{
    return call.saidAt ? Words::tr("%1 · %2").arg(call.lastLine, ageWords(*call.saidAt)) : QString();
}

QString firstOf(std::initializer_list<QString> texts)
{
    const auto *const found = std::ranges::find_if_not(texts, &QString::isEmpty);
    return found == texts.end() ? QString() : *found;
}

ActivityRow rowAt(Instant moment)
{
    ActivityRow row;
    row.time = timeOfDay(moment);
    const QString day = shortDate(moment);
    row.day = day == shortDate(now()) ? QString() : day;
    return row;
}

/// With the zone, so that it says the same to whoever it is sent to.
QString stamp(Instant moment)
{
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(moment.time_since_epoch().count());
    return local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODateWithMs);
}

QString joined(QStringList texts, const QString &joint)
{
    texts.removeAll(QString());
    return texts.join(joint);
}

} // namespace

QString lastedWords(milliseconds duration)
{
    if (duration < 1s && duration > 0s) {
        return Words::tr("%1 ms").arg(duration.count());
    }
    if (duration < 1min) {
        const auto tenths = std::max<std::int64_t>(duration.count(), 0) / 100;
        return tenths % 10 == 0 ? Words::tr("%1 s").arg(tenths / 10)
                                : Words::tr("%1.%2 s").arg(tenths / 10).arg(tenths % 10);
    }
    if (duration < 1h) {
        return Words::tr("%1 min %2 s").arg(duration / 1min).arg((duration % 1min) / 1s);
    }
    return Words::tr("%1 h %2 min").arg(duration / 1h).arg((duration % 1h) / 1min);
}

ActivityRow activityRow(const ActivityEntry &entry)
{
    const QString method = QString::fromStdString(entry.method);
    ActivityRow row = rowAt(entry.at);
    row.words = firstOf({entry.words, entry.title, method});
    row.method = entry.words.isEmpty() && entry.title.isEmpty() ? QString() : method;
    row.aside = codeWords(entry);
    row.outcome = outcomeOf(entry.kind);
    row.mark = markOf(entry.kind);
    if (entry.kind != ActivityEntry::Kind::Notice) {
        row.lasted = lastedWords(entry.took);
    }
    return row;
}

ActivityRow activityRow(const RunningCall &call)
{
    const QString method = QString::fromStdString(call.method);
    ActivityRow row = rowAt(call.since);
    row.words = firstOf({call.title, method});
    row.aside = lastHeard(call);
    row.method = call.title.isEmpty() || !row.aside.isEmpty() ? QString() : method;
    row.outcome = Words::tr("Running");
    row.lasted = runningFor(call);
    row.mark = Theme::warn;
    row.runs = true;
    return row;
}

QString spokenLine(const ActivityRow &row)
{
    // What runs begins with what it is: there its time is the time it takes.
    const QStringList texts =
        row.runs ? QStringList{row.words, row.outcome, row.lasted, row.method, row.aside}
                 : QStringList{row.day, row.time, row.outcome, row.method, row.words, row.aside, row.lasted};
    return madeVisible(joined(texts, u", "_s));
}

ActivityFacts activityFacts(const ActivityEntry &entry)
{
    ActivityFacts facts;
    facts.outcome = outcomeOf(entry.kind);
    facts.mark = markOf(entry.kind);
    facts.method = QString::fromStdString(entry.method);
    facts.words = joined({entry.title, entry.words}, u"\n"_s);
    facts.line = QString::fromStdString(entry.line);
    if (entry.kind == ActivityEntry::Kind::Notice) {
        facts.facts = {{Words::tr("Said"), exactDate(entry.at)}};
        return facts;
    }
    facts.facts = {{Words::tr("Began"), exactDate(entry.at - entry.took)},
                   {Words::tr("Ended"), exactDate(entry.at)},
                   {Words::tr("Took"), lastedWords(entry.took)}};
    if (entry.code) {
        facts.facts.push_back({Words::tr("Code"), QString::number(*entry.code)});
    }
    return facts;
}

ActivityFacts activityFacts(const RunningCall &call)
{
    ActivityFacts facts;
    facts.outcome = Words::tr("Running");
    facts.mark = Theme::warn;
    facts.method = QString::fromStdString(call.method);
    facts.words = joined({call.title, call.lastLine}, u"\n"_s);
    facts.line = QString::fromStdString(call.line);
    facts.facts = {{Words::tr("Began"), exactDate(call.since)}};
    if (call.saidAt) {
        facts.facts.push_back({Words::tr("Last heard"), ageWords(*call.saidAt)});
    }
    facts.facts.push_back({Words::tr("So far"), runningFor(call)});
    return facts;
}

// A line each, so that no words can pass themselves off as an entry of their own.
QString activityText(const ActivityEntry &entry)
{
    const bool isCall = entry.kind != ActivityEntry::Kind::Notice;
    const QString head = joined({stamp(entry.at), outcomeOf(entry.kind), QString::fromStdString(entry.method),
                                 isCall ? lastedWords(entry.took) : QString(), codeWords(entry)},
                                u" · "_s);
    return joined(
        {madeVisible(head), madeVisible(entry.title), madeVisible(entry.words), QString::fromStdString(entry.line)},
        u"\n"_s);
}

QString activityText(const RunningCall &call)
{
    const QString head = joined(
        {stamp(call.since), Words::tr("Running"), QString::fromStdString(call.method), runningFor(call)}, u" · "_s);
    return joined(
        {madeVisible(head), madeVisible(call.title), madeVisible(lastHeard(call)), QString::fromStdString(call.line)},
        u"\n"_s);
}

} // namespace quillfen
