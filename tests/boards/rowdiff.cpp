// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/lists/rowdiff.h"

#include <gmock/gmock.h>

#include <numeric>
#include <ostream>
#include <random>

namespace quillfen {

void PrintTo(const RowRange &range, std::ostream *out)
{
    *out << range.count << " from " << range.first;
}

} // namespace quillfen

namespace {

using namespace quillfen;
using testing::ElementsAre;
using testing::IsEmpty;

using Keys = std::vector<int>;

/// Does to `before` what a model does with the steps.
Keys applied(Keys before, const Keys &after, const RowDiff &diff)
{
    for (const RowRange rows : diff.removed) {
        before.erase(before.begin() + rows.first, before.begin() + rows.first + rows.count);
    }
    for (const RowRange rows : diff.inserted) {
        before.insert(before.begin() + rows.first, after.begin() + rows.first, after.begin() + rows.first + rows.count);
    }
    return before;
}

int count(const std::vector<RowRange> &ranges)
{
    return std::accumulate(ranges.begin(), ranges.end(), 0, [](int sum, RowRange range) { return sum + range.count; });
}

TEST(RowDiff, EqualListsNeedNothing)
{
    EXPECT_TRUE(rowDiff(Keys{}, Keys{}).isEmpty());
    EXPECT_TRUE(rowDiff(Keys{1, 2, 3}, Keys{1, 2, 3}).isEmpty());
    EXPECT_TRUE(rowDiff(Keys{0, 0, 0}, Keys{0, 0, 0}).isEmpty());
}

TEST(RowDiff, WholeListsComeAndGoAsOneRange)
{
    EXPECT_THAT(rowDiff(Keys{}, Keys{1, 2, 3}).inserted, ElementsAre(RowRange{0, 3}));
    EXPECT_THAT(rowDiff(Keys{1, 2, 3}, Keys{}).removed, ElementsAre(RowRange{0, 3}));
}

TEST(RowDiff, InsertionInTheMiddleKeepsTheOthers)
{
    const RowDiff diff = rowDiff(Keys{1, 2, 5, 6}, Keys{1, 2, 3, 4, 5, 6});
    EXPECT_THAT(diff.removed, IsEmpty());
    EXPECT_THAT(diff.inserted, ElementsAre(RowRange{2, 2}));
}

TEST(RowDiff, RemovalsComeLastRangeFirst)
{
    const RowDiff diff = rowDiff(Keys{1, 2, 3, 4, 5, 6}, Keys{2, 5});
    EXPECT_THAT(diff.removed, ElementsAre(RowRange{5, 1}, RowRange{2, 2}, RowRange{0, 1}));
    EXPECT_THAT(diff.inserted, IsEmpty());
}

TEST(RowDiff, AMovedRowIsTheOnlyOneTouched)
{
    const RowDiff diff = rowDiff(Keys{1, 2, 3, 4, 5}, Keys{2, 3, 4, 1, 5});
    EXPECT_THAT(diff.removed, ElementsAre(RowRange{0, 1}));
    EXPECT_THAT(diff.inserted, ElementsAre(RowRange{3, 1}));
}

TEST(RowDiff, AReplacedRowIsRemovedAndInserted)
{
    const RowDiff diff = rowDiff(Keys{1, 2, 3}, Keys{1, 9, 3});
    EXPECT_THAT(diff.removed, ElementsAre(RowRange{1, 1}));
    EXPECT_THAT(diff.inserted, ElementsAre(RowRange{1, 1}));
}

TEST(RowDiff, RepeatedKeysAreMatchedInOrder)
{
    const Keys before{0, 0, 7, 0};
    const Keys after{0, 7, 0, 0, 0};
    const RowDiff diff = rowDiff(before, after);
    EXPECT_EQ(applied(before, after, diff), after);
    EXPECT_EQ(count(diff.inserted) - count(diff.removed), 1);
}

TEST(RowDiff, AnyListBecomesAnyOther)
{
    std::mt19937 chance(20);
    for (int round = 0; round < 2'000; ++round) {
        const auto list = [&chance] {
            Keys keys(chance() % 12);
            std::ranges::generate(keys, [&chance] { return static_cast<int>(chance() % 9); });
            return keys;
        };
        const Keys before = list();
        const Keys after = list();
        const RowDiff diff = rowDiff(before, after);
        ASSERT_EQ(applied(before, after, diff), after) << testing::PrintToString(before);
        for (std::size_t at = 1; at < diff.inserted.size(); ++at) {
            ASSERT_GT(diff.inserted[at].first, diff.inserted[at - 1].first + diff.inserted[at - 1].count);
        }
    }
}

TEST(RowDiff, KeepsAsManyRowsOfAShuffledListAsPossible)
{
    // The longest growing part of 3 1 4 5 2 6 is 3 4 5 6.
    const RowDiff diff = rowDiff(Keys{1, 2, 3, 4, 5, 6}, Keys{3, 1, 4, 5, 2, 6});
    EXPECT_EQ(count(diff.removed), 2);
    EXPECT_EQ(count(diff.inserted), 2);
}

} // namespace
