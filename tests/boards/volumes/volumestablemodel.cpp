// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/volumestablemodel.h"

#include "builders.h"

#include "state/userlocale.h"

#include <QAbstractItemModelTester>
#include <QLocale>
#include <QSignalSpy>

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;

class VolumesTableModelTest : public testing::Test {
protected:
    [[nodiscard]] QString cell(int row, VolumeColumn column) const
    {
        return model.index(row, static_cast<int>(column)).data().toString();
    }

    [[nodiscard]] QStringList names() const
    {
        QStringList all;
        for (int row = 0; row < model.rowCount(); ++row) {
            all << cell(row, VolumeColumn::Name);
        }
        return all;
    }

    /// The names shown for a search.
    QStringList found(const QString &query)
    {
        model.refresh(query);
        return names();
    }

    std::shared_ptr<AppState> state = stateWith({});
    VolumesTableModel model{state};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(VolumesTableModelTest, ShowsTheVolumesInTheStatesOrder)
{
    state->volumes = Records{volume(3, u"c"_s), volume(1, u"a"_s), volume(2, u"b"_s)};
    model.refresh({});
    EXPECT_EQ(names(), (QStringList{u"c"_s, u"a"_s, u"b"_s}));
    EXPECT_EQ(model.columnCount(), 7);
    EXPECT_EQ(model.volumeId(0), 3);
    EXPECT_EQ(model.volumeId(3), std::nullopt);
    EXPECT_EQ(model.volumeId(-1), std::nullopt);
    EXPECT_EQ(model.rowOf(2), 2);
    EXPECT_EQ(model.rowOf(9), -1);
}

TEST_F(VolumesTableModelTest, NumbersAreAtTheRight)
{
    state->volumes = manyVolumes(1);
    model.refresh({});
    for (int column = 0; column < volumeColumns; ++column) {
        const bool number = column == 1 || column == 2;
        const auto cellAlignment = model.index(0, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
        const auto captionAlignment =
            model.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>();
        EXPECT_EQ(cellAlignment.testFlag(Qt::AlignRight), number) << column;
        EXPECT_EQ(captionAlignment.testFlag(Qt::AlignRight), number) << column;
    }
}

TEST_F(VolumesTableModelTest, AnEmptySearchShowsEveryVolume)
{
    state->volumes = manyVolumes(5);
    EXPECT_EQ(found({}).size(), 5);
}

TEST_F(VolumesTableModelTest, CaseDoesNotMatter)
{
    state->volumes = Records{volume(1, u"Documents"_s), volume(2, u"photos"_s)};
    EXPECT_EQ(found(u"DOC"_s), QStringList{u"Documents"_s});
    EXPECT_EQ(found(u"ment"_s), QStringList{u"Documents"_s});
    EXPECT_EQ(found(u"x"_s), QStringList());
    EXPECT_EQ(found({}).size(), 2);
}

TEST_F(VolumesTableModelTest, AccentsAreFoundHoweverTheyAreWritten)
{
    state->volumes = Records{volume(1, u"Caf\u00E9"_s), volume(2, u"Cafe\u0301 two"_s), volume(3, u"Cafe"_s)};
    EXPECT_EQ(found(u"CAF\u00C9"_s).size(), 2);
    EXPECT_EQ(found(u"cafe\u0301"_s).size(), 2);
    EXPECT_EQ(found(u"stra\u00DFe"_s).size(), 0);
    state->volumes = Records{volume(1, u"STRASSE"_s)};
    EXPECT_EQ(found(u"stra\u00DFe"_s).size(), 1);
}

TEST_F(VolumesTableModelTest, FindsInHugeNames)
{
    const QString huge = QString(1'000'000, u'a') + u"needle"_s;
    state->volumes = Records{volume(1, huge), volume(2, u"other"_s)};
    model.refresh(u"NEEDLE"_s);
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.volumeId(0), 1);
}

TEST_F(VolumesTableModelTest, TheSearchFollowsNewVolumesAndNewNames)
{
    state->volumes = Records{volume(1, u"docs"_s), volume(2, u"photos"_s)};
    EXPECT_EQ(found(u"doc"_s), QStringList{u"docs"_s});
    state->volumes = Records{volume(1, u"docs"_s), volume(2, u"photo-docs"_s), volume(3, u"new-docs"_s)};
    EXPECT_EQ(found(u"doc"_s), (QStringList{u"docs"_s, u"photo-docs"_s, u"new-docs"_s}));
    state->volumes = Records{volume(1, u"renamed"_s), volume(3, u"new-docs"_s)};
    EXPECT_EQ(found(u"doc"_s), QStringList{u"new-docs"_s});
}

TEST_F(VolumesTableModelTest, VolumesWithoutNameOrIdAreRowsLikeOthers)
{
    state->volumes = Records{Record(), params("name", "nameless id"), params("id", 4), Record()};
    model.refresh({});
    EXPECT_EQ(model.rowCount(), 4);
    EXPECT_EQ(cell(1, VolumeColumn::Name), u"nameless id"_s);
    EXPECT_EQ(model.volumeId(0), 0);
    EXPECT_EQ(model.volumeId(2), 4);
    EXPECT_EQ(found(u"id"_s), QStringList{u"nameless id"_s});
}

TEST_F(VolumesTableModelTest, ARefreshWithTheSameVolumesTouchesNoRow)
{
    state->volumes = manyVolumes(50);
    model.refresh({});
    const QStringList before = names();
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    state->volumes = manyVolumes(50);
    model.refresh({});
    EXPECT_EQ(changed.count() + reset.count() + inserted.count() + removed.count(), 0);
    EXPECT_EQ(names(), before);
}

TEST_F(VolumesTableModelTest, AChangedStatusAnnouncesItsRowAlone)
{
    state->volumes = manyVolumes(50);
    model.refresh({});
    EXPECT_EQ(cell(7, VolumeColumn::Offsite), u"…"_s);
    EXPECT_EQ(cell(8, VolumeColumn::Offsite), u"…"_s);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    setStatus(*state, 8, syncedStatus());
    model.refresh({});
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex().row(), 7);
    EXPECT_EQ(changed[0][1].toModelIndex().row(), 7);
    EXPECT_EQ(cell(7, VolumeColumn::Offsite), u"100% · synced"_s);
    EXPECT_EQ(cell(8, VolumeColumn::Offsite), u"…"_s);
}

TEST_F(VolumesTableModelTest, ARowNobodyHasSeenIsNotRead)
{
    state->volumes = manyVolumes(50);
    model.refresh({});
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    setStatus(*state, 8, syncedStatus());
    model.refresh({});
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(cell(7, VolumeColumn::Offsite), u"100% · synced"_s);
}

TEST_F(VolumesTableModelTest, NoAnnouncementIsMissedAfterReadingManyRows)
{
    state->volumes = manyVolumes(1'000);
    model.refresh({});
    EXPECT_EQ(names().size(), 1'000);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    setStatus(*state, 1, syncedStatus());
    model.refresh({});
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex().row(), 0);
    EXPECT_EQ(changed[0][1].toModelIndex().row(), 999);
}

TEST_F(VolumesTableModelTest, ANewVolumeIsInsertedAndAGoneOneRemoved)
{
    state->volumes = Records{volume(1, u"a"_s), volume(2, u"b"_s), volume(3, u"c"_s)};
    model.refresh({});
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    state->volumes = Records{volume(1, u"a"_s), volume(3, u"c"_s), volume(4, u"d"_s)};
    model.refresh({});
    EXPECT_EQ(names(), (QStringList{u"a"_s, u"c"_s, u"d"_s}));
    EXPECT_EQ(reset.count(), 0);
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed[0][1].toInt(), 1);
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted[0][1].toInt(), 2);
}

TEST_F(VolumesTableModelTest, WhatIsLeftIsReadFromTheNewList)
{
    state->volumes = Records{volume(1, u"old a"_s), volume(2, u"old b"_s)};
    model.refresh({});
    EXPECT_EQ(names(), (QStringList{u"old a"_s, u"old b"_s}));
    state->volumes = Records{volume(9, u"new"_s), volume(2, u"new b"_s)};
    model.refresh({});
    EXPECT_EQ(names(), (QStringList{u"new"_s, u"new b"_s}));
}

TEST_F(VolumesTableModelTest, AThoroughlyDifferentListResets)
{
    state->volumes = manyVolumes(1'000);
    model.refresh({});
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    EXPECT_EQ(found(u"7"_s).size(), 271);
    EXPECT_EQ(reset.count(), 1);
    EXPECT_EQ(removed.count(), 0);
}

TEST_F(VolumesTableModelTest, SurvivesChurn)
{
    std::mt19937 chance(4);
    const QStringList queries{u""_s, u"1"_s, u"NAME"_s, u"nothing"_s, u""_s};
    for (int round = 0; round < 400; ++round) {
        Records volumes = state->volumes();
        const auto any = [&] {
            return static_cast<qsizetype>(chance() % static_cast<std::size_t>(volumes.size() + 1));
        };
        for (auto step = chance() % 6; step > 0; --step) {
            const auto id = static_cast<std::int64_t>(chance() % 25);
            switch (chance() % 5) {
            case 0:
                volumes.insert(any(), volume(id, u"name %1"_s.arg(id)));
                break;
            case 1:
                volumes.insert(any(), chance() % 2 ? Record() : params("id", id));
                break;
            case 2:
                std::shuffle(volumes.begin(), volumes.end(), chance);
                break;
            case 3:
                setStatus(*state, id, uploadingStatus(static_cast<int>(chance() % 100)));
                break;
            default:
                if (!volumes.isEmpty()) {
                    volumes.removeAt(any() % volumes.size());
                }
            }
        }
        state->volumes = volumes;
        const QString query = queries[static_cast<qsizetype>(chance() % 5)];
        QStringList expected;
        for (const Record &each : volumes) {
            if (str(each, "name").contains(query, Qt::CaseInsensitive)) {
                expected << str(each, "name");
            }
        }
        ASSERT_EQ(found(query), expected) << "round " << round;
    }
}

TEST_F(VolumesTableModelTest, TheNameCellDescribesItsRow)
{
    state->volumes = manyVolumes(1);
    model.refresh({});
    const QString description = model.index(0, 0).data(Qt::AccessibleDescriptionRole).toString();
    EXPECT_TRUE(description.startsWith(u"Size 100 GB, Used —, Share SMB"_s)) << qPrintable(description);
    EXPECT_FALSE(model.index(0, 1).data(Qt::AccessibleDescriptionRole).isValid());
}

TEST(VolumesSearch, InTurkishTheTwoLettersIStayApart)
{
    const LocaleOverride turkish("tr_TR");
    const auto state = stateWith({volume(1, u"KAPI"_s), volume(2, u"DEN\u0130Z"_s)});
    VolumesTableModel model(state);
    model.refresh(u"\u0131"_s);
    ASSERT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.volumeId(0), 1);
    model.refresh(u"i"_s);
    ASSERT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.volumeId(0), 2);
}

TEST(VolumesSearch, ElsewhereTheCapitalIIsAnI)
{
    const auto state = stateWith({volume(1, u"KAPI"_s)});
    VolumesTableModel model(state);
    model.refresh(u"kapi"_s);
    EXPECT_EQ(model.rowCount(), 1);
}

} // namespace
