// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/section.h"

#include <gtest/gtest.h>

#include <set>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;

TEST(SectionTest, StandsInTheOrderOfTheSidebarUnderItsTitle)
{
    QStringList titles;
    for (const Section section : allSections) {
        titles += rawTitle(section);
    }
    EXPECT_EQ(titles, (QStringList{u"Volumes"_s, u"Time travel"_s, u"History policy"_s, u"Get a copy of my data"_s,
                                   u"Account & engine"_s, u"Operator"_s, u"Advanced"_s}));
}

TEST(SectionTest, IsFoundByItsExactTitle)
{
    for (const Section section : allSections) {
        EXPECT_EQ(sectionTitled(rawTitle(section)), section);
    }
    EXPECT_FALSE(sectionTitled(u"volumes"_s));
    EXPECT_FALSE(sectionTitled(u"Vol"_s));
    EXPECT_FALSE(sectionTitled(u""_s));
}

TEST(SectionTest, HasAPictureOfItsOwn)
{
    std::set<Icon> icons;
    for (const Section section : allSections) {
        icons.insert(sectionIcon(section));
    }
    EXPECT_EQ(icons.size(), allSections.size());
}

TEST(InitialSection, IsTheFirstWhoseTitleBeginsWithTheWishWhateverTheCase)
{
    EXPECT_EQ(initialSection(u"time"_s), Section::TimeTravel);
    EXPECT_EQ(initialSection(u"TIME TR"_s), Section::TimeTravel);
    EXPECT_EQ(initialSection(u"Get"_s), Section::Export);
    EXPECT_EQ(initialSection(u"adv"_s), Section::Advanced);
    EXPECT_EQ(initialSection(u"a"_s), Section::Account);
    EXPECT_EQ(initialSection(u"account & engine"_s), Section::Account);
}

TEST(InitialSection, MayBeAHiddenOne)
{
    EXPECT_EQ(initialSection(u"operator"_s), Section::Operator);
}

TEST(InitialSection, IsVolumesForNoWishAnEmptyOneAndOneThatMatchesNothing)
{
    EXPECT_EQ(initialSection(std::nullopt), Section::Volumes);
    EXPECT_EQ(initialSection(u""_s), Section::Volumes);
    EXPECT_EQ(initialSection(u"timetravel"_s), Section::Volumes);
    EXPECT_EQ(initialSection(u"newvolume"_s), Section::Volumes);
    EXPECT_EQ(initialSection(u"travel"_s), Section::Volumes);
}

} // namespace
} // namespace quillfen
