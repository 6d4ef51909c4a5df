// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/published.h"

#include <QElapsedTimer>
#include <QString>
#include <QTest>

#include <gmock/gmock.h>

#include <memory>
#include <optional>

using namespace quillfen;
using namespace std::chrono_literals;

namespace {

constexpr auto frame = 40ms;

/// A view in miniature: it remembers what it read at each render.
struct View {
    explicit View(const Published<int> &field)
        : observer(
              {&field}, [this, &field] { seen.push_back(field()); }, frame)
    {}
    std::vector<int> seen;
    Observer observer;
};

bool waitForRenders(const View &view, std::size_t count)
{
    return QTest::qWaitFor([&] { return view.seen.size() >= count; }, 2'000);
}

TEST(Published, ReadsWhatWasAssigned)
{
    Published<int> field(7);
    EXPECT_EQ(field(), 7);
    field = 8;
    EXPECT_EQ(field(), 8);
    field.update([](int &value) { value += 1; });
    EXPECT_EQ(field(), 9);
}

TEST(Published, CountsAssignmentsEvenOfTheSameValue)
{
    Published<int> field(7);
    const std::uint64_t before = field.version();
    field = 7;
    field.update([](int &) {});
    EXPECT_EQ(field.version(), before + 2);
}

TEST(Published, AnnouncesBeforeTheValueChanges)
{
    Published<int> field(1);
    std::uint64_t versionInside = 0;
    const std::uint64_t before = field.version();
    field.update([&](int &value) {
        versionInside = field.version();
        value = 2;
    });
    EXPECT_EQ(versionInside, before + 1);
}

TEST(Observer, RendersOnceForABurstAndSeesTheLastValue)
{
    Published<int> field;
    View view(field);
    for (int value = 1; value <= 100; ++value) {
        field = value;
    }
    EXPECT_TRUE(view.seen.empty()) << "never from within an assignment";
    ASSERT_TRUE(waitForRenders(view, 1));
    QTest::qWait(2 * frame.count());
    EXPECT_THAT(view.seen, testing::ElementsAre(100));
}

TEST(Observer, RendersAtOnceAfterAPauseAndAFrameLaterInABurst)
{
    constexpr auto longFrame = 1'000ms;
    Published<int> field;
    int renders = 0;
    const Observer observer(
        {&field}, [&] { ++renders; }, longFrame);
    QElapsedTimer passed;
    passed.start();
    field = 1;
    ASSERT_TRUE(QTest::qWaitFor([&] { return renders == 1; }, 5'000));
    EXPECT_LT(passed.elapsed(), longFrame.count());
    field = 2;
    ASSERT_TRUE(QTest::qWaitFor([&] { return renders == 2; }, 5'000));
    EXPECT_GE(passed.elapsed(), longFrame.count());
}

TEST(Observer, RendersOnceAFrameInASteadyBurst)
{
    Published<int> field;
    std::vector<std::chrono::steady_clock::time_point> renders;
    const Observer observer(
        {&field}, [&] { renders.push_back(std::chrono::steady_clock::now()); }, frame);
    const auto end = std::chrono::steady_clock::now() + 5 * frame;
    while (std::chrono::steady_clock::now() < end) {
        field = field() + 1;
        QTest::qWait(1);
    }
    ASSERT_GE(renders.size(), 2U);
    for (std::size_t index = 1; index < renders.size(); ++index) {
        EXPECT_GE(renders[index] - renders[index - 1], frame - 1ms);
    }
}

TEST(Observer, SeveralFieldsMakeOneRender)
{
    Published<int> left;
    Published<int> right;
    int renders = 0;
    const Observer observer(
        {&left, &right}, [&] { ++renders; }, frame);
    left = 1;
    right = 1;
    ASSERT_TRUE(QTest::qWaitFor([&] { return renders > 0; }, 2'000));
    QTest::qWait(2 * frame.count());
    EXPECT_EQ(renders, 1);
}

TEST(Observer, ARenderThatWritesIsFollowedByAnother)
{
    Published<int> field;
    int renders = 0;
    const Observer observer(
        {&field},
        [&] {
            if (++renders == 1) {
                field = 2;
            }
        },
        frame);
    field = 1;
    ASSERT_TRUE(QTest::qWaitFor([&] { return renders == 2; }, 2'000));
    QTest::qWait(2 * frame.count());
    EXPECT_EQ(renders, 2);
}

TEST(Observer, DropsTheRenderOnItsWayWhenItGoes)
{
    Published<int> field;
    int renders = 0;
    {
        const Observer observer(
            {&field}, [&] { ++renders; }, frame);
        field = 1;
    }
    field = 2;
    QTest::qWait(2 * frame.count());
    EXPECT_EQ(renders, 0);
}

TEST(Observer, MayGoDuringItsOwnRender)
{
    Published<int> field;
    std::unique_ptr<Observer> observer;
    std::string seen;
    const std::string note = "a capture that is read after the observer has gone";
    observer = std::make_unique<Observer>(std::initializer_list<const PublishedBase *>{&field}, [&, note] {
        observer.reset();
        seen = note;
    });
    field = 1;
    ASSERT_TRUE(QTest::qWaitFor([&] { return !seen.empty(); }, 2'000));
    EXPECT_EQ(seen, note);
    field = 2;
}

TEST(Observer, SurvivesAFieldThatGoesFirst)
{
    std::optional<Published<int>> shortLived(std::in_place);
    Published<int> field;
    int renders = 0;
    {
        const Observer observer(
            {&*shortLived, &field}, [&] { ++renders; }, frame);
        *shortLived = 1;
        shortLived.reset();
        ASSERT_TRUE(QTest::qWaitFor([&] { return renders == 1; }, 2'000));
        field = 1;
        ASSERT_TRUE(QTest::qWaitFor([&] { return renders == 2; }, 2'000));
    }
    field = 2;
    EXPECT_EQ(renders, 2);
}

TEST(Observer, MayAppearTwiceOnOneField)
{
    Published<int> field;
    int renders = 0;
    {
        const Observer observer(
            {&field, &field}, [&] { ++renders; }, frame);
        field = 1;
        ASSERT_TRUE(QTest::qWaitFor([&] { return renders == 1; }, 2'000));
    }
    field = 2;
    EXPECT_EQ(renders, 1);
}

} // namespace
