// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/restorepoints.h"

#include "state/format.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace quillfen;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

RestorePoints read(std::string_view answer)
{
    return RestorePoints::of(json::parse(json::string_view(answer.data(), answer.size())));
}

std::vector<std::string> timestamps(const RestorePoints &points)
{
    std::vector<std::string> all;
    for (std::size_t place = 0; place < points.size(); ++place) {
        all.push_back(points.timestamp(place).toStdString());
    }
    return all;
}

std::vector<std::int64_t> seconds(const RestorePoints &points)
{
    std::vector<std::int64_t> all;
    for (const std::int64_t moment : points.moments()) {
        EXPECT_EQ(moment % 1'000, 0);
        all.push_back(moment / 1'000);
    }
    return all;
}

TEST(RestorePoints, OfNothingThereAreNone)
{
    const RestorePoints none;
    EXPECT_TRUE(none.isEmpty());
    EXPECT_EQ(none.size(), 0U);
    EXPECT_THAT(none.moments(), IsEmpty());
    EXPECT_EQ(none.placeOf(u"2026"_s), 0U);
    EXPECT_TRUE(none == read("{}"));
}

TEST(RestorePoints, KeepTimestampAndLabelOfEach)
{
    const RestorePoints points = read(R"({"recovery_points":[
        {"timestamp":"2026-11-01T00:00:00Z"},
        {"id":7,"timestamp":"2026-11-02T00:00:00Z","label":"before the clean-up · größer","size":12},
        {"label":"","timestamp":"2026-11-03T00:00:00Z"},
        {"label":null,"timestamp":"2026-11-04T00:00:00Z"},
        {"label":42,"timestamp":"2026-11-05T00:00:00Z"}]})");
    ASSERT_EQ(points.size(), 5U);
    EXPECT_EQ(points.timestamp(1), u"2026-11-02T00:00:00Z"_s);
    EXPECT_EQ(points.label(0), QString());
    EXPECT_EQ(points.label(1), u"before the clean-up · größer"_s);
    EXPECT_EQ(points.label(2), QString());
    EXPECT_EQ(points.label(3), QString());
    EXPECT_EQ(points.label(4), u"42"_s);
    EXPECT_EQ(points.timestamp(4), u"2026-11-05T00:00:00Z"_s);
}

TEST(RestorePoints, LabelsGoWithTheirPointsWhenTheyAreSorted)
{
    const RestorePoints points = read(R"({"points":[{"timestamp":"b","label":"second"},{"timestamp":"c"},
        {"timestamp":"a","label":"first"}]})");
    EXPECT_THAT(timestamps(points), ElementsAre("a", "b", "c"));
    EXPECT_EQ(points.label(0), u"first"_s);
    EXPECT_EQ(points.label(1), u"second"_s);
    EXPECT_EQ(points.label(2), QString());
}

TEST(RestorePoints, AMissingTimestampIsAnEmptyText)
{
    EXPECT_THAT(timestamps(read(R"({"points":[{"timestamp":"a"},{},{"timestamp":null}]})")), ElementsAre("", "", "a"));
}

TEST(RestorePoints, MomentsAreThoseOfTimestampsThatHaveOne)
{
    const RestorePoints points = read(R"({"points":[{"timestamp":"1970-01-01T00:00:02Z"},{"timestamp":"soon"},{},
        {"timestamp":"1970-01-01 00:00:01"},{"timestamp":"1970-01-01T00:00:02Z"},{"timestamp":"2026-02-30T00:00:00Z"},
        {"timestamp":"1970-01-01"},{"timestamp":" 1970-01-01T00:00:03.000000000Z "}]})");
    EXPECT_EQ(points.size(), 8U);
    EXPECT_THAT(seconds(points), ElementsAre(1, 2, 2, 3));
}

TEST(RestorePoints, MomentsAscendAlsoWhereTheTextsDoNot)
{
    const RestorePoints points =
        read(R"({"points":[{"timestamp":"1970-01-01T01:00:00+01:00"},{"timestamp":"1970-01-01T00:30:00Z"}]})");
    EXPECT_THAT(timestamps(points), ElementsAre("1970-01-01T00:30:00Z", "1970-01-01T01:00:00+01:00"));
    EXPECT_THAT(seconds(points), ElementsAre(0, 1'800));
}

TEST(RestorePoints, ReadTimesAsTheOneReaderDoes)
{
    const std::vector<std::string> texts{
        "2026-11-15T21:04:05Z",  "2026-11-15 21:04:05.123456",  "2026-11-15T21:04:05+01:00",
        "2026-11-15T21:04:05.5", "\t2026-11-15T21:04:05-0930 ", "2026-11-15",
        "2026-11-15T24:00:00Z",  "2026-11-15T21:04:05.Z",       "2026-11-15T21:04:05.123456789+00:00",
        "2026-11-15T21:04:05ZZ", "2026-11-15T21:04:60Z",        "",
        "0001-01-01T00:00:00Z",  "9999-12-31T23:59:59.999Z",    "２026-11-15T21:04:05Z",
        "2024-02-29T00:00:00Z",  "2026-02-29T00:00:00Z",        "2026-11-15T21:04:05 +01:00"};
    for (const std::string &text : texts) {
        EXPECT_EQ(parseDate(std::string_view(text)), parseDate(QString::fromStdString(text))) << text;
    }
    EXPECT_TRUE(parseDate(std::string_view(texts[1])));
    EXPECT_FALSE(parseDate(std::string_view(texts[5])));
}

TEST(RestorePoints, FindThePlaceOfATimestamp)
{
    const RestorePoints points = read(R"({"points":[{"timestamp":"b"},{"timestamp":"d"},{"timestamp":"d"},
        {"timestamp":"f"}]})");
    EXPECT_EQ(points.placeOf(u"a"_s), 0U);
    EXPECT_EQ(points.placeOf(u"b"_s), 0U);
    EXPECT_EQ(points.placeOf(u"c"_s), 1U);
    EXPECT_EQ(points.placeOf(u"d"_s), 1U);
    EXPECT_EQ(points.placeOf(u"e"_s), 3U);
    EXPECT_EQ(points.placeOf(u"f"_s), 3U);
    EXPECT_EQ(points.placeOf(u"g"_s), 4U);
}

TEST(RestorePoints, AreTheSameOnlyWithinOneReading)
{
    const std::string answer = R"({"points":[{"timestamp":"a","label":"x"}]})";
    const RestorePoints points = read(answer);
    const RestorePoints copy = points; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_TRUE(copy.isSameAs(points));
    EXPECT_FALSE(read(answer).isSameAs(points));
    EXPECT_TRUE(read(answer) == points);
    EXPECT_FALSE(read(R"({"points":[{"timestamp":"a"}]})") == points);
    EXPECT_FALSE(read(R"({"points":[{"timestamp":"a","label":"y"}]})") == points);
}

TEST(RestorePoints, AHundredThousandInDisorderAreSortedAndSmall)
{
    std::mt19937 random(3);
    json::array list;
    std::vector<std::string> expected;
    for (int count = 0; count < 100'000; ++count) {
        std::string text = "2026-11-" + std::to_string(10 + random() % 20) + "T" + std::to_string(10 + random() % 14) +
                           ":" + std::to_string(10 + random() % 50) + ":" + std::to_string(10 + random() % 50) + "Z";
        list.push_back(json::object{{"timestamp", text}});
        expected.push_back(std::move(text));
    }
    std::sort(expected.begin(), expected.end());
    json::object answer;
    answer["points"] = std::move(list);
    const RestorePoints points = RestorePoints::of(answer);
    EXPECT_EQ(timestamps(points), expected);
    EXPECT_TRUE(std::is_sorted(points.moments().begin(), points.moments().end()));
    EXPECT_EQ(points.moments().size(), 100'000U);
    EXPECT_LE(points.bytes(), 100'000U * 37);
}

} // namespace
