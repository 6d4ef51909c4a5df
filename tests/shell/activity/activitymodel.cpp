// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/activity/activitymodel.h"

#include "builders.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;

class ActivityModelTest : public testing::Test {
protected:
    /// What the rows say, without the time.
    [[nodiscard]] QStringList words() const
    {
        QStringList all;
        for (int row = 0; row < model.rowCount(); ++row) {
            const std::optional<ActivityRow> shown = model.row(row);
            all << (shown ? shown->words : u"(gone)"_s);
        }
        return all;
    }

    void notice(const QString &text)
    {
        activity.noticed(text);
        model.sync();
    }

    Activity activity;
    ActivityModel model{activity};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(ActivityModelTest, TheNewestIsOnTopAndWhatRunsAboveIt)
{
    notice(u"one"_s);
    notice(u"two"_s);
    const std::uint64_t first = activity.begin(runningCall("a.first"));
    activity.noticed(u"three"_s);
    const std::uint64_t second = activity.begin(runningCall("b.second", u"Second"_s));
    model.sync();
    EXPECT_EQ(words(), (QStringList{u"Second"_s, u"a.first"_s, u"three"_s, u"two"_s, u"one"_s}));
    EXPECT_EQ(model.runningCount(), 2);
    EXPECT_EQ(model.rowOf({true, first}), 1);
    activity.end(second, {u"ready"_s});
    model.sync();
    EXPECT_EQ(words(), (QStringList{u"a.first"_s, u"ready"_s, u"three"_s, u"two"_s, u"one"_s}));
}

TEST_F(ActivityModelTest, ABurstComesInAsOneChange)
{
    notice(u"before"_s);
    const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    for (int number = 0; number < 5'000; ++number) {
        activity.noticed(QString::number(number));
    }
    model.sync();
    ASSERT_EQ(inserted.size(), 1);
    EXPECT_EQ(inserted.front().at(1).toInt(), 0);
    EXPECT_EQ(inserted.front().at(2).toInt(), 4'999);
    EXPECT_TRUE(reset.isEmpty());
    EXPECT_EQ(model.row(0)->words, u"4999"_s);
    EXPECT_EQ(model.row(5'000)->words, u"before"_s);
}

TEST_F(ActivityModelTest, TheOldestGiveWay)
{
    for (std::size_t number = 0; number < Activity::mostEntries; ++number) {
        activity.noticed(QString::number(number));
    }
    model.sync();
    const auto most = static_cast<int>(Activity::mostEntries);
    const ActivityModel::Key oldest = model.key(most - 1);
    activity.noticed(u"x"_s);
    activity.noticed(u"y"_s);
    EXPECT_EQ(model.row(most - 1), std::nullopt) << "what it stood for is gone before the model knows";
    EXPECT_EQ(model.data(model.index(most - 1)), QVariant());
    model.sync();
    EXPECT_EQ(model.rowCount(), most);
    EXPECT_EQ(model.row(0)->words, u"y"_s);
    EXPECT_EQ(model.row(most - 1)->words, u"2"_s);
    EXPECT_EQ(model.rowOf(oldest), -1);
}

TEST_F(ActivityModelTest, AllMayBeReplacedAtOnce)
{
    notice(u"old"_s);
    for (std::size_t number = 0; number < Activity::mostEntries + 10; ++number) {
        activity.noticed(QString::number(number));
    }
    model.sync();
    EXPECT_EQ(model.rowCount(), static_cast<int>(Activity::mostEntries));
    EXPECT_EQ(model.row(0)->words, QString::number(Activity::mostEntries + 9));
}

TEST_F(ActivityModelTest, ProgressIsARowThatChanges)
{
    const std::uint64_t id = activity.begin(runningCall("vm.prepare", u"Setting up"_s, "vm.progress"));
    model.sync();
    const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    activity.progress("vm.progress", u"40 %"_s);
    model.sync();
    EXPECT_EQ(changed.size(), 1);
    EXPECT_THAT(model.row(0)->aside.toStdString(), testing::StartsWith("40 %"));
    activity.noticed(u"something else"_s);
    model.sync();
    EXPECT_EQ(changed.size(), 1) << "the call itself has not changed";
    activity.end(id, {});
}

TEST_F(ActivityModelTest, ASearchLooksIntoWordsAndMethods)
{
    done(activity, "volumes.rename", u"renamed"_s);
    failed(activity, "volumes.resize", u"No ROOM"_s, -5);
    activity.noticed(u"Uploading"_s);
    const std::uint64_t id = activity.begin(runningCall("volumes.remove", u"Deleting"_s));
    model.setFilter(u" room "_s, false);
    EXPECT_EQ(words(), QStringList{u"No ROOM"_s});
    model.setFilter(u"VOLUMES."_s, false);
    EXPECT_EQ(words(), (QStringList{u"Deleting"_s, u"No ROOM"_s, u"renamed"_s}));
    model.setFilter({}, false);
    EXPECT_EQ(model.rowCount(), 4);
    activity.end(id, {});
}

TEST_F(ActivityModelTest, WhatComesDuringASearchIsSearchedToo)
{
    notice(u"apple"_s);
    model.setFilter(u"app"_s, false);
    notice(u"pear"_s);
    notice(u"pineapple"_s);
    EXPECT_EQ(words(), (QStringList{u"pineapple"_s, u"apple"_s}));
    model.setFilter({}, false);
    notice(u"plum"_s); // folded by none
    model.setFilter(u"p"_s, false);
    EXPECT_EQ(model.rowCount(), 4);
}

TEST_F(ActivityModelTest, ASearchStaysRightWhileTheOldestGiveWay)
{
    notice(u"needle 0"_s);
    model.setFilter(u"needle"_s, false);
    for (std::size_t number = 1; number < 2 * Activity::mostEntries; ++number) {
        activity.noticed(number % 1'000 == 0 ? u"needle %1"_s.arg(number) : u"hay"_s);
        if (number % 700 == 0) {
            model.sync();
        }
    }
    model.sync();
    ASSERT_EQ(model.rowCount(), 10);
    EXPECT_EQ(model.row(0)->words, u"needle 19000"_s);
    EXPECT_EQ(model.row(9)->words, u"needle 10000"_s);
}

TEST_F(ActivityModelTest, ProblemsAreTheFailuresAlone)
{
    done(activity, "volumes.rename", u"renamed"_s);
    failed(activity, "volumes.resize", u"no room"_s, -5);
    const std::uint64_t id = activity.begin(runningCall("volumes.remove", u"Deleting"_s));
    model.setFilter({}, true);
    EXPECT_EQ(words(), QStringList{u"no room"_s});
    activity.end(id, {u"broken"_s, true, -1});
    model.sync();
    EXPECT_EQ(words(), (QStringList{u"broken"_s, u"no room"_s}));
}

TEST_F(ActivityModelTest, WhatWasThereBeforeTheModelIsShown)
{
    activity.noticed(u"early"_s);
    const ActivityModel later(activity);
    EXPECT_EQ(later.rowCount(), 1);
}

} // namespace
} // namespace quillfen
