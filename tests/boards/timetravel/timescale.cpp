// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/timescale.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

namespace quillfen {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr std::chrono::seconds day = 86'400s;
constexpr std::chrono::seconds ninetyDays = 90 * day;
constexpr std::chrono::seconds tenYears = 3'650 * day;

const Instant present = std::chrono::sys_days(std::chrono::year(2026) / 11 / 20) + 14h + 31min + 25s;

TEST(TimeScale, TheRightEdgeIsASecondAgoAndTheLeftEdgeTheSpan)
{
    const TimeScale scale(present, ninetyDays, 630);
    EXPECT_EQ(scale.moment(630), present - 1s);
    EXPECT_EQ(scale.moment(0), present - ninetyDays);
    EXPECT_DOUBLE_EQ(scale.position(present - 1s), 630);
    EXPECT_DOUBLE_EQ(scale.position(present - ninetyDays), 0);
    EXPECT_EQ(scale.earliest(), present - ninetyDays);
    EXPECT_EQ(scale.latest(), present - 1s);
}

TEST(TimeScale, TheMiddleOfNinetyDaysIsFortySixMinutesAgo)
{
    const Instant middle = TimeScale(present, ninetyDays, 630).moment(315);
    EXPECT_NEAR(std::chrono::duration<double>(present - middle).count(), std::sqrt(7'776'000.0), 0.001);
}

TEST(TimeScale, FutureAndFreshMomentsLieOnTheRightEdge)
{
    const TimeScale scale(present, ninetyDays, 630);
    for (const auto age : {-1'000'000'000ms, -1ms, 0ms, 1ms, 999ms, 1'000ms}) {
        EXPECT_DOUBLE_EQ(scale.position(present - age), 630) << age.count();
    }
    EXPECT_LT(scale.position(present - 1'001ms), 630);
}

TEST(TimeScale, MomentsOlderThanTheSpanLieOnTheLeftEdge)
{
    const TimeScale scale(present, ninetyDays, 630);
    EXPECT_DOUBLE_EQ(scale.position(present - ninetyDays - 1ms), 0);
    EXPECT_DOUBLE_EQ(scale.position(Instant()), 0);
    EXPECT_DOUBLE_EQ(scale.position(Instant::min() + tenYears), 0) << "far before any calendar";
    EXPECT_GT(scale.position(present - ninetyDays + 1h), 0);
    EXPECT_DOUBLE_EQ(TimeScale(present, 7 * day, 630).positionOfAge(2'592'000), 0) << "the mark of 30 days";
}

TEST(TimeScale, BeyondAnEdgeTheEdgeIsMeant)
{
    const TimeScale scale(present, ninetyDays, 630);
    for (const double far : {-0.001, -1.0, -1e9, -std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(scale.moment(far), scale.earliest()) << far;
        EXPECT_EQ(scale.moment(630 - far), scale.latest()) << far;
    }
}

TEST(TimeScale, ThereIsAMomentEvenWithoutAnyWidth)
{
    for (const double width : {0.0, -5.0}) {
        const TimeScale scale(present, ninetyDays, width);
        EXPECT_EQ(scale.moment(3), scale.latest());
        EXPECT_DOUBLE_EQ(scale.position(present - 1h), 0);
    }
}

TEST(TimeScale, ASpanOfNothingStillHasTwoEdges)
{
    for (const auto span : {-5s, 0s, 1s, 2s}) {
        const TimeScale scale(present, span, 100);
        EXPECT_EQ(scale.moment(0), present - 2s);
        EXPECT_EQ(scale.moment(100), present - 1s);
    }
}

TEST(TimeScale, TheMarksAreThePlainAgesFromThirtyDaysToAMinute)
{
    std::vector<std::string> labels;
    std::vector<std::int64_t> ages;
    for (const ScaleMark &mark : scaleMarks()) {
        labels.push_back(mark.label.toStdString());
        ages.push_back(mark.age.count());
    }
    EXPECT_THAT(labels, ElementsAre("30 d", "7 d", "1 d", "1 h", "1 min"));
    EXPECT_THAT(ages, ElementsAre(2'592'000, 604'800, 86'400, 3'600, 60));
}

/// Spans from a minute to ten years, strips from a few pixels to a wall.
class TimeScaleProperty : public testing::TestWithParam<std::tuple<std::chrono::seconds, double>> {
protected:
    const std::chrono::seconds span = std::get<0>(GetParam());
    const double width = std::get<1>(GetParam());
    const TimeScale scale{present, span, width};
    std::mt19937_64 random{20'261'120};

    double anyPosition() { return std::uniform_real_distribution(-0.1 * width, 1.1 * width)(random); }
    Instant anyMoment()
    {
        const double share = std::uniform_real_distribution(-0.1, 1.1)(random);
        const double age = std::exp(std::log(static_cast<double>(span.count())) * share);
        return present - std::chrono::milliseconds(static_cast<std::int64_t>(age * 1'000.0));
    }
    /// How far a position may be off, since moments are whole milliseconds.
    [[nodiscard]] double millisecondAt(double age) const
    {
        return width / std::log(static_cast<double>(span.count())) * 0.001 / std::max(age, 1.0) + 1e-9 * width;
    }
};

TEST_P(TimeScaleProperty, APositionComesBackFromItsMoment)
{
    for (int turn = 0; turn < 2'000; ++turn) {
        const double position = anyPosition();
        const Instant moment = scale.moment(position);
        const double age = std::chrono::duration<double>(present - moment).count();
        EXPECT_NEAR(scale.position(moment), std::clamp(position, 0.0, width), millisecondAt(age)) << position;
    }
}

TEST_P(TimeScaleProperty, AMomentComesBackFromItsPosition)
{
    for (int turn = 0; turn < 2'000; ++turn) {
        const Instant moment = anyMoment();
        const Instant back = scale.moment(scale.position(moment));
        EXPECT_LE(std::chrono::abs(back - scale.clamped(moment)), 1ms) << moment.time_since_epoch().count();
    }
}

TEST_P(TimeScaleProperty, LaterIsFurtherRightBothWays)
{
    for (int turn = 0; turn < 2'000; ++turn) {
        const auto [left, right] = std::minmax({anyPosition(), anyPosition()});
        EXPECT_LE(scale.moment(left), scale.moment(right)) << left << " and " << right;
        const auto [earlier, later] = std::minmax({anyMoment(), anyMoment()});
        EXPECT_LE(scale.position(earlier), scale.position(later));
    }
}

TEST_P(TimeScaleProperty, NothingLeavesTheStrip)
{
    for (int turn = 0; turn < 2'000; ++turn) {
        const Instant moment = scale.moment(3.0 * anyPosition());
        EXPECT_GE(moment, present - span);
        EXPECT_LE(moment, present - 1s);
        const double position = scale.position(anyMoment());
        EXPECT_GE(position, 0.0);
        EXPECT_LE(position, width);
    }
}

INSTANTIATE_TEST_SUITE_P(Strips, TimeScaleProperty,
                         testing::Combine(testing::Values(60s, 3'600s, day, 30 * day, ninetyDays, 365 * day, tenYears),
                                          testing::Values(3.0, 160.0, 630.0, 1'261.5, 7'680.0)));

} // namespace
} // namespace quillfen
