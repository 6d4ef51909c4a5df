// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/timetravelrows.h"

#include "../volumes/boardtest.h"

#include "state/userlocale.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

Instant at(std::int64_t milliseconds)
{
    return Instant(std::chrono::milliseconds(milliseconds));
}

constexpr std::int64_t secondOfMarch = 1'772'600'767'000; // 2026-03-04T05:06:07Z

class TimeTravelRows : public testing::Test {
protected:
    [[nodiscard]] ViewRow row(const Record &view) const { return viewRow(*state, u"photos"_s, view); }

    const LocaleOverride locale{"en_US", "UTC"};
    std::shared_ptr<AppState> state = AppState::create();
};

Record view(bool open)
{
    return params("name", "v1", "open", open, "point_in_time", "2026-03-04T05:06:07Z");
}

TEST_F(TimeTravelRows, MomentsAreSentInUtcWithWholeSeconds)
{
    EXPECT_EQ(isoSecond(at(secondOfMarch)), u"2026-03-04T05:06:07Z"_s);
    EXPECT_EQ(isoSecond(at(secondOfMarch + 999)), u"2026-03-04T05:06:07Z"_s);
    EXPECT_EQ(isoSecond(at(-1)), u"1969-12-31T23:59:59Z"_s);
    const LocaleOverride elsewhere("ar_EG", "Asia/Kathmandu");
    EXPECT_EQ(isoSecond(at(secondOfMarch)), u"2026-03-04T05:06:07Z"_s);
}

TEST_F(TimeTravelRows, AShortNameIsTheFirstTwelveDigits)
{
    EXPECT_EQ(shortName(u"2026-03-04T05:06:07.123Z"_s), u"202603040506"_s);
    EXPECT_EQ(shortName(u"2026-03-04T05:06:07Z"_s), u"202603040506"_s);
    EXPECT_EQ(shortName(u"2026"_s), u"2026"_s);
    EXPECT_EQ(shortName(u"noon"_s), QString());
    EXPECT_EQ(shortName(QString()), QString());
}

TEST_F(TimeTravelRows, AViewThatIsMountedCanBeShown)
{
    state->mounts = Records{params("name", "photos-view-v1", "mountpoint", "/mnt/v1")};
    const ViewRow shown = row(view(false));
    EXPECT_EQ(shown.offer, ViewRow::Offer::Show);
    EXPECT_EQ(shown.folder, u"/mnt/v1"_s);
    EXPECT_EQ(shown.origin, u"as of Wed, Mar 4 · 05:06:07"_s);
}

TEST_F(TimeTravelRows, AnOpenViewCanBeMountedAndAClosedOneOpenedAgain)
{
    state->mounts = Records{params("name", "other-view-v1", "mountpoint", "/mnt/v1")};
    EXPECT_EQ(row(view(true)).offer, ViewRow::Offer::Mount);
    EXPECT_EQ(row(view(false)).offer, ViewRow::Offer::OpenAgain);
    EXPECT_EQ(row(params("name", "v1")).offer, ViewRow::Offer::OpenAgain) << "absent means false";
    EXPECT_EQ(row(params("name", "v1", "open", "yes")).offer, ViewRow::Offer::OpenAgain);
    EXPECT_EQ(row(view(false)).timestamp, u"2026-03-04T05:06:07Z"_s);
}

TEST_F(TimeTravelRows, ARecoveryTellsHowMuchOfItIsThere)
{
    const RecoveryRow half = recoveryRow(
        params("id", 7, "name", "c", "rewind_to", "2026-03-04T05:06:07Z", "state", "hydrating", "hydration_pct", 64));
    EXPECT_EQ(half.id, 7);
    EXPECT_EQ(half.origin, u"from Wed, Mar 4 · 05:06:07 · 64% copied"_s);
    EXPECT_FALSE(half.isReady);
    const RecoveryRow whole =
        recoveryRow(params("rewind_to", "2026-03-04T05:06:07Z", "state", "ready", "hydration_pct", nullptr));
    EXPECT_EQ(whole.origin, u"from Wed, Mar 4 · 05:06:07"_s);
    EXPECT_TRUE(whole.isReady);
    EXPECT_EQ(recoveryRow(params("rewind_to", "soon")).origin, u"from soon"_s);
}

TEST_F(TimeTravelRows, ASecondThatIsThereTwiceTellsWhichItIs)
{
    const LocaleOverride berlin("en_US", "Europe/Berlin");
    const QString summer = recoveryRow(params("rewind_to", "2026-10-25T00:30:00Z")).origin;
    const QString winter = recoveryRow(params("rewind_to", "2026-10-25T01:30:00Z")).origin;
    EXPECT_TRUE(summer.startsWith(u"from Sun, Oct 25 · 02:30:00 "_s)) << summer.toStdString();
    EXPECT_TRUE(winter.startsWith(u"from Sun, Oct 25 · 02:30:00 "_s)) << winter.toStdString();
    EXPECT_NE(summer, winter);
    EXPECT_NE(row(params("point_in_time", "2026-10-25T00:30:00Z")).origin,
              row(params("point_in_time", "2026-10-25T01:30:00Z")).origin);
}

TEST_F(TimeTravelRows, TheAgeOfTheChosenSecond)
{
    const ClockOverride clock([] { return at(secondOfMarch + 5'000'000); });
    EXPECT_EQ(ageText(at(secondOfMarch)), u"1 h ago · 1-second precision"_s);
    EXPECT_EQ(ageText(at(secondOfMarch + 5'000'000)), u"just now · 1-second precision"_s);
}

TEST_F(TimeTravelRows, AnOpenedViewTellsWhereItIs)
{
    EXPECT_EQ(openedText(params("mounted", true, "mountpoint", "/mnt/v1", "note", "n")),
              u"The view is mounted at /mnt/v1 (read-only)."_s);
    EXPECT_EQ(openedText(params("mounted", true, "mountpoint", "", "note", "Wait a moment.")), u"Wait a moment."_s);
    EXPECT_EQ(openedText(params("mounted", true, "mountpoint", "")), u"The view is open."_s);
    EXPECT_EQ(openedText(params("mounted", false, "mountpoint", "/mnt/v1")), u"The view is open."_s);
    EXPECT_EQ(openedText(params("mounted", "true", "mountpoint", "/mnt/v1", "note", "")), u"The view is open."_s);
    EXPECT_EQ(openedText(params("note", 5)), u"The view is open."_s) << "a note is a text";
    EXPECT_EQ(openedText(nullptr), u"The view is open."_s);
}

} // namespace
