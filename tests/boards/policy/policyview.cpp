// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/policy/policyview.h"

#include "boardtest.h"

#include "boards/policy/presetrow.h"
#include "boards/policy/tierrow.h"
#include "ui/controls/picker.h"
#include "ui/parts/bar.h"
#include "ui/parts/card.h"
#include "ui/style/fade.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QPixmap>

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

class PolicyViewTest : public BoardTest {
protected:
    void SetUp() override
    {
        setReducedMotion(true);
        BoardTest::SetUp();
        give({volume(1, u"photos"_s), volume(2, u"music"_s)});
        agent.on("history.show", [](const json::object &asked) -> FakeAgent::Answer {
            return params("output", asked.at("volume_id") == json::value(2) ? "60,12,3,1,1,0" : "720,24,7,4,6,1");
        });
        agent.answer("history.set", json::object());
        agent.answer("volumes.snapshots", json::object());
    }

    void show(int width = 956, int height = 700)
    {
        window.resize(width, height);
        view = std::make_unique<PolicyView>(state, &window);
        view->resize(width, height);
        window.show();
        view->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        ASSERT_TRUE(eventually([&] { return agent.count("history.show") >= 1; }));
        QTest::qWait(5);
    }

    [[nodiscard]] QStringList texts() const { return shownTexts(view.get()); }
    [[nodiscard]] bool says(const QString &text) const { return texts().contains(text); }

    [[nodiscard]] PresetRow *preset(int index) const { return view->findChildren<PresetRow *>().at(index); }
    [[nodiscard]] TierRow *tier(int index) const { return view->findChildren<TierRow *>().at(index); }
    [[nodiscard]] Picker *tierPicker(int index) const { return tier(index)->findChild<Picker *>(); }
    [[nodiscard]] Bar *band(int index) const { return tier(index)->findChild<Bar *>(); }
    [[nodiscard]] Picker *volumes() const
    {
        for (Picker *each : view->findChildren<Picker *>()) {
            if (each->accessibleName() == u"Volume"_s) {
                return each;
            }
        }
        return nullptr;
    }
    [[nodiscard]] QAbstractButton *save() const { return buttonOf(view.get(), u"Save policy"_s); }

    /// As a person chooses from a list: open it, go to the row, take it.
    static void choose(Picker *picker, int row)
    {
        picker->setFocus(Qt::TabFocusReason);
        while (picker->currentIndex() < row) {
            QTest::keyClick(picker, Qt::Key_Down);
        }
        while (picker->currentIndex() > row) {
            QTest::keyClick(picker, Qt::Key_Up);
        }
    }

    QWidget window;
    std::unique_ptr<PolicyView> view;
};

TEST_F(PolicyViewTest, SaysEverythingItHasToSay)
{
    show();
    const QStringList said = texts();
    for (const char *text : {"History policy",
                             "How long each second is kept.",
                             "recommended",
                             "Standard",
                             "Keep a restore point…",
                             "every second",
                             "every minute",
                             "every hour",
                             "every day",
                             "every week",
                             "every month",
                             "12 hours",
                             "24 hours",
                             "7 days",
                             "4 weeks",
                             "6 months",
                             "1 year",
                             "The numbers are a ceiling. When space runs short, the oldest tiers shrink first; recent "
                             "seconds are never thinned early.",
                             "Reset to standard",
                             "Save policy",
                             "Pinned snapshots",
                             "A pinned point stays until you delete it, whatever the policy says.",
                             "Pin this moment"}) {
        EXPECT_TRUE(said.contains(QString::fromUtf8(text))) << text;
    }
    EXPECT_THAT(said, testing::IsSupersetOf({u"Light, An hour of per-second history. For data that is reproducible."_s,
                                             u"Standard, recommended, Half a day of per-second history, a day of "
                                             u"per-minute, a week of per-hour. Right for most volumes."_s,
                                             u"Extended, Two days of per-second history and a month of per-hour. For "
                                             u"changes that might go unnoticed for weeks."_s}));
}

TEST_F(PolicyViewTest, TheOtherNamesAndSpansAppearWithTheirNumbers)
{
    show();
    for (int index = 0; index < 6; ++index) {
        choose(tierPicker(index), 0);
    }
    EXPECT_TRUE(eventually([&] { return says(u"No history"_s) && says(u"—"_s); }));
    choose(tierPicker(0), 1);
    EXPECT_TRUE(eventually([&] { return says(u"Custom"_s) && says(u"1 hour"_s); }));
}

TEST_F(PolicyViewTest, ShowsTheLoadedPolicy)
{
    show();
    EXPECT_TRUE(preset(1)->isChecked());
    EXPECT_FALSE(preset(0)->isChecked() || preset(2)->isChecked());
    EXPECT_EQ(tierPicker(0)->currentText(), u"12 hours"_s);
    EXPECT_EQ(tierPicker(5)->currentText(), u"1 year"_s);
    EXPECT_FALSE(save()->isEnabled()) << "nothing to save";
}

TEST_F(PolicyViewTest, APresetFillsAllTiersAtOnce)
{
    show();
    QTest::mouseClick(preset(2), Qt::LeftButton, {}, QPoint(5, preset(2)->height() - 5));
    EXPECT_TRUE(eventually([&] { return says(u"Extended"_s); }));
    EXPECT_THAT((QStringList{tierPicker(0)->currentText(), tierPicker(1)->currentText(), tierPicker(2)->currentText(),
                             tierPicker(3)->currentText(), tierPicker(4)->currentText(), tierPicker(5)->currentText()}),
                ElementsAre(u"48 hours"_s, u"3 days"_s, u"30 days"_s, u"12 weeks"_s, u"12 months"_s, u"3 years"_s));
    EXPECT_TRUE(preset(2)->isChecked());
    EXPECT_TRUE(save()->isEnabled());
    EXPECT_EQ(agent.count("history.set"), 0U);
}

TEST_F(PolicyViewTest, ATierOfOnesOwnLeavesNoPresetChosen)
{
    show();
    choose(tierPicker(5), 2);
    EXPECT_TRUE(eventually([&] { return says(u"Custom"_s) && says(u"2 years"_s); }));
    EXPECT_FALSE(preset(0)->isChecked() || preset(1)->isChecked() || preset(2)->isChecked());
    choose(tierPicker(5), 1);
    EXPECT_TRUE(eventually([&] { return preset(1)->isChecked(); }));
    EXPECT_FALSE(save()->isEnabled()) << "as it was saved";
}

TEST_F(PolicyViewTest, ANumberThatIsNoChoiceIsShownAndKept)
{
    agent.answer("history.show", params("output", "90,24,7,4,6,1"));
    show();
    ASSERT_TRUE(eventually([&] { return tierPicker(0)->currentText() == u"90 minutes"_s; }));
    EXPECT_EQ(tierPicker(0)->count(), 7);
    EXPECT_TRUE(says(u"Custom"_s));
    choose(tierPicker(1), 4);
    ASSERT_TRUE(eventually([&] { return save()->isEnabled(); }));
    press(view.get(), u"Save policy"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("history.set") == 1; }));
    EXPECT_EQ(sent("history.set"), params("volume_id", 1, "policy", "90,48,7,4,6,1"));
    choose(tierPicker(0), 3);
    EXPECT_TRUE(eventually([&] { return tierPicker(0)->count() == 6; }));
    EXPECT_EQ(tierPicker(0)->currentText(), u"12 hours"_s);
}

TEST_F(PolicyViewTest, TheBandsFollowTheChoice)
{
    show();
    const double before = band(0)->fraction();
    EXPECT_NEAR(before, 0.545, 0.001);
    choose(tierPicker(0), 1);
    EXPECT_TRUE(eventually([&] { return band(0)->fraction() < before; }));
    choose(tierPicker(0), 0);
    EXPECT_TRUE(eventually([&] { return band(0)->fraction() == 0.0; }));
}

TEST_F(PolicyViewTest, TheBandsHaveTheColoursOfTheirTiers)
{
    show();
    for (int index = 0; index < 6; ++index) {
        const QImage picture = band(index)->grab().toImage();
        EXPECT_EQ(picture.pixelColor(picture.width() / 4, picture.height() / 2),
                  Theme::tierColors.at(static_cast<std::size_t>(index)))
            << index;
    }
}

TEST_F(PolicyViewTest, ThePictureIsDescribed)
{
    show();
    const auto described = [&](const QString &words) {
        for (const Card *card : view->findChildren<Card *>()) {
            if (card->accessibleDescription() == words) {
                return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(described(u"every second for 12 hours, every minute for 24 hours, every hour for 7 days, every day for "
                          u"4 weeks, every week for 6 months, every month for 1 year"_s));
    choose(tierPicker(0), 0);
    EXPECT_TRUE(eventually([&] {
        return described(u"every second not kept, every minute for 24 hours, every hour for 7 days, every day for 4 "
                         u"weeks, every week for 6 months, every month for 1 year"_s);
    }));
}

TEST_F(PolicyViewTest, EveryControlHasItsNameAndRole)
{
    show();
    const std::array<const char *, 6> labels{"every second", "every minute", "every hour",
                                             "every day",    "every week",   "every month"};
    for (int index = 0; index < 6; ++index) {
        const QString label = QString::fromLatin1(labels.at(static_cast<std::size_t>(index)));
        EXPECT_EQ(tierPicker(index)->accessibleName(), label);
        EXPECT_EQ(band(index)->accessibleName(), label);
        QAccessibleInterface *const bar = QAccessible::queryAccessibleInterface(band(index));
        EXPECT_EQ(bar->role(), QAccessible::ProgressBar);
        EXPECT_EQ(band(index)->property("accessibleValue").toString(), tierPicker(index)->currentText());
    }
    EXPECT_EQ(QAccessible::queryAccessibleInterface(preset(0))->role(), QAccessible::RadioButton);
    EXPECT_EQ(volumes()->accessibleName(), u"Volume"_s);
}

TEST_F(PolicyViewTest, SavesAndRestsAfterwards)
{
    show();
    press(view.get(), preset(0)->accessibleName());
    ASSERT_TRUE(eventually([&] { return save()->isEnabled(); }));
    agent.hold("history.set");
    press(view.get(), u"Save policy"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("history.set") == 1 && !save()->isEnabled(); }));
    agent.release("history.set");
    EXPECT_TRUE(eventually([&] { return toast() == u"policy saved"_s; }));
    QTest::qWait(5);
    EXPECT_FALSE(save()->isEnabled());
    EXPECT_EQ(sent("history.set"), params("volume_id", 1, "policy", "60,12,3,1,1,0"));
}

TEST_F(PolicyViewTest, ResetSendsNothing)
{
    show();
    choose(tierPicker(0), 5);
    ASSERT_TRUE(eventually([&] { return says(u"Custom"_s); }));
    press(view.get(), u"Reset to standard"_s);
    EXPECT_TRUE(eventually([&] { return preset(1)->isChecked(); }));
    EXPECT_EQ(agent.count("history.set"), 0U);
}

TEST_F(PolicyViewTest, AnotherVolumeShowsItsOwnPolicy)
{
    show();
    EXPECT_THAT((QStringList{volumes()->itemText(0), volumes()->itemText(1)}), ElementsAre(u"photos"_s, u"music"_s));
    choose(volumes(), 1);
    EXPECT_TRUE(eventually([&] { return preset(0)->isChecked(); }));
    EXPECT_EQ(sent("history.show"), params("volume_id", 2));
    choose(tierPicker(0), 5);
    ASSERT_TRUE(eventually([&] { return save()->isEnabled(); }));
    press(view.get(), u"Save policy"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("history.set") == 1; }));
    EXPECT_EQ(sent("history.set").at("volume_id"), json::value(2));
}

TEST_F(PolicyViewTest, ARefreshLeavesTheUsersChoiceAlone)
{
    show();
    choose(volumes(), 1);
    ASSERT_TRUE(eventually([&] { return preset(0)->isChecked(); }));
    choose(tierPicker(0), 4);
    await(state->refresh());
    view->reload();
    ASSERT_TRUE(eventually([&] { return agent.count("history.show") == 3; }));
    QTest::qWait(5);
    EXPECT_EQ(tierPicker(0)->currentText(), u"24 hours"_s);
    EXPECT_EQ(volumes()->currentText(), u"music"_s);
    EXPECT_TRUE(save()->isEnabled());
    EXPECT_TRUE(tierPicker(0)->hasFocus());
}

TEST_F(PolicyViewTest, AVolumeThatComesShowsUpAndOneThatGoesMakesRoom)
{
    show();
    give({volume(2, u"music"_s), volume(3, u"films"_s)});
    EXPECT_TRUE(eventually([&] { return volumes()->count() == 2 && volumes()->currentText() == u"music"_s; }));
    EXPECT_TRUE(eventually([&] { return preset(0)->isChecked(); })) << "its policy is read";
}

TEST_F(PolicyViewTest, WithoutVolumesNothingCanBeSavedOrPinned)
{
    give({});
    window.resize(900, 700);
    view = std::make_unique<PolicyView>(state, &window);
    view->resize(900, 700);
    window.show();
    view->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    press(view.get(), preset(0)->accessibleName());
    QTest::qWait(5);
    EXPECT_FALSE(save()->isEnabled());
    EXPECT_FALSE(buttonOf(view.get(), u"Pin this moment"_s)->isEnabled());
    EXPECT_FALSE(volumes()->isVisible());
}

TEST_F(PolicyViewTest, PinsThisMoment)
{
    show();
    press(view.get(), u"Pin this moment"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"pinned"_s; }));
    EXPECT_EQ(sent("volumes.snapshots").at("volume_id"), json::value(1));
}

TEST_F(PolicyViewTest, ThePresetsAreWalkedByArrowKeys)
{
    show();
    volumes()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(volumes(), Qt::Key_Tab);
    ASSERT_TRUE(preset(1)->hasFocus()) << "Tab goes to the choice";
    QTest::keyClick(preset(1), Qt::Key_Down);
    EXPECT_TRUE(eventually([&] { return preset(2)->isChecked() && preset(2)->hasFocus(); }));
    QTest::keyClick(preset(2), Qt::Key_Up);
    EXPECT_TRUE(eventually([&] { return preset(1)->isChecked() && preset(1)->hasFocus(); }));
}

TEST_F(PolicyViewTest, TheKeyboardReachesEverything)
{
    show();
    press(view.get(), preset(0)->accessibleName());
    ASSERT_TRUE(eventually([&] { return save()->isEnabled(); }));
    volumes()->setFocus(Qt::TabFocusReason);
    QStringList stops;
    for (int stop = 0; stop < 14; ++stop) {
        QWidget *const focused = QApplication::focusWidget();
        ASSERT_NE(focused, nullptr);
        stops << focused->accessibleName().section(u',', 0, 0) + focused->property("text").toString();
        QTest::keyClick(focused, Qt::Key_Tab);
    }
    EXPECT_THAT(stops, testing::IsSupersetOf({u"Volume"_s, u"Light"_s, u"every second"_s, u"every minute"_s,
                                              u"every hour"_s, u"every day"_s, u"every week"_s, u"every month"_s}));
    EXPECT_TRUE(stops.join(u'|').contains(u"Save policy"_s)) << stops.join(u'|').toStdString();
    EXPECT_TRUE(stops.join(u'|').contains(u"Pin this moment"_s));
}

TEST_F(PolicyViewTest, StacksInANarrowWindowAndNeverScrollsSideways)
{
    show(736, 600);
    const QPoint presets = preset(0)->mapTo(view.get(), QPoint());
    const QPoint tiers = tier(0)->mapTo(view.get(), QPoint());
    EXPECT_GT(tiers.y(), presets.y() + preset(0)->height());
    EXPECT_LE(tier(0)->mapTo(view.get(), QPoint(tier(0)->width(), 0)).x(), view->width());
    view->resize(956, 700);
    EXPECT_TRUE(eventually([&] { return tier(0)->mapTo(view.get(), QPoint()).x() > 308; }));
}

// Runs a second time with text half as large again.
TEST_F(PolicyViewTest, EveryTierIsWholeInTheUsualWindowWhateverTheTextSize)
{
    show();
    for (int index = 0; index < 6; ++index) {
        const TierRow *const row = tier(index);
        EXPECT_LE(row->mapTo(view.get(), QPoint(row->width(), 0)).x(), view->width());
    }
    EXPECT_LE(save()->mapTo(view.get(), QPoint(save()->width(), 0)).x(), view->width());
}

} // namespace
