// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/volumesview.h"

#include "builders.h"

#include "boards/volumes/leftovers.h"
#include "boards/volumes/marginscrollbar.h"
#include "boards/volumes/volumesection.h"
#include "boards/volumes/volumestable.h"
#include "boards/volumes/volumestablemodel.h"
#include "ui/controls/buttons.h"
#include "ui/controls/searchfield.h"
#include "ui/parts/emptystate.h"
#include "ui/parts/scrollarea.h"
#include "ui/text/label.h"

#include <QScrollBar>

#include <gmock/gmock.h>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;

class VolumesViewTest : public testing::Test {
protected:
    ~VolumesViewTest() override
    {
        view.reset();
        state->shutDown(); // what the card has asked for ends before the state does
    }

    void show(const Records &volumes, QSize size = {956, 760})
    {
        state->volumes = volumes;
        view = std::make_unique<VolumesView>(state);
        view->resize(size);
        view->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get()));
        table = view->findChild<VolumesTable *>();
        search = view->findChild<SearchField *>();
    }

    /// A text that stands on the board now, whoever shows it.
    [[nodiscard]] bool says(const QString &text) const
    {
        const auto shows = [&](const auto *label) { return label->isVisible() && label->text() == text; };
        const auto labels = view->findChildren<AgentLabel *>();
        const auto plain = view->findChildren<QLabel *>();
        return std::any_of(labels.begin(), labels.end(), shows) || std::any_of(plain.begin(), plain.end(), shows);
    }

    [[nodiscard]] Button *button(const QWidget *inside) const
    {
        for (Button *each : inside->findChildren<Button *>()) {
            if (each->isVisible() && each->text() == u"+ New volume"_s) {
                return each;
            }
        }
        return nullptr;
    }

    [[nodiscard]] VolumeSection *cardShown() const
    {
        auto *const card = view->findChild<VolumeSection *>();
        return card != nullptr && card->isVisible() ? card : nullptr;
    }

    /// What Tab leads to from the table, by the names of the buttons.
    [[nodiscard]] QStringList reachedByTab(int presses) const
    {
        table->setFocus();
        QStringList reached;
        for (int pressed = 0; pressed < presses; ++pressed) {
            QTest::keyClick(view->focusWidget(), Qt::Key_Tab);
            const auto *const button = qobject_cast<QAbstractButton *>(view->focusWidget());
            reached << (button == nullptr                    ? QString()
                        : button->accessibleName().isEmpty() ? button->text()
                                                             : button->accessibleName());
        }
        return reached;
    }

    [[nodiscard]] QStringList names() const
    {
        QStringList all;
        for (int row = 0; row < table->rows().rowCount(); ++row) {
            all << table->rows().index(row, 0).data().toString();
        }
        return all;
    }

    [[nodiscard]] bool eventuallyShows(const QStringList &expected) const
    {
        return eventually([&] { return names() == expected; });
    }

    void click(int row)
    {
        const QPoint at = table->visualRect(table->model()->index(row, 0)).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, at);
    }

    std::shared_ptr<AppState> state = stateWith({});
    std::unique_ptr<VolumesView> view;
    VolumesTable *table = nullptr;
    SearchField *search = nullptr;
};

TEST_F(VolumesViewTest, TheHeaderCountsAndTellsTheState)
{
    show(manyVolumes(1));
    EXPECT_TRUE(says(u"Volumes"_s));
    EXPECT_TRUE(says(u"1 volume · all protected"_s));
    state->volumes = manyVolumes(2);
    EXPECT_TRUE(eventually([&] { return says(u"2 volumes · all protected"_s); }));
    setStatus(*state, 2, uploadingStatus(87));
    EXPECT_TRUE(eventually([&] { return says(u"2 volumes · uploading"_s); }));
}

TEST_F(VolumesViewTest, WithoutVolumesItSaysWhatAVolumeIs)
{
    show({});
    EXPECT_TRUE(says(u"No volumes yet"_s));
    EXPECT_TRUE(says(u"A volume is a drive on this Mac whose every second is kept offsite."_s));
    EXPECT_FALSE(table->isVisible());
    state->volumes = manyVolumes(1);
    EXPECT_TRUE(eventually([&] { return table->isVisible(); }));
    EXPECT_FALSE(view->findChild<EmptyState *>()->isVisible());
    state->volumes = Records();
    EXPECT_TRUE(eventually([&] { return view->findChild<EmptyState *>()->isVisible(); }));
}

TEST_F(VolumesViewTest, BothButtonsAskForANewVolume)
{
    show({});
    auto *empty = view->findChild<EmptyState *>();
    QTest::mouseClick(button(empty), Qt::LeftButton);
    EXPECT_TRUE(state->showNewVolume());
    state->showNewVolume = false;
    state->volumes = manyVolumes(1);
    ASSERT_TRUE(eventually([&] { return !empty->isVisible(); }));
    QTest::mouseClick(button(view.get()), Qt::LeftButton);
    EXPECT_TRUE(state->showNewVolume());
}

TEST_F(VolumesViewTest, FiltersAsOneTypes)
{
    show({volume(1, u"Documents"_s), volume(2, u"photos-archive"_s), volume(3, u"old-documents"_s)});
    view->focusSearch();
    EXPECT_TRUE(search->hasFocus());
    QTest::keyClicks(search, u"DOC"_s);
    EXPECT_TRUE(eventuallyShows({u"Documents"_s, u"old-documents"_s}));
    QTest::keyClick(search, Qt::Key_Escape);
    EXPECT_EQ(search->text(), QString());
    EXPECT_TRUE(eventuallyShows({u"Documents"_s, u"photos-archive"_s, u"old-documents"_s}));
    EXPECT_TRUE(says(u"3 volumes · all protected"_s)) << "the count is the account's, not the search's";
}

TEST_F(VolumesViewTest, ASearchWithoutFindsKeepsTheTable)
{
    show(manyVolumes(3));
    QTest::keyClicks(search, u"nothing like it"_s);
    EXPECT_TRUE(eventuallyShows({}));
    EXPECT_TRUE(table->isVisible());
    EXPECT_EQ(table->height(), VolumesTable::heightOf(0));
}

TEST_F(VolumesViewTest, FocusingTheSearchSelectsWhatItHolds)
{
    show(manyVolumes(3));
    search->setText(u"volume"_s);
    view->focusSearch();
    EXPECT_EQ(search->selectedText(), u"volume"_s);
    EXPECT_EQ(search->accessibleName(), u"Search volumes"_s);
}

TEST_F(VolumesViewTest, AClickSelectsForAllBoards)
{
    show(manyVolumes(5));
    click(2);
    EXPECT_EQ(state->selectedVolume(), 3);
    click(2);
    EXPECT_EQ(state->selectedVolume(), 3);
    QTest::qWait(20);
    EXPECT_TRUE(table->isSelected(2));
}

TEST_F(VolumesViewTest, ASelectionMadeElsewhereIsShown)
{
    show(manyVolumes(5));
    state->selectedVolume = 4;
    EXPECT_TRUE(eventually([&] { return table->isSelected(3); }));
    state->selectedVolume = std::nullopt;
    EXPECT_TRUE(eventually([&] { return !table->isSelected(3); }));
}

TEST_F(VolumesViewTest, TheSelectionSurvivesARefresh)
{
    show(manyVolumes(5));
    click(2);
    Records next = manyVolumes(6);
    next.move(2, 5);
    next.removeFirst();
    state->volumes = next;
    ASSERT_TRUE(eventually([&] { return table->isSelected(4); }));
    EXPECT_EQ(table->rows().volumeId(4), 3);
    EXPECT_EQ(state->selectedVolume(), 3);
}

TEST_F(VolumesViewTest, ASelectedVolumeThatVanishesSelectsNoOther)
{
    show(manyVolumes(5));
    click(2);
    Records next = manyVolumes(5);
    next.removeAt(2);
    state->volumes = next;
    ASSERT_TRUE(eventually([&] { return table->rows().rowCount() == 4; }));
    EXPECT_EQ(state->selectedVolume(), 3);
    EXPECT_FALSE(table->selectionModel()->hasSelection());
    state->volumes = manyVolumes(5);
    EXPECT_TRUE(eventually([&] { return table->isSelected(2); })) << "back again, it is still the selected one";
}

TEST_F(VolumesViewTest, TheSelectionSurvivesASearch)
{
    show(manyVolumes(50));
    click(4);
    search->setText(u"volume-1"_s);
    ASSERT_TRUE(eventually([&] { return table->rows().rowCount() == 11; }));
    EXPECT_EQ(state->selectedVolume(), 5);
    EXPECT_FALSE(table->selectionModel()->hasSelection());
    search->clear();
    EXPECT_TRUE(eventually([&] { return table->isSelected(4); }));
}

TEST_F(VolumesViewTest, AShortTableEndsWithItsRows)
{
    show(manyVolumes(5));
    EXPECT_EQ(table->height(), 28 + 5 * 40);
    EXPECT_EQ(table->verticalScrollBar()->maximum(), 0);
    state->volumes = manyVolumes(6);
    EXPECT_TRUE(eventually([&] { return table->height() == 28 + 6 * 40; }));
}

TEST_F(VolumesViewTest, ALongTableScrollsItself)
{
    show(manyVolumes(10'000));
    auto *area = view->findChild<ScrollArea *>();
    EXPECT_LE(table->height(), area->viewport()->height());
    EXPECT_GT(table->height(), 500);
    EXPECT_GT(table->verticalScrollBar()->maximum(), 9'000 * 40);
    EXPECT_EQ(area->verticalScrollBar()->maximum(), 0);
    const int before = table->height();
    view->resize(956, 600);
    EXPECT_TRUE(eventually([&] { return table->height() == before - 160; }));
}

TEST_F(VolumesViewTest, TheScrollBarOfALongTableStandsInTheMargin)
{
    show(manyVolumes(1'000));
    const auto *bar = view->findChild<MarginScrollBar *>();
    ASSERT_TRUE(bar->isVisible());
    EXPECT_GE(bar->x(), table->geometry().right() + 1);
    EXPECT_EQ(bar->geometry().bottom(), table->geometry().bottom());
    EXPECT_EQ(table->viewport()->width(), table->width());
    table->verticalScrollBar()->setValue(400);
    EXPECT_EQ(bar->value(), 400);
    view->findChild<MarginScrollBar *>()->setValue(800);
    EXPECT_EQ(table->rowAt(0), 20);
    state->volumes = manyVolumes(3);
    EXPECT_TRUE(eventually([&] { return !bar->isVisible(); }));
}

TEST_F(VolumesViewTest, ALongTableStaysWhereItIsScrolledTo)
{
    show(manyVolumes(1'000));
    table->verticalScrollBar()->setValue(500 * 40 + 7);
    Records next = manyVolumes(1'000).mid(10);
    next.append(volume(5'000, u"new"_s));
    state->volumes = next;
    ASSERT_TRUE(eventually([&] { return table->rows().rowCount() == 991; }));
    EXPECT_EQ(table->verticalScrollBar()->value(), 490 * 40 + 7);
}

TEST_F(VolumesViewTest, AfterASearchTheListStandsWhereItStoodBefore)
{
    show(manyVolumes(1'000));
    table->verticalScrollBar()->setValue(500 * 40 + 7);
    search->setText(u"volume-1"_s);
    ASSERT_TRUE(eventually([&] { return table->rows().rowCount() == 111; }));
    EXPECT_EQ(table->verticalScrollBar()->value(), 0) << "finds are shown from the top";
    search->setText(u"volume-11"_s);
    ASSERT_TRUE(eventually([&] { return table->rows().rowCount() == 11; }));
    search->clear();
    ASSERT_TRUE(eventually([&] { return table->rows().rowCount() == 1'000; }));
    EXPECT_EQ(table->verticalScrollBar()->value(), 500 * 40 + 7);
}

TEST_F(VolumesViewTest, AFindThatWasChosenIsInViewAfterTheSearch)
{
    show(manyVolumes(1'000));
    search->setText(u"volume-777"_s);
    ASSERT_TRUE(eventually([&] { return table->rows().rowCount() == 1; }));
    click(0);
    search->clear();
    ASSERT_TRUE(eventually([&] { return table->isSelected(777); }));
    EXPECT_TRUE(table->viewport()->rect().contains(table->visualRect(table->rows().index(777, 0))));
}

TEST_F(VolumesViewTest, InTheSmallestWindowTheColumnsAreNarrow)
{
    show(manyVolumes(5), {736, 600});
    EXPECT_TRUE(table->isNarrow());
    EXPECT_EQ(table->width(), 696);
    int columns = 0;
    for (int column = 0; column < table->model()->columnCount(); ++column) {
        columns += table->columnWidth(column);
    }
    EXPECT_EQ(columns, 696);
}

TEST_F(VolumesViewTest, HugeNamesDoNotWidenTheWindow)
{
    show({volume(1, QString(100'000, u'W'))}, {736, 600});
    EXPECT_EQ(view->width(), 736);
    EXPECT_EQ(table->width(), 696);
    EXPECT_LE(view->minimumSizeHint().width(), 736);
}

TEST_F(VolumesViewTest, TabGoesFromLeftToRightAndDown)
{
    show(manyVolumes(3));
    view->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
    view->focusSearch();
    QTest::keyClick(view->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(view->focusWidget(), button(view.get()));
    QTest::keyClick(view->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(view->focusWidget(), table);
    QTest::keyClick(view->focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(view->focusWidget(), button(view.get()));
}

TEST_F(VolumesViewTest, WithoutVolumesTabReachesTheSecondButton)
{
    show({});
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
    view->focusSearch();
    QTest::keyClick(view->focusWidget(), Qt::Key_Tab);
    QTest::keyClick(view->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(view->focusWidget(), button(view->findChild<EmptyState *>()));
}

TEST_F(VolumesViewTest, TheCardOfTheSelectedVolumeStandsBelowTheTable)
{
    show(manyVolumes(5));
    ASSERT_EQ(cardShown(), nullptr);
    click(2);
    ASSERT_TRUE(eventually([&] { return cardShown() != nullptr && cardShown()->height() > 200; }));
    const VolumeSection *const card = cardShown();
    EXPECT_TRUE(
        eventually([&] { return card->y() + card->contentsMargins().top() == table->geometry().bottom() + 1 + 20; }));
    EXPECT_EQ(card->width(), table->width());
    EXPECT_EQ(table->height(), VolumesTable::heightOf(5));
}

TEST_F(VolumesViewTest, ALongTableLeavesTheCardInViewAndItsRowToo)
{
    show(manyVolumes(10'000));
    auto *const area = view->findChild<ScrollArea *>();
    const int before = table->height();
    const int last = table->rowAt(table->viewport()->height() - 1) - 1;
    click(last);
    ASSERT_TRUE(eventually([&] { return cardShown() != nullptr && table->height() == before - 200; }));
    const VolumeSection *const card = cardShown();
    ASSERT_TRUE(eventually([&] { return area->verticalScrollBar()->maximum() > 0; }));
    const int top = card->mapTo(area->viewport(), QPoint()).y();
    EXPECT_LE(top, area->viewport()->height() - 160) << "a good part of the card is in view";
    EXPECT_TRUE(table->viewport()->rect().contains(table->visualRect(table->rows().index(last, 0))));
    state->selectedVolume = std::nullopt;
    EXPECT_TRUE(eventually([&] { return table->height() == before; }));
}

TEST_F(VolumesViewTest, WhatIsLeftBehindIsShownWithoutVolumesToo)
{
    show({});
    auto *const empty = view->findChild<EmptyState *>();
    auto *const orphans = view->findChild<OrphanAppliances *>();
    const int before = empty->height();
    state->orphans = Records{params("container", "quill-vol-9", "status", "Up 6 hours", "ports", "4461")};
    ASSERT_TRUE(eventually([&] { return orphans->isVisible() && empty->height() < before; }));
    EXPECT_TRUE(eventually([&] { return orphans->y() >= empty->geometry().bottom() && orphans->height() > 100; }));
    EXPECT_TRUE(empty->isVisible());
}

TEST_F(VolumesViewTest, TabGoesOnIntoTheCards)
{
    state->selectedVolume = 1;
    state->orphans = Records{params("container", "quill-vol-9")};
    state->readyCopies = Records{params("recovery_id", 3, "name", "copy")};
    show(manyVolumes(3));
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
    EXPECT_THAT(reachedByTab(8),
                testing::ElementsAre(u"Start"_s, u"Resize"_s, u"Time travel"_s, u"Copy"_s, u"Delete volume…"_s,
                                     u"Remove, quill-vol-9"_s, u"Make it a volume, copy"_s, u"Discard, copy"_s));
}

TEST_F(VolumesViewTest, TabGoesIntoACardThatComesAfterTheLists)
{
    state->orphans = Records{params("container", "quill-vol-9")};
    show(manyVolumes(3));
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
    click(0);
    ASSERT_TRUE(eventually([&] { return cardShown() != nullptr && cardShown()->height() > 200; }));
    EXPECT_THAT(reachedByTab(6), testing::ElementsAre(u"Start"_s, u"Resize"_s, u"Time travel"_s, u"Copy"_s,
                                                      u"Delete volume…"_s, u"Remove, quill-vol-9"_s));
}

TEST_F(VolumesViewTest, MayGoWhileARenderIsDue)
{
    show(manyVolumes(5));
    state->volumes = manyVolumes(6);
    view.reset();
    QTest::qWait(30);
    EXPECT_EQ(state->volumes().size(), 6);
}

} // namespace
