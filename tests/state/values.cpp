// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/values.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace quillfen;

namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

std::string text(const json::value &value)
{
    return str(&value).toStdString();
}

std::int64_t number(const json::value &value)
{
    return num(&value);
}

TEST(Values, StrOfNothingAndOfNullIsEmpty)
{
    EXPECT_EQ(text(nullptr), "");
    EXPECT_TRUE(str(nullptr).isEmpty());
    EXPECT_TRUE(str(Record(), "missing").isEmpty());
}

TEST(Values, StrOfTextIsTheTextItself)
{
    EXPECT_EQ(text(" a b "), " a b ");
    EXPECT_EQ(text("naïve · 写真"), "naïve · 写真");
}

TEST(Values, StrOfWholeNumbersHasNoPoint)
{
    EXPECT_EQ(text(2.0), "2");
    EXPECT_EQ(text(3.0), "3");
    EXPECT_EQ(text(-0.0), "0");
    EXPECT_EQ(text(-17), "-17");
    EXPECT_EQ(text(largest), "9223372036854775807");
}

TEST(Values, StrOfFractionsIsTheShortestThatReadsBack)
{
    EXPECT_EQ(text(2.25), "2.25");
    EXPECT_EQ(text(0.5), "0.5");
    EXPECT_EQ(text(0.1), "0.1");
    EXPECT_EQ(text(1e-7), "1e-07");
    EXPECT_EQ(text(-1.5), "-1.5");
}

TEST(Values, StrOfBooleansIsANumber)
{
    EXPECT_EQ(text(true), "1");
    EXPECT_EQ(text(false), "0");
}

TEST(Values, StrOfNumbersBeyond64BitsIsClamped)
{
    EXPECT_EQ(text(1e300), "9223372036854775807");
    EXPECT_EQ(text(-1e300), "-9223372036854775808");
    EXPECT_EQ(text(std::numeric_limits<std::uint64_t>::max()), "9223372036854775807");
    EXPECT_EQ(text(std::numeric_limits<double>::infinity()), "9223372036854775807");
}

TEST(Values, StrOfObjectsAndListsIsTheirJson)
{
    EXPECT_EQ(text(json::parse(R"({"a":[1,null]})")), R"({"a":[1,null]})");
    EXPECT_EQ(text(json::array()), "[]");
}

TEST(Values, NumTruncatesTowardZero)
{
    EXPECT_EQ(number(2.9), 2);
    EXPECT_EQ(number(-2.9), -2);
    EXPECT_EQ(number(12.5), 12);
    EXPECT_EQ(number(true), 1);
    EXPECT_EQ(number(false), 0);
}

TEST(Values, NumReadsTextsOfDigitsOnly)
{
    EXPECT_EQ(number("42"), 42);
    EXPECT_EQ(number("-7"), -7);
    EXPECT_EQ(number("+15"), 15);
    EXPECT_EQ(number("0007"), 7);
    for (const char *const unreadable :
         {"", "+", "-", "+-5", "--5", "-+5", "12.5", " 12", "12 ", "1e3", "0x10", "1_000", "١٢", "twelve"}) {
        EXPECT_EQ(number(unreadable), 0) << unreadable;
    }
}

TEST(Values, NumOfTextOutside64BitsIsZero)
{
    EXPECT_EQ(number("9223372036854775807"), largest);
    EXPECT_EQ(number("-9223372036854775808"), smallest);
    EXPECT_EQ(number("9223372036854775808"), 0);
    EXPECT_EQ(number("-9223372036854775809"), 0);
}

TEST(Values, NumOfNumbersOutside64BitsIsClamped)
{
    EXPECT_EQ(number(1e300), largest);
    EXPECT_EQ(number(9'223'372'036'854'775'808.0), largest);
    EXPECT_EQ(number(-9'223'372'036'854'775'808.0), smallest);
    EXPECT_EQ(number(-1e300), smallest);
    EXPECT_EQ(number(std::numeric_limits<std::uint64_t>::max()), largest);
    EXPECT_EQ(truncated(std::nan("")), 0);
}

TEST(Values, NumOfAnythingElseIsZero)
{
    EXPECT_EQ(number(nullptr), 0);
    EXPECT_EQ(num(nullptr), 0);
    EXPECT_EQ(num(Record(), "missing"), 0);
    EXPECT_EQ(number(json::parse("[7]")), 0);
    EXPECT_EQ(number(json::parse(R"({"7":7})")), 0);
}

TEST(Values, TrueIsOnlyABoolean)
{
    const Record record = params("yes", true, "no", false, "one", 1, "text", "true");
    EXPECT_TRUE(isTrue(record, "yes"));
    for (const char *const key : {"no", "one", "text", "missing"}) {
        EXPECT_FALSE(isTrue(record, key)) << key;
    }
}

TEST(Values, ObjectOfAnythingElseIsEmpty)
{
    const json::value value = json::parse(R"({"inner":{"a":1},"list":[1],"text":"x"})");
    const Record &record = object(&value);
    EXPECT_EQ(num(object(record, "inner"), "a"), 1);
    EXPECT_TRUE(object(record, "list").empty());
    EXPECT_TRUE(object(record, "text").empty());
    EXPECT_TRUE(object(record, "missing").empty());
    EXPECT_TRUE(object(nullptr).empty());
}

TEST(Values, RecordsKeepThePlacesOfWhatIsNoObject)
{
    const json::value value = json::parse(R"([{"id":1},7,null,{"id":2}])");
    const Records copied = records(&value);
    ASSERT_EQ(copied.size(), 4);
    EXPECT_EQ(num(copied[0], "id"), 1);
    EXPECT_TRUE(copied[1].empty());
    EXPECT_TRUE(copied[2].empty());
    EXPECT_EQ(num(copied[3], "id"), 2);
    const Records taken = takeRecords(json::value(value));
    EXPECT_TRUE(std::equal(taken.begin(), taken.end(), copied.begin(), copied.end()));

    const json::value noList = json::parse(R"({"id":1})");
    EXPECT_TRUE(records(&noList).isEmpty());
    EXPECT_TRUE(records(nullptr).isEmpty());
    EXPECT_TRUE(takeRecords(json::value(noList)).isEmpty());
}

TEST(Values, TakenRecordsOutliveTheirAnswer)
{
    Records taken;
    Record single;
    {
        json::value answer = json::parse(R"([{"name":"a text that is longer than any place kept for short ones"}])",
                                         json::make_shared_resource<json::monotonic_resource>());
        taken = takeRecords(std::move(answer));
        json::value second = json::parse(R"({"name":"another text that is longer than the short ones"})",
                                         json::make_shared_resource<json::monotonic_resource>());
        single = takeObject(std::move(second));
    }
    ASSERT_EQ(taken.size(), 1);
    EXPECT_EQ(str(taken[0], "name").toStdString(), "a text that is longer than any place kept for short ones");
    EXPECT_EQ(str(single, "name").toStdString(), "another text that is longer than the short ones");
}

} // namespace
