// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/format.h"

#include "state/userlocale.h"

#include <gmock/gmock.h>

using namespace quillfen;
using namespace std::chrono_literals;

namespace {

constexpr std::int64_t gib = 1'073'741'824;

Instant at(int year, unsigned month, unsigned day, std::chrono::milliseconds time)
{
    return std::chrono::sys_days(std::chrono::year(year) / static_cast<int>(month) / static_cast<int>(day)) + time;
}

std::string iso(Instant instant)
{
    const auto days = std::chrono::floor<std::chrono::days>(instant);
    const std::chrono::year_month_day date(days);
    const std::chrono::hh_mm_ss time(instant - days);
    std::array<char, 40> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()), static_cast<int>(time.subseconds().count()));
    return buffer.data();
}

std::optional<Instant> parsed(const char *text)
{
    return parseDate(QString::fromUtf8(text));
}

class Format : public testing::Test {
protected:
    static std::string agoOf(const std::string &text) { return ago(QString::fromStdString(text)).toStdString(); }
    static std::string agoBefore(std::chrono::milliseconds passed) { return agoOf(iso(now() - passed)); }
    static std::string shortOf(const char *text) { return shortDate(QString::fromUtf8(text)).toStdString(); }
    static std::string longOf(const char *text) { return longDate(QString::fromUtf8(text)).toStdString(); }

    LocaleOverride m_locale{"en_US"};
    ClockOverride m_clock{[] { return at(2026, 11, 20, 12h); }};
};

TEST_F(Format, GbIsPlainForWholeNumbersAndHasOneDecimalElse)
{
    EXPECT_EQ(gb(0), QStringLiteral("0 GB"));
    EXPECT_EQ(gb(10 * gib), QStringLiteral("10 GB"));
    EXPECT_EQ(gb(gib * 3 / 2), QStringLiteral("1.5 GB"));
    EXPECT_EQ(gb(1'100'000'000), QStringLiteral("1.0 GB"));
    EXPECT_EQ(gb(1), QStringLiteral("0.0 GB"));
    EXPECT_EQ(gb(-gib), QStringLiteral("-1 GB"));
}

TEST_F(Format, GbTurnsToTbAt1024)
{
    EXPECT_EQ(gb(1'098'437'885'952), QStringLiteral("1023 GB"));
    EXPECT_EQ(gb(1'099'511'627'776), QStringLiteral("1.0 TB"));
    EXPECT_EQ(gb(5 * 512 * gib), QStringLiteral("2.5 TB"));
    EXPECT_EQ(gb(std::numeric_limits<std::int64_t>::max()), QStringLiteral("8388608.0 TB"));
}

TEST_F(Format, GbRoundsHalvesToEvenAndKeepsThePointInEveryLocale)
{
    const LocaleOverride german("de_DE");
    EXPECT_EQ(gb(gib * 5 / 4), QStringLiteral("1.2 GB"));
    EXPECT_EQ(gb(gib * 7 / 4), QStringLiteral("1.8 GB"));
}

TEST_F(Format, ParseDateReadsWhatTheAgentSends)
{
    EXPECT_EQ(parsed("2026-11-15T21:04:05Z"), at(2026, 11, 15, 21h + 4min + 5s));
    EXPECT_EQ(parsed("2026-11-15 21:04:05.123456"), at(2026, 11, 15, 21h + 4min + 5s + 123ms));
    EXPECT_EQ(parsed("2026-11-15T21:04:05.123456789Z"), at(2026, 11, 15, 21h + 4min + 5s + 123ms));
    EXPECT_EQ(parsed("2026-11-15T21:04:05.5"), at(2026, 11, 15, 21h + 4min + 5s + 500ms));
    EXPECT_EQ(parsed("\t 2026-11-15 21:04:05 \t"), at(2026, 11, 15, 21h + 4min + 5s));
}

TEST_F(Format, ParseDateReadsOffsets)
{
    EXPECT_EQ(parsed("2026-11-15T21:04:05+01:00"), at(2026, 11, 15, 20h + 4min + 5s));
    EXPECT_EQ(parsed("2026-11-15T21:04:05-0530"), at(2026, 11, 16, 2h + 34min + 5s));
    EXPECT_EQ(parsed("2026-11-15 21:04:05.25+00:00"), at(2026, 11, 15, 21h + 4min + 5s + 250ms));
}

TEST_F(Format, ParseDateKnowsTheCalendar)
{
    EXPECT_EQ(parsed("2024-02-29T00:00:00Z"), at(2024, 2, 29, 0s));
    EXPECT_EQ(parsed("2023-02-29T00:00:00Z"), std::nullopt);
    EXPECT_EQ(parsed("2000-02-29T00:00:00Z"), at(2000, 2, 29, 0s));
    EXPECT_EQ(parsed("1900-02-29T00:00:00Z"), std::nullopt);
    EXPECT_EQ(parsed("2016-12-31T23:59:60Z"), at(2017, 1, 1, 0s));
}

TEST_F(Format, ParseDateReachesToTheEndsOfItsFourDigits)
{
    EXPECT_EQ(parsed("9999-12-31T23:59:59.999Z"), at(9999, 12, 31, 24h - 1ms));
    EXPECT_EQ(parsed("0001-01-01T00:00:00Z"), at(1, 1, 1, 0s));
    EXPECT_EQ(longOf("9999-12-31T23:59:59Z"), "Fri, Dec 31 · 23:59:59");
}

TEST_F(Format, ParseDateTakesNothingElse)
{
    for (const char *const text : {"",
                                   " ",
                                   "\t",
                                   "2026-11-15",
                                   "2026-11-15T21:04",
                                   "2026-11-15T21:04:05+01",
                                   "2026-11-15T21:04:05.Z",
                                   "2026-11-15T21:04:05z",
                                   "2026-11-15t21:04:05Z",
                                   "2026-11-15T 21:04:05Z",
                                   "2026-11-15 21:04:05 Z",
                                   "2026-11-15  21:04:05",
                                   "2026-13-01T00:00:00Z",
                                   "2026-00-01T00:00:00Z",
                                   "2026-01-00T00:00:00Z",
                                   "2026-01-32T00:00:00Z",
                                   "2026-01-01T24:00:00Z",
                                   "2026-01-01T00:60:00Z",
                                   "2026-01-01T00:00:61Z",
                                   "2026-01-01T00:00:00+24:00",
                                   "2026-01-01T00:00:00+00:60",
                                   "26-01-01T00:00:00Z",
                                   "20260115T210405Z",
                                   "2026-11-15T21:04:05ZZ",
                                   "2026-11-15T21:04:05Z\n",
                                   "２026-11-15T21:04:05Z",
                                   "-026-11-15T21:04:05Z",
                                   "2026-11-15T21:04:05..5Z",
                                   "2026-11-15T21:04:05,5Z",
                                   "yesterday"}) {
        EXPECT_EQ(parsed(text), std::nullopt) << text;
    }
}

TEST_F(Format, AgoCountsMinutesAndHours)
{
    EXPECT_EQ(agoBefore(0s), "just now");
    EXPECT_EQ(agoBefore(59s), "just now");
    EXPECT_EQ(agoBefore(59'999ms), "just now");
    EXPECT_EQ(agoBefore(-24h), "just now");
    EXPECT_EQ(agoBefore(60s), "1 min ago");
    EXPECT_EQ(agoBefore(119s), "1 min ago");
    EXPECT_EQ(agoBefore(3'599s), "59 min ago");
    EXPECT_EQ(agoBefore(3'600s), "1 h ago");
    EXPECT_EQ(agoBefore(47h + 59min), "47 h ago");
}

TEST_F(Format, AgoPastTwoDaysIsDateAndTime)
{
    EXPECT_EQ(agoBefore(48h), "Nov 18, 2026 at 12:00 PM");
    EXPECT_EQ(agoOf("2026-11-15T21:41:00Z"), "Nov 15, 2026 at 9:41 PM");
    EXPECT_EQ(agoOf("2025-01-02T03:04:05.678+00:00"), "Jan 2, 2025 at 3:04 AM");
}

TEST_F(Format, AgoSpeaksTheLocalesLanguageInItsTimeZone)
{
    const LocaleOverride german("de_DE.UTF-8", "Europe/Berlin");
    EXPECT_EQ(agoOf("2026-11-15T21:41:00Z"), "15.11.2026 um 22:41");
    EXPECT_EQ(longOf("2026-11-15T21:04:05Z"), "So., Nov. 15 · 22:04:05");
}

TEST_F(Format, AgoReadsByItsOwnRules)
{
    EXPECT_EQ(agoOf("2026-11-20T11:00:00"), "1 h ago") << "no zone is UTC";
    EXPECT_EQ(agoOf("2026-11-20T11:00:00.5Z"), "59 min ago");
    EXPECT_EQ(agoOf("2026-11-20T12:00:00+0100"), "1 h ago");
    for (const char *const text :
         {"2026-11-20 11:00:00", "2026-11-20T11:00:00.5", " 2026-11-20T11:00:00Z", "2026-11-20", "", "a while back"}) {
        EXPECT_EQ(agoOf(text), text) << "comes back as it is";
    }
}

TEST_F(Format, ShortDateShowsTheYearOnlyWhenItIsAnother)
{
    EXPECT_EQ(shortOf("2026-11-15T21:04:05Z"), "Nov 15");
    EXPECT_EQ(shortOf("2026-01-01T00:00:00Z"), "Jan 1");
    EXPECT_EQ(shortOf("2025-11-15 21:04:05"), "Nov 15, 2025");
    EXPECT_EQ(shortOf("2027-01-01T00:00:00Z"), "Jan 1, 2027");
    EXPECT_EQ(shortOf("2026-11-15"), "2026-11-15");
}

TEST_F(Format, TheCurrentYearIsThatOfTheUsersTimeZone)
{
    const LocaleOverride tokyo("en_US", "Asia/Tokyo");
    EXPECT_EQ(shortOf("2025-12-31T16:00:00Z"), "Jan 1");
    EXPECT_EQ(shortOf("2025-12-31T14:00:00Z"), "Dec 31, 2025");
}

TEST_F(Format, LongDateHasWeekdayAndSeconds)
{
    EXPECT_EQ(longOf("2026-11-15T21:04:05Z"), "Sun, Nov 15 · 21:04:05");
    EXPECT_EQ(longOf("2026-11-15 09:04:05.999"), "Sun, Nov 15 · 09:04:05");
    EXPECT_EQ(longOf("soon"), "soon");
}

TEST_F(Format, ExactDateIsTheLongDateOfASecondThatExistsOnce)
{
    const LocaleOverride newYork("en_US", "America/New_York");
    for (const char *const text : {"2026-11-20T14:31:25Z", "2026-11-01T04:59:59Z", "2026-11-01T07:00:00Z",
                                   "2026-03-08T06:59:59Z", "2026-03-08T07:00:00Z", "2026-07-01T12:00:00.999Z"}) {
        const QString timestamp = QString::fromUtf8(text);
        EXPECT_EQ(exactDate(timestamp), longDate(timestamp)) << text;
        EXPECT_EQ(exactDate(*parsed(text)), longDate(timestamp)) << text;
    }
    EXPECT_EQ(exactDate(QStringLiteral("soon")), QStringLiteral("soon"));
}

TEST_F(Format, ExactDateTellsWhichOfTwoSecondsItIs)
{
    const auto exactOf = [](const char *text) { return exactDate(QString::fromUtf8(text)).toStdString(); };
    const LocaleOverride newYork("en_US", "America/New_York");
    EXPECT_EQ(exactOf("2026-11-01T05:00:00Z"), "Sun, Nov 1 · 01:00:00 EDT");
    EXPECT_EQ(exactOf("2026-11-01T05:59:59Z"), "Sun, Nov 1 · 01:59:59 EDT");
    EXPECT_EQ(exactOf("2026-11-01T06:00:00Z"), "Sun, Nov 1 · 01:00:00 EST");
    EXPECT_EQ(exactOf("2026-11-01T06:59:59.999Z"), "Sun, Nov 1 · 01:59:59 EST");
    const LocaleOverride berlin("de_DE", "Europe/Berlin");
    EXPECT_EQ(exactOf("2026-10-25T00:30:00Z"), "So., Okt. 25 · 02:30:00 MESZ");
    EXPECT_EQ(exactOf("2026-10-25T01:30:00Z"), "So., Okt. 25 · 02:30:00 MEZ");
    const LocaleOverride lordHowe("en_US", "Australia/Lord_Howe"); // half an hour
    EXPECT_EQ(exactOf("2026-04-04T14:29:59Z"), longOf("2026-04-04T14:29:59Z"));
    EXPECT_NE(exactOf("2026-04-04T14:30:00Z"), longOf("2026-04-04T14:30:00Z"));
    EXPECT_NE(exactOf("2026-04-04T15:29:59Z"), longOf("2026-04-04T15:29:59Z"));
    EXPECT_EQ(exactOf("2026-04-04T15:30:00Z"), longOf("2026-04-04T15:30:00Z"));
}

TEST_F(Format, TheClockComesBackAfterAnOverride)
{
    {
        const ClockOverride inner([] { return at(2000, 1, 1, 0s); });
        EXPECT_EQ(now(), at(2000, 1, 1, 0s));
    }
    EXPECT_EQ(now(), at(2026, 11, 20, 12h));
}

TEST_F(Format, CapitalisedTurnsWordsNotDigits)
{
    const auto of = [](const char *words) { return capitalised(QString::fromUtf8(words)).toStdString(); };
    EXPECT_EQ(of("pro"), "Pro");
    EXPECT_EQ(of("FAMILY plus"), "Family Plus");
    EXPECT_EQ(of("2tb éclair"), "2tb Éclair");
    EXPECT_EQ(of(""), "");
    EXPECT_EQ(of("  two  blanks "), "  Two  Blanks ");
    EXPECT_EQ(of("don't STOP"), "Don't Stop");
    EXPECT_EQ(of("self-hosted"), "Self-Hosted");
}

TEST_F(Format, LanguagesWithLettersOfTheirOwnCapitaliseThem)
{
    const auto of = [](const char *words) { return capitalised(QString::fromUtf8(words)).toStdString(); };
    {
        const LocaleOverride turkish("tr_TR");
        EXPECT_EQ(of("ILIK iyi"), "Ilık İyi");
    }
    {
        const LocaleOverride dutch("nl_NL");
        EXPECT_EQ(of("ijzeren plan"), "IJzeren Plan");
    }
    const LocaleOverride german("de_DE");
    EXPECT_EQ(of("ijzeren plan"), "Ijzeren Plan");
}

} // namespace
