// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/policy/policytiers.h"

#include <QStringList>

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>

namespace quillfen {

// Shown when a comparison fails.
void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace {

using namespace Qt::StringLiterals;
using testing::DoubleNear;
using testing::Eq;
using testing::Optional;

constexpr Policy light{60, 12, 3, 1, 1, 0};
constexpr Policy extended{2880, 72, 30, 12, 12, 3};

TEST(PolicyTiers, AreSixWithSixChoicesEach)
{
    const std::array<const char *, tierCount> labels{"every second", "every minute", "every hour",
                                                     "every day",    "every week",   "every month"};
    const std::array<const char *, tierCount> units{"minutes", "hours", "days", "weeks", "months", "years"};
    const std::array<std::array<std::int64_t, 6>, tierCount> numbers{{{0, 60, 360, 720, 1440, 2880},
                                                                      {0, 6, 12, 24, 48, 72},
                                                                      {0, 1, 3, 7, 14, 30},
                                                                      {0, 1, 2, 4, 8, 12},
                                                                      {0, 1, 3, 6, 12, 24},
                                                                      {0, 1, 2, 3, 5, 10}}};
    for (std::size_t tier = 0; tier < tierCount; ++tier) {
        EXPECT_EQ(tierAt(tier).label.toStdString(), labels.at(tier));
        EXPECT_EQ(tierAt(tier).unit.toStdString(), units.at(tier));
        for (std::size_t choice = 0; choice < 6; ++choice) {
            EXPECT_EQ(tierAt(tier).choices.at(choice).number, numbers.at(tier).at(choice)) << tier << ' ' << choice;
        }
        EXPECT_EQ(tierAt(tier).choices.front().label, u"not kept"_s);
    }
}

TEST(PolicyTiers, ChoicesAreCalledWhatTheyAre)
{
    const auto labels = [](std::size_t tier) {
        QStringList all;
        for (const TierChoice &choice : tierAt(tier).choices) {
            all << choice.label;
        }
        return all.join(u"; "_s);
    };
    EXPECT_EQ(labels(0), u"not kept; 1 hour; 6 hours; 12 hours; 24 hours; 48 hours"_s);
    EXPECT_EQ(labels(1), u"not kept; 6 hours; 12 hours; 24 hours; 2 days; 3 days"_s);
    EXPECT_EQ(labels(2), u"not kept; 1 day; 3 days; 7 days; 14 days; 30 days"_s);
    EXPECT_EQ(labels(3), u"not kept; 1 week; 2 weeks; 4 weeks; 8 weeks; 12 weeks"_s);
    EXPECT_EQ(labels(4), u"not kept; 1 month; 3 months; 6 months; 12 months; 24 months"_s);
    EXPECT_EQ(labels(5), u"not kept; 1 year; 2 years; 3 years; 5 years; 10 years"_s);
}

TEST(PolicyTiers, EveryNumberOfEveryPlanIsAChoice)
{
    for (std::size_t plan = 0; plan < planCount; ++plan) {
        for (std::size_t tier = 0; tier < tierCount; ++tier) {
            const auto &choices = tierAt(tier).choices;
            const std::int64_t number = planAt(plan).values.at(tier);
            EXPECT_NE(std::ranges::find(choices, number, &TierChoice::number), choices.end()) << plan << ' ' << tier;
        }
    }
}

TEST(PolicyPlans, HaveNamesDescriptionsAndNumbers)
{
    EXPECT_EQ(planAt(0).name, u"Light"_s);
    EXPECT_EQ(planAt(0).values, light);
    EXPECT_EQ(planAt(0).description, u"An hour of per-second history. For data that is reproducible."_s);
    EXPECT_EQ(planAt(1).name, u"Standard"_s);
    EXPECT_EQ(planAt(1).values, standardPolicy);
    EXPECT_EQ(planAt(1).description,
              u"Half a day of per-second history, a day of per-minute, a week of per-hour. Right for most volumes."_s);
    EXPECT_EQ(planAt(2).name, u"Extended"_s);
    EXPECT_EQ(planAt(2).values, extended);
    EXPECT_EQ(planAt(2).description, u"Two days of per-second history and a month of per-hour. For changes that might "
                                     u"go unnoticed for weeks."_s);
}

TEST(PolicyPlans, AreRecognisedByTheirNumbers)
{
    EXPECT_EQ(planName(light), u"Light"_s);
    EXPECT_EQ(planName(standardPolicy), u"Standard"_s);
    EXPECT_EQ(planName(extended), u"Extended"_s);
    EXPECT_EQ(planName({0, 0, 0, 0, 0, 0}), u"No history"_s);
    EXPECT_EQ(planName({60, 12, 3, 1, 1, 1}), u"Custom"_s);
    EXPECT_EQ(planOf({60, 12, 3, 1, 1, 1}), std::nullopt);
    EXPECT_THAT(planOf(extended), Optional(2U));
}

TEST(PolicySpan, IsTheChoicesLabelOrTheNumberWithItsUnit)
{
    EXPECT_EQ(spanText(0, 0), u"—"_s);
    EXPECT_EQ(spanText(0, 90), u"90 minutes"_s);
    EXPECT_EQ(spanText(0, 1440), u"24 hours"_s);
    EXPECT_EQ(spanText(1, 48), u"2 days"_s);
    EXPECT_EQ(spanText(5, 10), u"10 years"_s);
    EXPECT_EQ(spanText(5, 7), u"7 years"_s);
}

TEST(PolicyWords, TellTheWholePicture)
{
    EXPECT_EQ(policyWords(standardPolicy),
              u"every second for 12 hours, every minute for 24 hours, every hour for 7 days, "
              u"every day for 4 weeks, every week for 6 months, every month for 1 year"_s);
    EXPECT_TRUE(policyWords(light).endsWith(u"every week for 1 month, every month not kept"_s));
}

TEST(PolicyReach, IsLogarithmicUpToTenYears)
{
    // ln(seconds) / ln(ten years in seconds)
    EXPECT_THAT(reachShare(0, 720), DoubleNear(0.545, 0.001));
    EXPECT_THAT(reachShare(1, 24), DoubleNear(0.581, 0.001));
    EXPECT_THAT(reachShare(2, 7), DoubleNear(0.680, 0.001));
    EXPECT_THAT(reachShare(3, 4), DoubleNear(0.751, 0.001));
    EXPECT_THAT(reachShare(4, 6), DoubleNear(0.847, 0.001));
    EXPECT_THAT(reachShare(5, 1), DoubleNear(0.882, 0.001));
    EXPECT_DOUBLE_EQ(reachShare(5, 10), 1.0);
    EXPECT_DOUBLE_EQ(reachShare(5, std::numeric_limits<std::int64_t>::max()), 1.0);
    EXPECT_DOUBLE_EQ(reachShare(0, 0), 0.0);
}

TEST(PolicyWire, ReadsSixNumbersWithOrWithoutSpaces)
{
    EXPECT_THAT(parsedPolicy(u"720,24,7,4,6,1"_s), Optional(Eq(standardPolicy)));
    EXPECT_THAT(parsedPolicy(u"720, 24,7,4,6,1"_s), Optional(Eq(standardPolicy)));
    EXPECT_THAT(parsedPolicy(u" 720\t,24 ,7,4,6,1\n"_s), Optional(Eq(standardPolicy)));
    EXPECT_THAT(parsedPolicy(u"0,0,0,0,0,0"_s), Optional(Eq(Policy{})));
}

TEST(PolicyWire, DropsEmptyPiecesAndFractions)
{
    EXPECT_THAT(parsedPolicy(u",720,,24,7,4,6,1,"_s), Optional(Eq(standardPolicy)));
    EXPECT_THAT(parsedPolicy(u"720.9,2.4e1,7.0,4,6,1"_s), Optional(Eq(standardPolicy)));
}

TEST(PolicyWire, RefusesEverythingElse)
{
    for (const char *text : {"", "720", "720,24,7,4,6", "720,24,7,4,6,1,1", "720,24,7,4,6,-1", "1,x,3,4,5,6",
                             "1, ,3,4,5,6", "nan,24,7,4,6,1", "inf,24,7,4,6,1", "0x10,24,7,4,6,1", "1 2,24,7,4,6,1"}) {
        EXPECT_EQ(parsedPolicy(QString::fromLatin1(text)), std::nullopt) << text;
    }
}

TEST(PolicyWire, NumbersBeyondAllBoundsAreCut)
{
    const std::optional<Policy> parsed = parsedPolicy(u"1e300,24,7,4,6,1"_s);
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->front(), std::numeric_limits<std::int64_t>::max());
}

TEST(PolicyWire, IsWrittenWithoutSpaces)
{
    EXPECT_EQ(wireForm(standardPolicy), u"720,24,7,4,6,1"_s);
    EXPECT_EQ(wireForm(light), u"60,12,3,1,1,0"_s);
}

} // namespace
} // namespace quillfen
