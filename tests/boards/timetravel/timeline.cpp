// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/timeline.h"

#include "boards/timetravel/momentbubble.h"
#include "boards/timetravel/timelinestrip.h"
#include "rpc/json.h"
#include "state/format.h"
#include "state/userlocale.h"
#include "strippicture.h"
#include "ui/style/housestyle.h"

#include <QAccessible>
#include <QApplication>
#include <QPaintEvent>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <cstdio>

namespace quillfen {
namespace {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

constexpr int stripWidth = 630;
constexpr int edge = TimelineStrip::edge;

Instant presentOf(const char *text)
{
    return parseDate(std::string_view(text)).value();
}

RestorePoints pointsAt(const std::vector<std::string> &timestamps)
{
    json::array list;
    for (const std::string &timestamp : timestamps) {
        list.push_back(params("timestamp", timestamp));
    }
    json::object answer;
    answer["recovery_points"] = list;
    return RestorePoints::of(answer);
}

/// Keeps the regions that were painted.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget *widget) : m_widget(widget) { widget->installEventFilter(this); }
    QRegion painted;
    int times = 0;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == m_widget && event->type() == QEvent::Paint) {
            painted += static_cast<QPaintEvent *>(event)->region();
            ++times;
        }
        return false;
    }

private:
    QWidget *m_widget;
};

class TimelineTest : public testing::Test {
protected:
    TimelineTest()
    {
        applyHouseLook(*static_cast<QApplication *>(QCoreApplication::instance()));
        QPalette ground = window.palette();
        ground.setColor(QPalette::Window, Theme::dBg);
        window.setPalette(ground);
        window.resize(stripWidth + 2 * edge + 40, 260);
        timeline->setParent(&window);
        timeline->setGeometry(20, 60, stripWidth + 2 * edge, timeline->sizeHint().height());
        QObject::connect(timeline, &Timeline::momentChanged, timeline,
                         [this](Instant moment) { told.push_back(moment); });
        timeline->setMoment(present - 12'325s);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::qWait(1);
    }

    [[nodiscard]] QPoint at(double position) const { return {edge + qRound(position), edge + 30}; }
    [[nodiscard]] TimeScale scale() const { return {present, Timeline::span, stripWidth}; }
    [[nodiscard]] QString bubbleText() const
    {
        const auto *const bubble = window.findChild<MomentBubble *>();
        return bubble != nullptr && bubble->isVisible() ? bubble->accessibleName() : QString();
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(timeline->strip(), key, modifiers);
    }
    void wheel(int delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const QPoint place = at(100);
        QWheelEvent event(place, timeline->strip()->mapToGlobal(place), {}, {0, delta}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        event.ignore();
        QApplication::sendEvent(timeline->strip(), &event);
        wheelTaken = event.isAccepted();
    }

    const LocaleOverride locale{"en_US", "UTC"};
    Instant present = presentOf("2026-11-20T14:31:25Z");
    const ClockOverride clock{[this] { return present; }};
    QWidget window;
    Timeline *timeline = new Timeline;
    std::vector<Instant> told;
    bool wheelTaken = false;
};

TEST_F(TimelineTest, APressChoosesTheMomentUnderThePointer)
{
    QTest::mousePress(timeline->strip(), Qt::LeftButton, {}, at(315));
    EXPECT_THAT(told, ElementsAre(scale().moment(315)));
    EXPECT_EQ(timeline->moment(), told.back());
    EXPECT_EQ(timeline->strip()->strip(), QRectF(edge, edge, stripWidth, 72));
}

TEST_F(TimelineTest, ADragTellsEveryMomentOnItsWay)
{
    QTest::mousePress(timeline->strip(), Qt::LeftButton, {}, at(100));
    QTest::mouseMove(timeline->strip(), at(200));
    QTest::mouseMove(timeline->strip(), at(300));
    QTest::mouseRelease(timeline->strip(), Qt::LeftButton, {}, at(300));
    QTest::mouseMove(timeline->strip(), at(400));
    EXPECT_THAT(told, ElementsAre(scale().moment(100), scale().moment(200), scale().moment(300)))
        << "neither the release nor a pointer without a button choose";
}

TEST_F(TimelineTest, ADragBeyondTheEdgesStopsThere)
{
    QTest::mousePress(timeline->strip(), Qt::LeftButton, {}, at(300));
    QTest::mouseMove(timeline->strip(), at(-500));
    EXPECT_EQ(timeline->moment(), present - Timeline::span);
    QTest::mouseMove(timeline->strip(), at(2'000));
    EXPECT_EQ(timeline->moment(), present - 1s);
}

TEST_F(TimelineTest, ADragReadsTheClockAsItGoes)
{
    QTest::mousePress(timeline->strip(), Qt::LeftButton, {}, at(630));
    EXPECT_EQ(timeline->moment(), present - 1s);
    present += 90s;
    QTest::mouseMove(timeline->strip(), at(630));
    EXPECT_EQ(timeline->moment(), present - 1s) << "the right edge is always a second ago";
}

TEST_F(TimelineTest, OtherButtonsChooseNothing)
{
    QTest::mousePress(timeline->strip(), Qt::RightButton, {}, at(100));
    QTest::mouseMove(timeline->strip(), at(200));
    EXPECT_TRUE(told.empty());
}

TEST_F(TimelineTest, WhileDraggingTheSecondStandsAboveTheMarker)
{
    EXPECT_EQ(bubbleText(), QString());
    QTest::mousePress(timeline->strip(), Qt::LeftButton, {}, at(scale().position(presentOf("2026-11-20T11:06:00Z"))));
    EXPECT_TRUE(bubbleText().startsWith(u"Fri, Nov 20 · 11:0"_s)) << bubbleText().toStdString();
    EXPECT_EQ(bubbleText(), exactDate(timeline->moment()));
    const auto *const bubble = window.findChild<MomentBubble *>();
    const QRect strip(timeline->strip()->mapTo(&window, QPoint(0, 0)), timeline->strip()->size());
    EXPECT_LE(bubble->geometry().bottom(), strip.top() + edge);
    EXPECT_NEAR(bubble->geometry().center().x(), strip.left() + timeline->strip()->positionOf(timeline->moment()), 1.5);

    QTest::mouseMove(timeline->strip(), at(-40));
    EXPECT_EQ(bubble->x(), strip.left() + edge) << "it stays over the strip";
    QTest::mouseRelease(timeline->strip(), Qt::LeftButton, {}, at(-40));
    EXPECT_EQ(bubbleText(), QString());
}

TEST_F(TimelineTest, KeysStepBySecondsMinutesHoursAndToTheEdges)
{
    timeline->strip()->setFocus(Qt::TabFocusReason);
    const Instant start = timeline->moment();
    key(Qt::Key_Left);
    EXPECT_EQ(timeline->moment(), start - 1s);
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    EXPECT_EQ(timeline->moment(), start + 1s);
    key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(timeline->moment(), start + 1s - 1min);
    key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(timeline->moment(), start + 1s);
    key(Qt::Key_PageUp);
    EXPECT_EQ(timeline->moment(), start + 1s - 1h);
    key(Qt::Key_PageDown);
    EXPECT_EQ(timeline->moment(), start + 1s);
    key(Qt::Key_Home);
    EXPECT_EQ(timeline->moment(), present - Timeline::span);
    key(Qt::Key_Left);
    EXPECT_EQ(timeline->moment(), present - Timeline::span);
    key(Qt::Key_End);
    EXPECT_EQ(timeline->moment(), present - 1s);
    key(Qt::Key_PageDown);
    EXPECT_EQ(timeline->moment(), present - 1s);
    EXPECT_EQ(told.size(), 9U) << "a step that leads nowhere is not told";
    EXPECT_EQ(bubbleText(), exactDate(timeline->moment())) << "a step shows its second as well";
}

TEST_F(TimelineTest, FromThePresentAStepLeadsOntoTheStrip)
{
    timeline->setMoment(present);
    key(Qt::Key_Left);
    EXPECT_EQ(timeline->moment(), present - 1s);
}

TEST_F(TimelineTest, TheBubbleOfAStepGoesWithTheFocusOrByItself)
{
    QWidget other(&window);
    other.setFocusPolicy(Qt::TabFocus);
    other.show();
    timeline->strip()->setFocus(Qt::TabFocusReason);
    key(Qt::Key_Left);
    EXPECT_NE(bubbleText(), QString());
    other.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(bubbleText(), QString());
    timeline->strip()->setFocus(Qt::TabFocusReason);
    key(Qt::Key_Left);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bubbleText().isEmpty(); }, 5'000));
}

TEST_F(TimelineTest, TheWheelStepsOncePointerOrFocusAreOnTheStrip)
{
    const Instant start = timeline->moment();
    timeline->strip()->clearFocus();
    wheel(120);
    EXPECT_FALSE(wheelTaken) << "a board that scrolls under a hand at rest goes on scrolling";
    EXPECT_EQ(timeline->moment(), start);

    QTest::mouseMove(timeline->strip(), at(100));
    wheel(120);
    EXPECT_TRUE(wheelTaken);
    EXPECT_EQ(timeline->moment(), start + 1s);
    wheel(-240);
    EXPECT_EQ(timeline->moment(), start - 1s);
    wheel(60);
    EXPECT_EQ(timeline->moment(), start - 1s) << "half a step waits for its other half";
    wheel(60);
    EXPECT_EQ(timeline->moment(), start);
    wheel(-120, Qt::ShiftModifier);
    EXPECT_EQ(timeline->moment(), start - 1min);
}

TEST_F(TimelineTest, WhatTheOwnerSetsIsSilent)
{
    timeline->setMoment(present - 5s);
    EXPECT_EQ(timeline->moment(), present - 5s);
    EXPECT_TRUE(told.empty());
}

TEST_F(TimelineTest, DraggingRepaintsTheOldAndTheNewPlaceOfTheMarkerOnly)
{
    timeline->setPoints(pointsAt({"2026-11-20T10:00:00Z", "2026-11-20T14:00:00Z"}));
    QTest::mousePress(timeline->strip(), Qt::LeftButton, {}, at(100));
    QTest::mouseMove(timeline->strip(), at(200));
    QTest::qWait(20);
    const PaintWatch watch(timeline->strip());
    QTest::mouseMove(timeline->strip(), at(400));
    EXPECT_TRUE(QTest::qWaitFor([&] { return watch.times > 0; }));
    const int height = timeline->strip()->height();
    const QRegion expected = QRegion(edge + 200 - 9, 0, 19, height) + QRegion(edge + 400 - 9, 0, 19, height);
    EXPECT_TRUE(watch.painted.subtracted(expected).isEmpty());
    EXPECT_TRUE(watch.painted.contains(QPoint(edge + 200, 40)));
    EXPECT_TRUE(watch.painted.contains(QPoint(edge + 400, 40)));
}

TEST_F(TimelineTest, NothingNewRepaintsNothing)
{
    const RestorePoints points = pointsAt({"2026-11-20T10:00:00Z"});
    timeline->setPoints(points);
    QTest::qWait(20);
    const PaintWatch watch(timeline->strip());
    timeline->setPoints(points);
    timeline->setMoment(timeline->moment());
    timeline->catchUp();
    present += 900ms;
    timeline->catchUp();
    QTest::qWait(20);
    EXPECT_EQ(watch.times, 0);
    present += 100ms;
    timeline->catchUp();
    EXPECT_TRUE(QTest::qWaitFor([&] { return watch.times > 0; })) << "a second is seen at the right edge";
}

TEST_F(TimelineTest, TheOwnerMayTakeItAwayInTheMiddleOfADrag)
{
    const QPointer<TimelineStrip> strip = timeline->strip();
    QObject::connect(timeline, &Timeline::momentChanged, &window, [this] { delete timeline; });
    QTest::mousePress(strip, Qt::LeftButton, {}, at(100));
    EXPECT_TRUE(strip.isNull());
    EXPECT_EQ(window.findChild<MomentBubble *>(), nullptr) << "nothing of it stays in the window";
}

TEST_F(TimelineTest, TheAgentMayTakeItAwayInTheMiddleOfAStep)
{
    const QPointer<TimelineStrip> strip = timeline->strip();
    QObject::connect(timeline, &Timeline::momentChanged, &window, [this] { delete timeline; });
    key(Qt::Key_Left);
    EXPECT_TRUE(strip.isNull());
}

TEST_F(TimelineTest, TimeRunsToTheRightInEveryLanguage)
{
    window.setLayoutDirection(Qt::RightToLeft);
    QTest::mousePress(timeline->strip(), Qt::LeftButton, {}, at(600));
    EXPECT_EQ(timeline->moment(), scale().moment(600));
    const Instant start = timeline->moment();
    key(Qt::Key_Left);
    EXPECT_EQ(timeline->moment(), start - 1s);
}

TEST_F(TimelineTest, PointsThatAreNoMomentsToComeOrTwiceAreNoTrouble)
{
    timeline->setPoints(pointsAt({"soon", "", "2026-13-45T00:00:00Z", "2099-01-01T00:00:00Z", "2026-11-20T14:31:25Z",
                                  "2026-11-20T10:00:00Z", "2026-11-20T10:00:00Z", "1970-01-01T00:00:00Z"}));
    const QImage image = window.grab().toImage();
    const QPoint origin = timeline->strip()->mapTo(&window, QPoint(edge, edge));
    const auto lit = [&](int x) { return image.pixelColor(origin + QPoint(x, 36)).green() > 90; };
    EXPECT_TRUE(lit(0)) << "older than the span";
    EXPECT_TRUE(lit(stripWidth - 1)) << "to come, or fresh";
    EXPECT_TRUE(lit(static_cast<int>(scale().position(presentOf("2026-11-20T10:00:00Z")))));
    int others = 0;
    for (int x = 3; x < stripWidth - 3; ++x) {
        others += lit(x) ? 1 : 0;
    }
    EXPECT_LE(others, 2 + 15) << "one bar and the marker";
}

TEST_F(TimelineTest, TheMarkerStandsOutOfACrowdOfItsOwnColour)
{
    std::vector<std::string> timestamps;
    for (int second = 0; second < 3'000; ++second) {
        std::array<char, 32> text{};
        std::snprintf(text.data(), text.size(), "2026-11-20T11:%02d:%02dZ", second / 60, second % 60);
        timestamps.emplace_back(text.data());
    }
    timeline->setPoints(pointsAt(timestamps));
    timeline->strip()->clearFocus();
    const double middle = timeline->strip()->positionOf(presentOf("2026-11-20T11:25:00Z"));
    timeline->setMoment(presentOf("2026-11-20T11:25:00Z"));
    const QImage image = timeline->strip()->grab().toImage();
    const auto at = [&](int from) { return image.pixelColor(qRound(middle) + from, edge + 20); };
    EXPECT_EQ(at(-1), Theme::accent);
    EXPECT_EQ(at(0), Theme::accent);
    EXPECT_EQ(at(-2), Theme::dBg);
    EXPECT_EQ(at(1), Theme::dBg);
    EXPECT_GT(at(-4).green(), 150) << "a bar beside it";
}

TEST_F(TimelineTest, IsASliderWhoseValueIsTheMomentInWords)
{
    QAccessibleInterface *const slider = QAccessible::queryAccessibleInterface(timeline->strip());
    ASSERT_NE(slider, nullptr);
    EXPECT_EQ(slider->role(), QAccessible::Slider);
    EXPECT_EQ(slider->text(QAccessible::Name), u"Timeline"_s);
    EXPECT_EQ(slider->text(QAccessible::Value), u"Fri, Nov 20 · 11:06:00"_s);
    ASSERT_NE(slider->textInterface(), nullptr);
    EXPECT_EQ(slider->textInterface()->text(0, 99), u"Fri, Nov 20 · 11:06:00"_s);
    EXPECT_TRUE(slider->state().focusable);
    timeline->setMoment(presentOf("2026-11-19T01:02:03Z"));
    EXPECT_EQ(slider->text(QAccessible::Value), u"Thu, Nov 19 · 01:02:03"_s);
}

TEST_F(TimelineTest, AssistiveTechnologyMovesIt)
{
    QAccessibleInterface *const slider = QAccessible::queryAccessibleInterface(timeline->strip());
    QAccessibleValueInterface *const value = slider->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->minimumValue().toDouble(), -7'776'000.0);
    EXPECT_EQ(value->maximumValue().toDouble(), -1.0);
    EXPECT_EQ(value->minimumStepSize().toDouble(), 1.0);
    EXPECT_EQ(value->currentValue().toDouble(), -12'325.0);

    value->setCurrentValue(-3'600.0);
    EXPECT_THAT(told, ElementsAre(present - 1h));
    EXPECT_EQ(value->currentValue().toDouble(), -3'600.0);
    value->setCurrentValue(50.0);
    EXPECT_EQ(timeline->moment(), present - 1s);
    value->setCurrentValue(-1e12);
    EXPECT_EQ(timeline->moment(), present - Timeline::span);
    value->setCurrentValue(u"noon"_s);
    EXPECT_EQ(timeline->moment(), present - Timeline::span);

    QAccessibleActionInterface *const actions = slider->actionInterface();
    actions->doAction(QAccessibleActionInterface::increaseAction());
    EXPECT_EQ(timeline->moment(), present - Timeline::span + 1s);
    actions->doAction(QAccessibleActionInterface::decreaseAction());
    EXPECT_EQ(timeline->moment(), present - Timeline::span);
}

TEST_F(TimelineTest, WordsAndNumberFollowEveryChange)
{
    QAccessibleInterface *const slider = QAccessible::queryAccessibleInterface(timeline->strip());
    const auto holds = [&] {
        return slider->text(QAccessible::Value) == exactDate(timeline->moment()) &&
               slider->valueInterface()->currentValue().toDouble() ==
                   std::floor(std::chrono::duration<double>(timeline->moment() - present).count());
    };
    EXPECT_TRUE(holds());
    key(Qt::Key_Left);
    EXPECT_TRUE(holds());
    QTest::mousePress(timeline->strip(), Qt::LeftButton, {}, at(200));
    EXPECT_TRUE(holds());
    QTest::mouseMove(timeline->strip(), at(300));
    EXPECT_TRUE(holds());
    timeline->setMoment(present - 60s);
    EXPECT_TRUE(holds());
    EXPECT_EQ(slider->valueInterface()->currentValue().toDouble(), -60.0);
}

TEST_F(TimelineTest, HasAHandForItAndTakesFocusByTabOnly)
{
    EXPECT_EQ(timeline->strip()->cursor().shape(), Qt::PointingHandCursor);
    timeline->strip()->clearFocus();
    QTest::mouseClick(timeline->strip(), Qt::LeftButton, {}, at(100));
    EXPECT_FALSE(timeline->strip()->hasFocus());
    EXPECT_EQ(timeline->strip()->focusPolicy(), Qt::TabFocus);
}

TEST_F(TimelineTest, FocusIsARingAroundTheStrip)
{
    const auto ringed = [&] {
        return timeline->strip()->grab().toImage().pixelColor(edge + 200, edge - 3) == Theme::accent;
    };
    timeline->strip()->clearFocus();
    EXPECT_FALSE(ringed());
    timeline->strip()->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(ringed());
}

TEST_F(TimelineTest, ASecondThatExistsTwiceShowsWhichItIs)
{
    const LocaleOverride newYork("en_US", "America/New_York");
    timeline->setMoment(presentOf("2026-11-01T05:30:00Z"));
    QAccessibleInterface *const slider = QAccessible::queryAccessibleInterface(timeline->strip());
    EXPECT_EQ(slider->text(QAccessible::Value), u"Sun, Nov 1 · 01:30:00 EDT"_s);
    timeline->setMoment(presentOf("2026-11-01T06:30:00Z"));
    EXPECT_EQ(slider->text(QAccessible::Value), u"Sun, Nov 1 · 01:30:00 EST"_s);
}

class TimelinePicture : public TimelineTest, public testing::WithParamInterface<double> {};

/// The points of the design's picture, which a small generator makes.
std::vector<double> designedAges()
{
    std::int64_t seed = 7;
    const auto next = [&seed] {
        seed = seed * 16'807 % 2'147'483'647;
        return static_cast<double>(seed) / 2'147'483'647.0;
    };
    std::vector<double> ages;
    const auto add = [&](int count, auto age) {
        for (int each = 0; each < count; ++each) {
            ages.push_back(age(each, next()));
        }
    };
    add(7, [](int each, double chance) { return 86'400 * (9 + each * 11 + chance * 6); });
    add(12, [](int each, double chance) { return 86'400 * (1.1 + each * 0.55 + chance * 0.3); });
    add(20, [](int each, double chance) { return 3'600 * (1.1 + each * 1.1 + chance * 0.8); });
    add(26, [](int each, double chance) { return 70 + each * 130 + chance * 90; });
    add(9, [](int each, double chance) { return 3 + each * 6.3 + chance * 4; });
    std::transform(ages.begin(), ages.end(), ages.begin(), [](double age) { return std::floor(age); });
    return ages;
}

TEST_P(TimelinePicture, IsThatOfTheDesign)
{
    const std::vector<double> ages = designedAges();
    std::vector<std::string> timestamps;
    for (const double age : ages) {
        const auto seconds =
            std::chrono::floor<std::chrono::seconds>(present) - std::chrono::seconds(static_cast<std::int64_t>(age));
        timestamps.push_back(QDateTime::fromSecsSinceEpoch(seconds.time_since_epoch().count(), Qt::UTC)
                                 .toString(Qt::ISODate)
                                 .toStdString());
    }
    timeline->setPoints(pointsAt(timestamps));
    timeline->strip()->clearFocus();
    const double ratio = GetParam();
    QImage ours((QSizeF(timeline->strip()->size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    ours.setDevicePixelRatio(ratio);
    ours.fill(Theme::dBg);
    timeline->strip()->render(&ours, QPoint(), QRegion(), QWidget::DrawChildren);
    const QImage design = test::designedStrip({stripWidth, 72}, ratio, 12'325, ages);
    if (qEnvironmentVariableIsSet("QUILLFEN_PICTURES")) {
        const QString folder = qEnvironmentVariable("QUILLFEN_PICTURES");
        ours.save(folder + u"/strip-%1.png"_s.arg(ratio));
        design.save(folder + u"/strip-%1-design.png"_s.arg(ratio));
    }
    EXPECT_LT(test::differingShare(ours, design, 24), 0.01) << "edges of bars, to a quarter of a pixel";
    EXPECT_LT(test::differingShare(ours, design, 64), 0.001);
}

INSTANTIATE_TEST_SUITE_P(Scales, TimelinePicture, testing::Values(1.0, 2.0));

} // namespace
} // namespace quillfen
