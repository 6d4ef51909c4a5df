// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/advanced/outputsearch.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillfen {

static void PrintTo(const OutputMatch &match, std::ostream *out)
{
    *out << match.begin << ".." << match.end << ", " << match.number << " of " << match.count;
}

namespace {

constexpr SearchDirection forward = SearchDirection::Forward;
constexpr SearchDirection backward = SearchDirection::Backward;

TEST(FindIn, FindsTheNextAndTellsWhichItIs)
{
    const std::string_view text = "one two one two one";
    EXPECT_EQ(findIn(text, "one", 0, forward), (OutputMatch{0, 3, 1, 3}));
    EXPECT_EQ(findIn(text, "one", 1, forward), (OutputMatch{8, 11, 2, 3}));
    EXPECT_EQ(findIn(text, "one", 16, forward), (OutputMatch{16, 19, 3, 3}));
}

TEST(FindIn, FindsThePrevious)
{
    const std::string_view text = "one two one two one";
    EXPECT_EQ(findIn(text, "one", 16, backward), (OutputMatch{8, 11, 2, 3}));
    EXPECT_EQ(findIn(text, "two", 19, backward), (OutputMatch{12, 15, 2, 2}));
}

TEST(FindIn, GoesOnAtTheOtherEnd)
{
    const std::string_view text = "one two one two one";
    EXPECT_EQ(findIn(text, "one", 17, forward), (OutputMatch{0, 3, 1, 3}));
    EXPECT_EQ(findIn(text, "one", 0, backward), (OutputMatch{16, 19, 3, 3}));
}

TEST(FindIn, TakesSmallAndCapitalLettersForTheSame)
{
    EXPECT_EQ(findIn("a TimeStamp", "tIMEsTAMP", 0, forward), (OutputMatch{2, 11, 1, 1}));
    EXPECT_EQ(findIn("@[`{", "`", 0, forward).begin, 2U) << "only letters have a case";
}

TEST(FindIn, NothingIsFoundNowhere)
{
    EXPECT_EQ(findIn("text", "texts", 0, forward), OutputMatch{});
    EXPECT_EQ(findIn("text", "", 0, forward), OutputMatch{});
    EXPECT_EQ(findIn("", "x", 0, backward), OutputMatch{});
}

TEST(FindIn, FindsOneCharacterAndTheWhole)
{
    EXPECT_EQ(findIn("xyx", "x", 1, forward), (OutputMatch{2, 3, 2, 2}));
    EXPECT_EQ(findIn("whole", "whole", 0, forward), (OutputMatch{0, 5, 1, 1}));
    EXPECT_EQ(findIn("größe", "ß", 0, forward).count, 1U);
}

TEST(FindIn, MatchesDoNotOverlap)
{
    EXPECT_EQ(findIn("aaaa", "aa", 0, forward).count, 2U);
}

} // namespace
} // namespace quillfen
