// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/pointbars.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <random>

namespace quillfen {
namespace {

using namespace std::chrono_literals;
using testing::Each;
using testing::FloatNear;
using testing::SizeIs;

constexpr std::chrono::seconds ninetyDays = 7'776'000s;

const Instant present = std::chrono::sys_days(std::chrono::year(2026) / 11 / 20) + 14h + 31min + 25s;

using Moments = std::vector<std::int64_t>;

std::int64_t ago(double seconds)
{
    return present.time_since_epoch().count() - static_cast<std::int64_t>(seconds * 1'000.0);
}

/// Every bar by itself, one covering the other: where it is exactly, or at the nearest of so many places in a pixel.
std::vector<double> oneByOne(const Moments &moments, const TimeScale &scale, double pixelRatio,
                             std::optional<double> places = {})
{
    std::vector<double> through(static_cast<std::size_t>(std::ceil(scale.width() * pixelRatio)), 1.0);
    for (const std::int64_t moment : moments) {
        double x = scale.position(Instant(std::chrono::milliseconds(moment)));
        if (places) {
            x = std::round(x * pixelRatio * *places) / (pixelRatio * *places);
        }
        for (std::size_t column = 0; column < through.size(); ++column) {
            const double begin = std::max((x - 0.75) * pixelRatio, static_cast<double>(column));
            const double end = std::min((x + 0.75) * pixelRatio, static_cast<double>(column) + 1.0);
            through[column] *= 1.0 - 0.75 * std::max(end - begin, 0.0);
        }
    }
    std::transform(through.begin(), through.end(), through.begin(), [](double left) { return 1.0 - left; });
    return through;
}

double largestDifference(const std::vector<float> &ours, const std::vector<double> &expected)
{
    double largest = 0.0;
    for (std::size_t column = 0; column < expected.size(); ++column) {
        largest = std::max(largest, std::abs(static_cast<double>(ours.at(column)) - expected[column]));
    }
    return largest;
}

TEST(PointBars, WithoutPointsNothingIsCovered)
{
    EXPECT_THAT(barCoverage({}, TimeScale(present, ninetyDays, 630), 2.0),
                testing::AllOf(SizeIs(1'260), Each(FloatNear(0.0F, 0.0F))));
    EXPECT_THAT(barCoverage({}, TimeScale(present, ninetyDays, 0), 1.0), SizeIs(0));
    EXPECT_THAT(barCoverage(Moments{ago(60)}, TimeScale(present, ninetyDays, 0), 1.0), SizeIs(0));
}

TEST(PointBars, ABarIsOneAndAHalfWideAtThreeQuarters)
{
    const TimeScale scale(present, ninetyDays, 630);
    for (const double pixelRatio : {1.0, 1.25, 2.0, 3.0}) {
        const std::vector<float> columns = barCoverage(Moments{ago(3'600)}, scale, pixelRatio);
        double sum = 0.0;
        for (const float column : columns) {
            EXPECT_LE(column, 0.7501F);
            sum += static_cast<double>(column);
        }
        EXPECT_NEAR(sum / pixelRatio, 1.5 * 0.75, 0.001) << pixelRatio;
        const auto centre = static_cast<std::size_t>(scale.positionOfAge(3'600) * pixelRatio);
        EXPECT_GT(columns.at(centre), 0.5F) << pixelRatio;
    }
}

TEST(PointBars, AtTheEdgesHalfABarIsLeft)
{
    const TimeScale scale(present, ninetyDays, 100);
    const std::vector<float> columns = barCoverage(Moments{ago(8e6), ago(-5)}, scale, 4.0);
    EXPECT_THAT(std::vector<float>(columns.begin(), columns.begin() + 3), Each(FloatNear(0.75F, 0.001F)));
    EXPECT_THAT(std::vector<float>(columns.end() - 3, columns.end()), Each(FloatNear(0.75F, 0.001F)));
    EXPECT_THAT(std::vector<float>(columns.begin() + 3, columns.end() - 3), Each(FloatNear(0.0F, 0.001F)));
}

TEST(PointBars, CrowdsStandOut)
{
    const TimeScale scale(present, ninetyDays, 630);
    const auto coverAt = [&](std::size_t count) {
        const std::vector<float> columns = barCoverage(Moments(count, ago(3'600)), scale, 1.0);
        return *std::max_element(columns.begin(), columns.end());
    };
    EXPECT_LT(coverAt(1), coverAt(2));
    EXPECT_LT(coverAt(2), coverAt(3));
    EXPECT_NEAR(coverAt(1'000'000), 1.0F, 0.002F);
}

TEST(PointBars, LookAsIfPaintedOneByOne)
{
    std::mt19937_64 random(4);
    for (const double pixelRatio : {1.0, 1.5, 2.0}) {
        for (const int count : {1, 10, 100, 3'000}) {
            Moments moments;
            for (int each = 0; each < count; ++each) {
                moments.push_back(ago(std::exp(std::uniform_real_distribution(-1.0, 17.0)(random))));
            }
            moments.insert(moments.end(), {moments.front(), moments.front()}); // some twice or more
            std::sort(moments.begin(), moments.end());
            const TimeScale scale(present, ninetyDays, 211);
            // An eighth of a pixel off moves as much of three quarters from one column to the next.
            const double off =
                largestDifference(barCoverage(moments, scale, pixelRatio), oneByOne(moments, scale, pixelRatio));
            EXPECT_LT(off, 0.2) << count << " at " << pixelRatio;
        }
    }
}

TEST(PointBars, NoCrowdIsCountedTwiceOrForgotten)
{
    // A second apart over the last day: thousands in some places of the left part, none in many of the right one.
    Moments moments;
    for (int age = 86'400; age >= 1; --age) {
        moments.push_back(ago(age));
    }
    const TimeScale scale(present, ninetyDays, 80);
    EXPECT_LT(largestDifference(barCoverage(moments, scale, 1.0), oneByOne(moments, scale, 1.0, 4.0)), 0.02);
    EXPECT_LT(largestDifference(barCoverage(moments, scale, 2.0), oneByOne(moments, scale, 2.0, 4.0)), 0.02);
}

} // namespace
} // namespace quillfen
