// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/timetravelview.h"

#include "../volumes/boardtest.h"

#include "boards/timetravel/timeline.h"
#include "boards/timetravel/timelinestrip.h"
#include "desktop/fileviewer.h"
#include "state/format.h"
#include "state/userlocale.h"
#include "ui/controls/picker.h"
#include "ui/dates/datetimefield.h"
#include "ui/style/fade.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::Contains;
using testing::IsEmpty;

const Instant present = parseDate(u"2026-11-20T12:00:00Z"_s).value();

json::object viewOf(const char *name, bool open)
{
    return params("name", name, "open", open, "point_in_time", "2026-11-19T18:20:04Z");
}

json::object recoveryOf(std::int64_t id, const char *name, const json::value &percent)
{
    return params("id", id, "name", name, "rewind_to", "2026-11-05T08:30:00Z", "state",
                  percent.is_null() ? "ready" : "hydrating", "hydration_pct", percent);
}

class TimeTravelViewTest : public BoardTest {
protected:
    void SetUp() override
    {
        setReducedMotion(true);
        BoardTest::SetUp();
        agent.answer("volumes.views", params("views", json::array()));
        for (const char *method :
             {"views.open", "views.close", "mount.attach", "restore.start", "recovery.promote", "recovery.delete"}) {
            agent.answer(method, nullptr);
        }
        give({volume(1, u"photos"_s), volume(2, u"music"_s)});
    }

    void TearDown() override
    {
        view.reset();
        BoardTest::TearDown();
    }

    /// The board on a window of the usual size, its first load done.
    void show()
    {
        view = std::make_unique<TimeTravelView>(state, &window);
        window.resize(956, 1090);
        view->resize(956, 1090);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        ASSERT_TRUE(settled());
        agent.clearLog();
    }

    [[nodiscard]] bool settled() const
    {
        const bool hasVolumes = !state->volumes().isEmpty();
        const bool loaded = eventually([&] { return !hasVolumes || agent.count("recoveries.list_for_volume") >= 1; });
        QTest::qWait(20); // a frame: what was published is on the screen
        return loaded;
    }

    [[nodiscard]] bool says(const QString &text) const { return shownTexts(view.get()).contains(text); }

    [[nodiscard]] bool soonSays(const QString &text) const
    {
        return eventually([&] { return says(text); });
    }

    [[nodiscard]] bool calls(const char *method, std::size_t times = 1) const
    {
        return eventually([&] { return agent.count(method) == times; });
    }

    template <typename Widget>
    [[nodiscard]] Widget *part() const
    {
        return view->findChild<Widget *>();
    }

    [[nodiscard]] Timeline *timeline() const { return part<Timeline>(); }
    [[nodiscard]] TimelineStrip *strip() const { return timeline()->strip(); }

    /// Presses the strip at the position of a moment.
    void clickStrip(Instant moment) const
    {
        const QPoint place(static_cast<int>(strip()->positionOf(moment)), strip()->height() / 2);
        QTest::mouseClick(strip(), Qt::LeftButton, {}, place);
        QTest::qWait(20);
    }

    [[nodiscard]] QString chosenSecond() const
    {
        const auto whole = std::chrono::floor<std::chrono::seconds>(timeline()->moment());
        return QDateTime::fromSecsSinceEpoch(whole.time_since_epoch().count(), Qt::UTC).toString(Qt::ISODate);
    }

    const LocaleOverride locale{"en_US", "UTC"};
    const ClockOverride clock{[] { return present; }};
    QWidget window;
    std::unique_ptr<TimeTravelView> view;
};

TEST_F(TimeTravelViewTest, WithoutVolumesSaysSoAndAsksForNothing)
{
    give({});
    show();
    EXPECT_TRUE(says(u"No volumes yet."_s));
    EXPECT_TRUE(says(u"Time travel"_s));
    EXPECT_FALSE(part<Picker>()->isVisible());
    EXPECT_FALSE(timeline()->isVisible());
    EXPECT_EQ(buttonOf(view.get(), u"Back to now"_s), nullptr);
    QTest::qWait(30);
    EXPECT_THAT(agent.log(), IsEmpty());
}

TEST_F(TimeTravelViewTest, ReadsTheFirstVolumeWhenItIsShown)
{
    show();
    EXPECT_EQ(part<Picker>()->currentText(), u"photos"_s);
    EXPECT_TRUE(says(u"Viewing the past · read-only"_s));
    EXPECT_TRUE(says(u"1 h ago · 1-second precision"_s));
    EXPECT_TRUE(says(u"Restore points (0)"_s));
    EXPECT_TRUE(says(u"They appear as the volume changes."_s));
    EXPECT_TRUE(says(u"None. Each view is read-only; release it when done."_s));
    EXPECT_FALSE(says(u"New volumes in the making"_s));
}

TEST_F(TimeTravelViewTest, SaysNothingOfWhatItDoesNotKnowYet)
{
    agent.hold("restore_points.list");
    view = std::make_unique<TimeTravelView>(state, &window);
    window.show();
    ASSERT_TRUE(calls("restore_points.list"));
    QTest::qWait(20);
    EXPECT_TRUE(says(u"Restore points (…)"_s));
    EXPECT_FALSE(says(u"They appear as the volume changes."_s));
    EXPECT_FALSE(says(u"None. Each view is read-only; release it when done."_s));
    agent.release("restore_points.list");
    EXPECT_TRUE(soonSays(u"Restore points (0)"_s));
    EXPECT_TRUE(soonSays(u"They appear as the volume changes."_s));
    EXPECT_TRUE(soonSays(u"None. Each view is read-only; release it when done."_s));
}

TEST_F(TimeTravelViewTest, OneLoadComesOfBeingShown)
{
    view = std::make_unique<TimeTravelView>(state, &window);
    window.show();
    ASSERT_TRUE(settled());
    QTest::qWait(30);
    EXPECT_EQ(agent.count("restore_points.list"), 1U);
    EXPECT_EQ(agent.count("volumes.views"), 1U);
}

TEST_F(TimeTravelViewTest, ThePickerChoosesTheVolume)
{
    show();
    Picker *const picker = part<Picker>();
    picker->setFocus();
    QTest::keyClick(picker, Qt::Key_Down);
    ASSERT_TRUE(calls("restore_points.list"));
    EXPECT_EQ(sent("restore_points.list"), params("volume_id", 2));
    EXPECT_EQ(picker->currentText(), u"music"_s);
    press(view.get(), u"Open this second read-only"_s);
    ASSERT_TRUE(calls("views.open"));
    EXPECT_EQ(num(sent("views.open"), "volume_id"), 2);
}

TEST_F(TimeTravelViewTest, AWishToNavigateChoosesTheVolume)
{
    show();
    state->notifications().post(Notifications::navigate, params("section", "timetravel", "volume", "2"));
    ASSERT_TRUE(calls("restore_points.list"));
    EXPECT_EQ(sent("restore_points.list"), params("volume_id", 2));
    EXPECT_TRUE(eventually([&] { return part<Picker>()->currentText() == u"music"_s; }));
    ASSERT_TRUE(calls("recoveries.list_for_volume"));
    agent.clearLog();
    state->notifications().post(Notifications::navigate, params("section", "policy", "volume", 1));
    state->notifications().post(Notifications::navigate, params("section", "timetravel"));
    QTest::qWait(30);
    EXPECT_THAT(agent.log(), IsEmpty());
    EXPECT_EQ(part<Picker>()->currentText(), u"music"_s);
}

TEST_F(TimeTravelViewTest, SurvivesTheDeletionOfItsVolume)
{
    agent.answer("volumes.views", json::array({viewOf("v1", true)}));
    show();
    state->notifications().post(Notifications::navigate, params("section", "timetravel", "volume", 2));
    ASSERT_TRUE(calls("recoveries.list_for_volume"));
    agent.clearLog();
    state->volumes = Records{volume(1, u"photos"_s)};
    ASSERT_TRUE(calls("restore_points.list"));
    EXPECT_EQ(sent("restore_points.list"), params("volume_id", 1));
    EXPECT_TRUE(eventually([&] { return part<Picker>()->currentText() == u"photos"_s; }));
    state->volumes = Records();
    EXPECT_TRUE(soonSays(u"No volumes yet."_s));
    state->volumes = Records{volume(1, u"photos"_s)};
    EXPECT_TRUE(soonSays(u"Open views"_s));
}

TEST_F(TimeTravelViewTest, VolumesThatOnlyChangeAreNotReadAgain)
{
    show();
    state->volumes = Records{volume(2, u"music"_s), volume(1, u"photos!"_s)};
    EXPECT_TRUE(eventually([&] { return part<Picker>()->itemText(1) == u"photos!"_s; }));
    QTest::qWait(30);
    EXPECT_EQ(agent.count("restore_points.list"), 0U);
}

TEST_F(TimeTravelViewTest, ReloadsByKey)
{
    show();
    view->reload();
    EXPECT_TRUE(calls("recoveries.list_for_volume"));
}

TEST_F(TimeTravelViewTest, TheSecondOnTheStripIsTheOneThatIsAskedForAndTold)
{
    show();
    agent.hold("views.open");
    clickStrip(present - 3h);
    const QString timestamp = chosenSecond();
    press(view.get(), u"Open this second read-only"_s);
    ASSERT_TRUE(calls("views.open"));
    EXPECT_EQ(sent("views.open"), params("volume_id", 1, "timestamp", timestamp));
    EXPECT_EQ(toast(), u"Opening photos as it was at "_s + exactDate(timestamp));
    agent.release("views.open");
    ASSERT_TRUE(calls("recoveries.list_for_volume", 3)) << "after the refresh's two, the board's own";
}

TEST_F(TimeTravelViewTest, TheQuestionKeepsTheSecondItWasAskedAbout)
{
    show();
    clickStrip(present - 3h);
    const QString timestamp = chosenSecond();
    {
        const Answering answer(u"Prepare"_s, {}, [this] {
            clickStrip(present - 30h); // nothing holds the rest of the program
            state->volumes = Records{volume(2, u"music"_s)};
        });
        press(view.get(), u"New volume from this second"_s);
        EXPECT_EQ(answer.initial, u"photos-"_s + timestamp.left(16).remove(u'-').remove(u'T').remove(u':'));
        EXPECT_THAT(answer.texts, Contains(u"New volume from "_s + exactDate(timestamp)));
        EXPECT_THAT(answer.texts,
                    Contains(u"A writable copy of photos as it was at that second is prepared (a full copy, which "
                             "takes a while for a large volume); when it is ready, one click makes it a volume. The "
                             "original is untouched."_s));
    }
    ASSERT_TRUE(calls("restore.start"));
    EXPECT_EQ(str(sent("restore.start"), "timestamp"), timestamp);
    EXPECT_EQ(num(sent("restore.start"), "volume_id"), 1);
}

TEST_F(TimeTravelViewTest, ACancelledQuestionAsksForNothing)
{
    show();
    const Answering answer(u"Cancel"_s);
    press(view.get(), u"New volume from this second"_s);
    QTest::qWait(20);
    EXPECT_EQ(agent.count("restore.start"), 0U);
}

TEST_F(TimeTravelViewTest, AnyNameIsSentAsItWasTyped)
{
    show();
    {
        const Answering answer(u"Prepare"_s, u" "_s);
        press(view.get(), u"New volume from this second"_s);
    }
    ASSERT_TRUE(calls("restore.start"));
    EXPECT_EQ(str(sent("restore.start"), "recovery_name"), u" "_s);
}

TEST_F(TimeTravelViewTest, BackToNow)
{
    show();
    press(view.get(), u"Back to now"_s);
    EXPECT_TRUE(soonSays(u"just now · 1-second precision"_s));
    EXPECT_EQ(timeline()->moment(), present);
    EXPECT_EQ(part<DateTimeField>()->dateTime().toMSecsSinceEpoch(), present.time_since_epoch().count());
}

TEST_F(TimeTravelViewTest, StripAndFieldKeepInStep)
{
    show();
    DateTimeField *const field = part<DateTimeField>();
    EXPECT_EQ(field->text(), u"Nov 20, 2026 · 11:00"_s);
    strip()->setFocus();
    QTest::keyClick(strip(), Qt::Key_Left);
    QTest::keyClick(strip(), Qt::Key_PageUp);
    EXPECT_TRUE(eventually([&] {
        return field->text() == u"Nov 20, 2026 · 11:59"_s || field->text() == u"Nov 20, 2026 · 09:59"_s;
    })) << field->text().toStdString();
    const Instant before = timeline()->moment();
    field->setFocus();
    field->setCurrentSection(QDateTimeEdit::DaySection);
    QTest::keyClick(field, Qt::Key_Down);
    EXPECT_TRUE(eventually([&] { return timeline()->moment() == before - 24h; })) << "the second stays";
}

TEST_F(TimeTravelViewTest, WhichOfTwoEqualTimesTheFieldShowsHasRoomInIt)
{
    const LocaleOverride berlin("en_US", "Europe/Berlin");
    const ClockOverride thatNight{[] { return *parseDate(u"2026-10-25T01:30:00Z"_s); }};
    show();
    DateTimeField *const field = part<DateTimeField>();
    EXPECT_TRUE(eventually([&] { return field->text().endsWith(u" +2"_s); })) << field->text().toStdString();
    const QLineEdit *const line = field->findChild<QLineEdit *>();
    EXPECT_LE(line->fontMetrics().horizontalAdvance(line->text()) + 4, line->width());
}

TEST_F(TimeTravelViewTest, TheFieldNeverChoosesTheFuture)
{
    show();
    DateTimeField *const field = part<DateTimeField>();
    field->setFocus();
    field->setCurrentSection(QDateTimeEdit::YearSection);
    QTest::keyClick(field, Qt::Key_Up);
    EXPECT_TRUE(eventually([&] { return timeline()->moment() == present; }));
    EXPECT_TRUE(eventually([&] { return field->text() == u"Nov 20, 2026 · 12:00"_s; })) << field->text().toStdString();
}

TEST_F(TimeTravelViewTest, ViewsOfferWhatTheirStateAllows)
{
    agent.answer("volumes.views", json::array({viewOf("shown", false), viewOf("open", true), viewOf("closed", false)}));
    mounted(u"photos-view-shown"_s, u"/mnt/shown"_s);
    show();
    EXPECT_TRUE(says(u"as of Thu, Nov 19 · 18:20:04"_s));
    EXPECT_NE(buttonOf(view.get(), u"Show in Finder, shown"_s), nullptr);
    EXPECT_NE(buttonOf(view.get(), u"Mount, open"_s), nullptr);
    EXPECT_NE(buttonOf(view.get(), u"Open again, closed"_s), nullptr);
    for (const QString &name : {u"shown"_s, u"open"_s, u"closed"_s}) {
        EXPECT_NE(buttonOf(view.get(), u"Release, "_s + name), nullptr);
    }
    EXPECT_EQ(buttonOf(view.get(), u"Mount, shown"_s), nullptr);
    EXPECT_EQ(buttonOf(view.get(), u"Open again, open"_s), nullptr);
    EXPECT_FALSE(says(u"None. Each view is read-only; release it when done."_s));

    QString folder;
    const FileViewerOverride viewer({.showFolder = [&](const QString &path) { folder = path; },
                                     .revealFile = [](const QString &) {},
                                     .openLink = [](const QUrl &) {}});
    press(view.get(), u"Show in Finder, shown"_s);
    EXPECT_EQ(folder, u"/mnt/shown"_s);
}

TEST_F(TimeTravelViewTest, ViewsAreMountedOpenedAgainAndReleased)
{
    agent.answer("volumes.views", json::array({viewOf("open", true), viewOf("closed", false)}));
    show();
    press(view.get(), u"Mount, open"_s);
    ASSERT_TRUE(calls("mount.attach"));
    EXPECT_EQ(sent("mount.attach"), params("volume_id", 1, "view", "open"));
    press(view.get(), u"Open again, closed"_s);
    ASSERT_TRUE(calls("views.open"));
    EXPECT_EQ(sent("views.open"), params("volume_id", 1, "timestamp", "2026-11-19T18:20:04Z", "name", "closed"));
    press(view.get(), u"Release, open"_s);
    ASSERT_TRUE(calls("views.close"));
    EXPECT_EQ(sent("views.close"), params("volume_id", 1, "name", "open"));
}

TEST_F(TimeTravelViewTest, AMountThatComesChangesTheRow)
{
    agent.answer("volumes.views", json::array({viewOf("v1", true)}));
    show();
    QAbstractButton *const mount = buttonOf(view.get(), u"Mount, v1"_s);
    ASSERT_NE(mount, nullptr);
    mount->setFocus(Qt::TabFocusReason);
    state->mounts = Records{params("name", "photos-view-v1", "mountpoint", "/mnt/v1")};
    EXPECT_TRUE(eventually([&] { return buttonOf(view.get(), u"Show in Finder, v1"_s) != nullptr; }));
    EXPECT_EQ(QApplication::focusWidget(), buttonOf(view.get(), u"Show in Finder, v1"_s))
        << "the keyboard stays in the row";
}

TEST_F(TimeTravelViewTest, ViewsOfOneNameAreAllListed)
{
    agent.answer("volumes.views", json::array({viewOf("v1", true), viewOf("v1", false)}));
    show();
    EXPECT_NE(buttonOf(view.get(), u"Mount, v1"_s), nullptr);
    EXPECT_NE(buttonOf(view.get(), u"Open again, v1"_s), nullptr);
}

TEST_F(TimeTravelViewTest, NewVolumesInTheMaking)
{
    agent.answer("recoveries.list_for_volume",
                 params("recoveries", json::array({recoveryOf(7, "whole", nullptr), recoveryOf(8, "half", 64)})));
    show();
    EXPECT_TRUE(says(u"New volumes in the making"_s));
    EXPECT_TRUE(says(u"from Thu, Nov 5 · 08:30:00"_s));
    EXPECT_TRUE(says(u"from Thu, Nov 5 · 08:30:00 · 64% copied"_s));
    EXPECT_NE(buttonOf(view.get(), u"Make it a volume, whole"_s), nullptr);
    EXPECT_EQ(buttonOf(view.get(), u"Make it a volume, half"_s), nullptr);
    {
        const Answering answer(u"Create volume"_s, u"fresh"_s);
        press(view.get(), u"Make it a volume, whole"_s);
        EXPECT_EQ(answer.initial, u"whole"_s);
        EXPECT_THAT(answer.texts, Contains(u"Make whole a volume?"_s));
        EXPECT_THAT(answer.texts, Contains(u"It becomes an ordinary volume with its own history from now on."_s));
    }
    ASSERT_TRUE(calls("recovery.promote"));
    EXPECT_EQ(sent("recovery.promote"), params("recovery_id", 7, "new_name", "fresh"));
}

TEST_F(TimeTravelViewTest, DiscardingAsksFirst)
{
    agent.answer("recoveries.list_for_volume", params("recoveries", json::array({recoveryOf(8, "half", 64)})));
    show();
    {
        const Answering answer(u"Cancel"_s);
        press(view.get(), u"Discard, half"_s);
        EXPECT_THAT(answer.texts, Contains(u"Discard half?"_s));
        EXPECT_THAT(answer.texts,
                    Contains(u"The copy is deleted. The original volume and its history are untouched."_s));
    }
    EXPECT_EQ(agent.count("recovery.delete"), 0U);
    {
        const Answering answer(u"Discard"_s);
        press(view.get(), u"Discard, half"_s);
    }
    ASSERT_TRUE(calls("recovery.delete"));
    EXPECT_EQ(sent("recovery.delete"), params("recovery_id", 8));
}

TEST_F(TimeTravelViewTest, ACopyFillsUpBeforeOnesEyes)
{
    agent.answer("recoveries.list_for_volume", params("recoveries", json::array({recoveryOf(8, "half", 64)})));
    show();
    agent.answer("recoveries.list_for_volume", params("recoveries", json::array({recoveryOf(8, "half", nullptr)})));
    await(state->refresh());
    EXPECT_TRUE(eventually([&] { return buttonOf(view.get(), u"Make it a volume, half"_s) != nullptr; }));
}

TEST_F(TimeTravelViewTest, RestorePointsAreCountedAndOpened)
{
    agent.answer(
        "restore_points.list",
        params("points", json::array({params("timestamp", "2026-11-19T18:20:04Z", "label", "before the merge"),
                                      params("timestamp", "2026-11-19T18:20:04Z"), params("timestamp", "not a moment"),
                                      params("timestamp", "2031-01-01T00:00:00Z")})));
    show();
    EXPECT_TRUE(says(u"Restore points (4)"_s));
    EXPECT_TRUE(says(u"before the merge"_s));
    EXPECT_TRUE(says(u"not a moment"_s));
    press(view.get(), u"Open, not a moment"_s);
    ASSERT_TRUE(calls("views.open"));
    EXPECT_EQ(sent("views.open"), params("volume_id", 1, "timestamp", "not a moment"));
    EXPECT_EQ(toast(), u"Opening photos as it was at not a moment"_s);
}

TEST_F(TimeTravelViewTest, TheBoardMayGoWhileItAsks)
{
    show();
    QTimer poll;
    bool gone = false;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        if (QApplication::activeModalWidget() != nullptr) {
            poll.stop();
            view.reset();
            gone = true;
        }
    });
    poll.start(1);
    // The button goes with the board: it is pressed from outside.
    const QPointer<QAbstractButton> button = buttonOf(view.get(), u"New volume from this second"_s);
    QTimer::singleShot(0, button, [button] { button->click(); });
    EXPECT_TRUE(eventually([&] { return gone && QApplication::activeModalWidget() == nullptr; }));
    QTest::qWait(20);
    EXPECT_EQ(agent.count("restore.start"), 0U) << "a question whose board has gone is cancelled";
}

TEST_F(TimeTravelViewTest, TheAgentMayGoDuringADrag)
{
    show();
    QTest::mousePress(strip(), Qt::LeftButton, {}, strip()->rect().center());
    agent.stop();
    ASSERT_TRUE(eventually([&] { return !state->connected(); }));
    QTest::mouseMove(strip(), strip()->rect().center() - QPoint(60, 0));
    view.reset(); // as the window does without an agent
    agent.restart();
    state->connect();
    show();
    clickStrip(present - 3h);
    EXPECT_LT(timeline()->moment(), present - 1h);
}

TEST_F(TimeTravelViewTest, EverythingIsReachedByTab)
{
    agent.answer("restore_points.list", params("points", json::array({params("timestamp", "2026-11-19T18:20:04Z")})));
    agent.answer("volumes.views", json::array({viewOf("v1", true)}));
    agent.answer("recoveries.list_for_volume", params("recoveries", json::array({recoveryOf(7, "whole", nullptr)})));
    show();
    QStringList stops;
    part<Picker>()->setFocus(Qt::TabFocusReason);
    for (int stop = 0; stop < 11; ++stop) {
        const QWidget *const focused = QApplication::focusWidget();
        const QString name = focused->accessibleName();
        stops << (name.isEmpty() ? focused->property("text").toString() : name);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    const QString moment = stops.value(2);
    EXPECT_EQ(stops,
              (QStringList{u"Volume"_s, u"Back to now"_s, moment, u"Date and time"_s, u"Open this second read-only"_s,
                           u"New volume from this second"_s, u"Mount, v1"_s, u"Release, v1"_s,
                           u"Make it a volume, whole"_s, u"Discard, whole"_s, u"Open, Thu, Nov 19 · 18:20:04"_s}));
}

TEST_F(TimeTravelViewTest, NothingIsWiderThanASmallWindow)
{
    const QByteArray longName(60, 'w');
    agent.answer("volumes.views", json::array({viewOf(longName.constData(), true)}));
    agent.answer("recoveries.list_for_volume",
                 params("recoveries", json::array({recoveryOf(7, longName.constData(), nullptr),
                                                   recoveryOf(8, longName.constData(), 64)})));
    show();
    EXPECT_LE(view->minimumSizeHint().width(), 736) << "what a window of 960 leaves to a board";
    window.resize(736, 600);
    view->resize(736, 600);
    QTest::qWait(20);
    for (const QString &name : {u"Mount, "_s, u"Release, "_s, u"Make it a volume, "_s, u"Discard, "_s}) {
        const QAbstractButton *const button = buttonOf(view.get(), name + QString::fromLatin1(longName));
        ASSERT_NE(button, nullptr) << name.toStdString();
        EXPECT_LE(button->mapTo(view.get(), QPoint(button->width(), 0)).x(), 736 - 20) << name.toStdString();
    }
}

} // namespace
