// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/recordlists.h"

#include <gmock/gmock.h>

using namespace quillfen;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Records list(std::string_view text)
{
    const json::value parsed = json::parse(json::string_view(text.data(), text.size()));
    return records(&parsed);
}

TEST(RecordLists, IdsComeInTheOrderOfTheList)
{
    EXPECT_THAT(idsOf(list(R"([{"id":3},{"id":"7"},{},{"id":1}])")), ElementsAre(3, 7, 0, 1));
    EXPECT_THAT(idsOf(Records()), IsEmpty());
}

TEST(RecordLists, TheFirstRecordOfAnIdIsTheListsOwn)
{
    const Records all = list(R"([{"id":3},{"id":7,"name":"a"},{"id":7,"name":"b"}])");
    EXPECT_EQ(recordWithId(all, 7), &all.at(1));
    EXPECT_EQ(recordWithId(all, 4), nullptr);
    EXPECT_EQ(recordWithId(Records(), 0), nullptr);
}

TEST(RecordLists, AListIsTakenFromUnderItsKey)
{
    json::value answer = json::parse(R"({"users":[{"id":1},12],"more":[{"id":2}]})");
    EXPECT_THAT(idsOf(takeRecords(std::move(answer), "users")), ElementsAre(1, 0));
}

TEST(RecordLists, WhereNoListIsThereAreNoRecords)
{
    EXPECT_THAT(takeRecords(json::parse(R"({"users":12})"), "users"), IsEmpty());
    EXPECT_THAT(takeRecords(json::parse(R"({"user":[{"id":1}]})"), "users"), IsEmpty());
    EXPECT_THAT(takeRecords(json::parse(R"([{"id":1}])"), "users"), IsEmpty());
    EXPECT_THAT(takeRecords(json::value(), "users"), IsEmpty());
}

} // namespace
