// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/advanced/runwords.h"

#include <gtest/gtest.h>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

RunOutcome outcomeOf(const json::value &answer)
{
    RunOutcome outcome;
    outcome.method = u"volumes.list"_s;
    outcome.took = 85ms;
    outcome.text = std::make_shared<OutputText>(OutputText::ofJson(answer));
    return outcome;
}

TEST(DurationWords, GrowWithTheDuration)
{
    EXPECT_EQ(durationWords(0ms), u"0 ms"_s);
    EXPECT_EQ(durationWords(999ms), u"999 ms"_s);
    EXPECT_EQ(durationWords(1'240ms), u"1.2 s"_s);
    EXPECT_EQ(durationWords(59'900ms), u"59.9 s"_s);
    EXPECT_EQ(durationWords(125'000ms), u"2 min 5 s"_s);
}

TEST(OutcomeLine, SaysWhatHowLongAndHowMuch)
{
    EXPECT_EQ(outcomeLine(outcomeOf(nullptr)), u"volumes.list · 85 ms · 1 line"_s);
    EXPECT_EQ(outcomeLine(outcomeOf(json::array{1, 2})), u"volumes.list · 85 ms · 4 lines"_s);
    EXPECT_EQ(outcomeLine(outcomeOf(json::value(std::string(52'000, 'x')))),
              u"volumes.list · 85 ms · 1 line · 52.0 kB"_s);
}

TEST(OutcomeLine, SaysThatARunHasFailed)
{
    RunOutcome failed = outcomeOf(nullptr);
    failed.failed = true;
    EXPECT_EQ(outcomeLine(failed), u"volumes.list · 85 ms · failed"_s);
}

TEST(StatusLine, TellsOfThePickedMethodFirst)
{
    ConsoleSession session;
    EXPECT_EQ(statusLine(session), QString());
    session.running = QSet<QString>{u"a"_s};
    session.picked = u"b"_s;
    EXPECT_EQ(statusLine(session), u"Running a…"_s);
    session.running = QSet<QString>{u"a"_s, u"b"_s};
    EXPECT_EQ(statusLine(session), u"Running b…"_s);
    session.running = QSet<QString>();
    session.outcome = outcomeOf(true);
    EXPECT_EQ(statusLine(session), u"volumes.list · 85 ms · 1 line"_s);
}

} // namespace
