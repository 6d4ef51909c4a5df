// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/activity/activitywords.h"

#include "builders.h"

#include "state/userlocale.h"
#include "ui/theme.h"

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using namespace test;

ActivityEntry failure()
{
    ActivityEntry entry;
    entry.kind = ActivityEntry::Kind::Failed;
    entry.at = someTime;
    entry.words = u"no room"_s;
    entry.method = "volumes.resize";
    entry.line = R"({"id":7,"method":"volumes.resize"})";
    entry.took = 1'240ms;
    entry.code = -5;
    return entry;
}

class ActivityWords : public testing::Test {
protected:
    Instant time = someTime;
    ClockOverride clock{[this] { return time; }};
};

TEST_F(ActivityWords, AFailureTellsItsCodeAndHowLongItTook)
{
    const ActivityRow row = activityRow(failure());
    EXPECT_EQ(row.time, u"08:00"_s);
    EXPECT_EQ(row.day, QString());
    EXPECT_EQ(row.words, u"no room"_s);
    EXPECT_EQ(row.method, u"volumes.resize"_s);
    EXPECT_EQ(row.aside, u"code -5"_s);
    EXPECT_EQ(row.outcome, u"Failed"_s);
    EXPECT_EQ(row.lasted, u"1.2 s"_s);
    EXPECT_EQ(row.mark, Theme::danger);
}

TEST_F(ActivityWords, ARowIsReadInItsOrder)
{
    ActivityEntry entry = failure();
    EXPECT_EQ(spokenLine(activityRow(entry)), u"08:00, Failed, volumes.resize, no room, code -5, 1.2 s"_s);
    entry.kind = ActivityEntry::Kind::Done;
    entry.code.reset();
    EXPECT_EQ(spokenLine(activityRow(entry)), u"08:00, Done, volumes.resize, no room, 1.2 s"_s);
}

TEST_F(ActivityWords, ANoticeHasNeitherMethodNorDuration)
{
    ActivityEntry entry;
    entry.at = someTime;
    entry.words = u"Copied."_s;
    const ActivityRow row = activityRow(entry);
    EXPECT_EQ(spokenLine(row), u"08:00, Notice, Copied."_s);
    EXPECT_EQ(row.lasted, QString());
    EXPECT_EQ(row.mark, Theme::muted);
}

TEST_F(ActivityWords, WhatSaysNothingIsCalledByItsTitleOrItsMethod)
{
    ActivityEntry entry = failure();
    entry.words.clear();
    EXPECT_EQ(activityRow(entry).words, u"volumes.resize"_s);
    EXPECT_EQ(activityRow(entry).method, QString()) << "not twice";
    entry.title = u"Resizing"_s;
    EXPECT_EQ(activityRow(entry).words, u"Resizing"_s);
    EXPECT_EQ(activityRow(entry).method, u"volumes.resize"_s);
}

TEST_F(ActivityWords, AnotherDayIsNamed)
{
    time += 24h;
    EXPECT_EQ(activityRow(failure()).day, u"Jan 15"_s);
    EXPECT_EQ(spokenLine(activityRow(failure())), u"Jan 15, 08:00, Failed, volumes.resize, no room, code -5, 1.2 s"_s);
}

TEST_F(ActivityWords, TheDayIsThatOfTheUsersZone)
{
    const LocaleOverride tokyo("en_US", "Asia/Tokyo");
    ActivityEntry entry = failure();
    entry.at = someTime + 6h; // 23:00 there
    time = someTime + 8h;     // one in the morning
    EXPECT_EQ(activityRow(entry).day, u"Jan 15"_s);
}

TEST_F(ActivityWords, WhatRunsTellsWhatWasLastHeardAndWhen)
{
    RunningCall call = runningCall("vm.prepare", u"Setting up the engine"_s);
    call.since = someTime;
    call.begun = steady_clock::now() - 64s - 500ms;
    EXPECT_EQ(spokenLine(activityRow(call)), u"Setting up the engine, Running, 1 min 4 s, vm.prepare"_s);
    call.lastLine = u"40 %"_s;
    call.saidAt = someTime - 12s;
    EXPECT_EQ(spokenLine(activityRow(call)), u"Setting up the engine, Running, 1 min 4 s, 40 % · 12 s ago"_s);
    call.saidAt = someTime;
    EXPECT_EQ(activityRow(call).aside, u"40 % · just now"_s);
    call.title.clear();
    EXPECT_EQ(activityRow(call).words, u"vm.prepare"_s);
}

TEST_F(ActivityWords, WhatTheAgentSaysCannotPassItselfOffAsAPlaceholder)
{
    RunningCall call = runningCall("vm.prepare");
    call.begun = steady_clock::now();
    call.lastLine = u"%2 %1"_s;
    call.saidAt = someTime - 5s;
    EXPECT_EQ(activityRow(call).aside, u"%2 %1 · 5 s ago"_s);
}

TEST_F(ActivityWords, DurationsTakeTheUnitThatFits)
{
    EXPECT_EQ(lastedWords(0ms), u"0 s"_s);
    EXPECT_EQ(lastedWords(-3s), u"0 s"_s) << "the clock was set back";
    EXPECT_EQ(lastedWords(120ms), u"120 ms"_s);
    EXPECT_EQ(lastedWords(1'240ms), u"1.2 s"_s);
    EXPECT_EQ(lastedWords(2s), u"2 s"_s);
    EXPECT_EQ(lastedWords(59'999ms), u"59.9 s"_s);
    EXPECT_EQ(lastedWords(184s), u"3 min 4 s"_s);
    EXPECT_EQ(lastedWords(4'210s), u"1 h 10 min"_s);
}

TEST_F(ActivityWords, TheCopyOfOneSaysEverything)
{
    EXPECT_EQ(activityText(failure()), u"2027-01-15T08:00:00.000Z · Failed · volumes.resize · 1.2 s · code -5\n"
                                       "no room\n"
                                       "{\"id\":7,\"method\":\"volumes.resize\"}"_s);
}

TEST_F(ActivityWords, TheCopyOfANoticeIsItsTimeAndItsWords)
{
    ActivityEntry entry;
    entry.at = someTime;
    entry.words = u"Uploading"_s;
    EXPECT_EQ(activityText(entry), u"2027-01-15T08:00:00.000Z · Notice\nUploading"_s);
}

TEST_F(ActivityWords, HostileWordsForgeNoSecondEntryInACopy)
{
    ActivityEntry entry = failure();
    entry.words = u"no\n2027-01-15 · Done\u202e\u001b[2J"_s;
    const QString text = activityText(entry);
    EXPECT_EQ(text.count(u'\n'), 2);
    EXPECT_FALSE(text.contains(u'\u202e'));
    EXPECT_FALSE(text.contains(u'\u001b'));
}

TEST_F(ActivityWords, ARowIsReadWithoutWhatCannotBeSeen)
{
    ActivityEntry entry = failure();
    entry.words = u"a\nb\u202ec"_s;
    const QString line = spokenLine(activityRow(entry));
    EXPECT_FALSE(line.contains(u'\n'));
    EXPECT_FALSE(line.contains(u'\u202e'));
}

TEST_F(ActivityWords, TheFactsTellBeginningAndEnd)
{
    const ActivityFacts facts = activityFacts(failure());
    ASSERT_EQ(facts.facts.size(), 4U);
    EXPECT_EQ(facts.facts[0].caption, u"Began"_s);
    EXPECT_EQ(facts.facts[0].value, u"Fri, Jan 15 · 07:59:58"_s);
    EXPECT_EQ(facts.facts[1].value, u"Fri, Jan 15 · 08:00:00"_s);
    EXPECT_EQ(facts.facts[2].value, u"1.2 s"_s);
    EXPECT_EQ(facts.facts[3].value, u"-5"_s);
    EXPECT_EQ(facts.words, u"no room"_s);
    EXPECT_EQ(facts.line, QString::fromStdString(failure().line));
}

} // namespace
} // namespace quillfen
