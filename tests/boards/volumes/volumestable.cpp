// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/volumestable.h"

#include "builders.h"

#include "boards/volumes/volumestablemodel.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>

#include <gmock/gmock.h>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;

class VolumesTableTest : public testing::Test {
protected:
    void show(const Records &volumes, QSize size = {900, 400})
    {
        state->volumes = volumes;
        refresh();
        window.resize(size.width(), size.height() + 40);
        elsewhere.setGeometry(0, size.height(), 100, 40);
        table.resize(size);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        elsewhere.setFocus();
    }

    void refresh(const QString &query = {})
    {
        table.changeRows([&] { rows->refresh(query); });
    }

    [[nodiscard]] QPoint middle(int row, VolumeColumn column = VolumeColumn::Name) const
    {
        return table.visualRect(rows->index(row, static_cast<int>(column))).center();
    }

    void click(int row, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(table.viewport(), Qt::LeftButton, modifiers, middle(row));
    }

    [[nodiscard]] QColor pixel(QPoint at) { return table.viewport()->grab().toImage().pixelColor(at); }

    std::shared_ptr<AppState> state = stateWith({});
    VolumesTableModel *rows = new VolumesTableModel(state);
    QWidget window;
    VolumesTable table{rows, &window};
    QLineEdit elsewhere{&window};
    QSignalSpy chosen{&table, &VolumesTable::volumeChosen};
};

TEST_F(VolumesTableTest, TheNameTakesTheWidthThatTheOthersLeave)
{
    show(manyVolumes(3));
    std::vector<int> widths;
    for (int column = 0; column < volumeColumns; ++column) {
        widths.push_back(table.columnWidth(column));
    }
    EXPECT_THAT(widths, testing::ElementsAre(126, 60, 74, 146, 168, 130, 196));
    EXPECT_FALSE(table.isNarrow());
}

TEST_F(VolumesTableTest, BelowTheThresholdTheColumnsAreNarrow)
{
    show(manyVolumes(3), {696, 400});
    EXPECT_TRUE(table.isNarrow());
    EXPECT_EQ(table.columnWidth(0), 140);
    EXPECT_EQ(table.columnWidth(static_cast<int>(VolumeColumn::Share)), 118);
    EXPECT_EQ(table.columnWidth(static_cast<int>(VolumeColumn::Appliance)), 112);
    EXPECT_EQ(table.columnWidth(static_cast<int>(VolumeColumn::Encryption)), 44);
    EXPECT_EQ(table.columnWidth(static_cast<int>(VolumeColumn::Offsite)), 146);
    table.resize(780, 400);
    EXPECT_FALSE(table.isNarrow());
}

TEST_F(VolumesTableTest, EveryColumnEndsWithinTheTable)
{
    show(manyVolumes(3));
    for (const int width : {696, 779, 780, 836, 893, 894, 1300}) {
        table.resize(width, 400);
        int whole = 0;
        for (int column = 0; column < volumeColumns; ++column) {
            whole += table.columnWidth(column);
        }
        EXPECT_EQ(whole, width);
        EXPECT_GE(table.columnWidth(0), 120) << width;
        EXPECT_GE(table.columnWidth(static_cast<int>(VolumeColumn::Used)), 74) << "a number gives no way, at " << width;
    }
}

TEST_F(VolumesTableTest, AKeyKeepsItsRoomWhereTheTextsGiveWay)
{
    show(manyVolumes(3), {500, 400});
    EXPECT_LT(table.columnWidth(static_cast<int>(VolumeColumn::Share)), 118);
    EXPECT_EQ(table.columnWidth(static_cast<int>(VolumeColumn::Encryption)), 44);
    int whole = 0;
    for (int column = 0; column < volumeColumns; ++column) {
        whole += table.columnWidth(column);
    }
    EXPECT_EQ(whole, 500);
}

TEST_F(VolumesTableTest, NothingScrollsSideways)
{
    show(Records{volume(1, QString(100'000, u'w'))}, {500, 400});
    EXPECT_EQ(table.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    EXPECT_GE(table.columnWidth(0), 120);
}

TEST_F(VolumesTableTest, AClickChoosesTheVolume)
{
    show(manyVolumes(5));
    click(2);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen[0][0].toLongLong(), 3);
    EXPECT_TRUE(table.isSelected(2));
}

TEST_F(VolumesTableTest, AClickOnTheSelectedRowKeepsIt)
{
    show(manyVolumes(5));
    click(2);
    click(2);
    click(2, Qt::ControlModifier);
    EXPECT_TRUE(table.isSelected(2));
    EXPECT_TRUE(table.selectionModel()->isRowSelected(2));
}

TEST_F(VolumesTableTest, AClickBelowTheRowsKeepsTheSelection)
{
    show(manyVolumes(2));
    click(1);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, QPoint(100, 300));
    EXPECT_TRUE(table.isSelected(1));
    EXPECT_EQ(chosen.count(), 1);
}

TEST_F(VolumesTableTest, DraggingOverRowsChoosesTheFirstOnly)
{
    show(manyVolumes(5));
    QTest::mousePress(table.viewport(), Qt::LeftButton, {}, middle(1));
    QTest::mouseMove(table.viewport(), middle(2));
    QTest::mouseMove(table.viewport(), middle(3));
    QTest::mouseRelease(table.viewport(), Qt::LeftButton, {}, middle(3));
    EXPECT_TRUE(table.isSelected(1));
    EXPECT_EQ(table.selectionModel()->selectedRows().size(), 1);
}

TEST_F(VolumesTableTest, AClickTakesNoFocus)
{
    show(manyVolumes(5));
    click(1);
    EXPECT_TRUE(elsewhere.hasFocus());
    EXPECT_EQ(table.ringedRow(), -1);
}

TEST_F(VolumesTableTest, KeysMoveTheSelection)
{
    show(manyVolumes(100), {900, 28 + 5 * 40});
    table.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&table, Qt::Key_Down);
    EXPECT_TRUE(table.isSelected(0)) << "with nothing selected the first key selects the first row";
    QTest::keyClick(&table, Qt::Key_Down);
    EXPECT_TRUE(table.isSelected(1));
    QTest::keyClick(&table, Qt::Key_Right);
    QTest::keyClick(&table, Qt::Key_Left);
    EXPECT_TRUE(table.isSelected(1));
    QTest::keyClick(&table, Qt::Key_Up);
    EXPECT_TRUE(table.isSelected(0));
    QTest::keyClick(&table, Qt::Key_End);
    EXPECT_TRUE(table.isSelected(99));
    EXPECT_EQ(table.ringedRow(), 99);
    EXPECT_EQ(table.rowAt(table.viewport()->height() - 1), 99) << "the selected row is scrolled into view";
    QTest::keyClick(&table, Qt::Key_PageUp);
    EXPECT_GT(table.currentIndex().row(), 90);
    EXPECT_LT(table.currentIndex().row(), 97);
    QTest::keyClick(&table, Qt::Key_Home);
    EXPECT_TRUE(table.isSelected(0));
    QTest::keyClick(&table, Qt::Key_PageDown);
    EXPECT_GT(table.currentIndex().row(), 2);
    EXPECT_EQ(chosen.last()[0].toLongLong(), table.currentIndex().row() + 1);
}

TEST_F(VolumesTableTest, TabLeavesTheTable)
{
    show(manyVolumes(5));
    table.setFocus(Qt::TabFocusReason);
    click(1);
    QTest::keyClick(&table, Qt::Key_Tab);
    EXPECT_TRUE(elsewhere.hasFocus());
    EXPECT_TRUE(table.isSelected(1));
}

TEST_F(VolumesTableTest, TypingLettersDoesNotSelect)
{
    show(manyVolumes(5));
    table.setFocus(Qt::TabFocusReason);
    QTest::keyClicks(&table, u"volume-3"_s);
    EXPECT_EQ(chosen.count(), 0);
}

TEST_F(VolumesTableTest, FocusByKeyboardChoosesNothingYet)
{
    show(manyVolumes(5));
    table.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(chosen.count(), 0);
    EXPECT_EQ(table.ringedRow(), 0);
}

TEST_F(VolumesTableTest, ChangedRowsChooseNothing)
{
    show(manyVolumes(5));
    click(2);
    Records without = manyVolumes(5);
    without.removeAt(2);
    state->volumes = without;
    refresh();
    table.mark(3);
    EXPECT_EQ(chosen.count(), 1);
    EXPECT_FALSE(table.selectionModel()->hasSelection());
    for (int row = 0; row < 4; ++row) {
        EXPECT_FALSE(table.isSelected(row)) << row;
    }
}

TEST_F(VolumesTableTest, TheMarkFollowsItsVolume)
{
    show(manyVolumes(5));
    table.mark(3);
    EXPECT_TRUE(table.isSelected(2));
    Records volumes = manyVolumes(5);
    volumes.move(2, 0);
    state->volumes = volumes;
    refresh();
    table.mark(3);
    EXPECT_TRUE(table.isSelected(0));
    EXPECT_TRUE(table.selectionModel()->isRowSelected(0));
    table.mark(std::nullopt);
    EXPECT_FALSE(table.isSelected(0));
    EXPECT_FALSE(table.selectionModel()->hasSelection());
}

TEST_F(VolumesTableTest, OfTwoRowsWithOneIdTheClickedOneIsMarked)
{
    show(Records{volume(1, u"a"_s), volume(7, u"b"_s), volume(7, u"c"_s)});
    click(2);
    table.mark(7);
    EXPECT_TRUE(table.isSelected(2));
    EXPECT_FALSE(table.isSelected(1));
}

TEST_F(VolumesTableTest, ThePlaceIsKeptByVolume)
{
    show(manyVolumes(1'000));
    table.verticalScrollBar()->setValue(500 * 40 + 13);
    const VolumesTable::Place place = table.place();
    EXPECT_EQ(place.volume, 501);
    EXPECT_EQ(place.cut, 13);
    state->volumes = manyVolumes(1'000).mid(100);
    refresh();
    table.returnTo(place);
    EXPECT_EQ(table.verticalScrollBar()->value(), 400 * 40 + 13);
}

TEST_F(VolumesTableTest, ThePlaceAmongEqualIdsIsKept)
{
    Records volumes = manyVolumes(100);
    for (int at = 0; at < 30; ++at) {
        volumes.append(params("name", "without an id"));
    }
    show(volumes);
    table.verticalScrollBar()->setValue(110 * 40 + 5);
    table.returnTo(table.place());
    EXPECT_EQ(table.verticalScrollBar()->value(), 110 * 40 + 5);
}

TEST_F(VolumesTableTest, PaintsTheSelectedRowsFillAndMark)
{
    show(manyVolumes(5));
    table.mark(2);
    EXPECT_EQ(pixel({60, 45}), Theme::panel);
    EXPECT_EQ(pixel({5, 60}), Theme::accent);
    EXPECT_EQ(pixel({60, 5}), Theme::bg);
    EXPECT_EQ(pixel({60, 39}), Theme::line) << "a hairline below a plain row";
    EXPECT_EQ(pixel({60, 79}), Theme::panel) << "and none below the selected one";
}

TEST_F(VolumesTableTest, MarksRowsAndStatesWhereReadingBegins)
{
    window.setLayoutDirection(Qt::RightToLeft);
    show(manyVolumes(3));
    click(1);
    const QRect row = table.visualRect(rows->index(1, 0));
    EXPECT_EQ(row.right(), table.viewport()->width() - 1) << "names come first";
    EXPECT_EQ(pixel({row.right() - 5, row.center().y()}), Theme::accent);
    EXPECT_NE(pixel({5, row.center().y()}), Theme::accent);
    const QRect place = table.visualRect(rows->index(0, static_cast<int>(VolumeColumn::Offsite)));
    const QImage cell = table.viewport()->grab(place).toImage();
    const auto isPainted = [&](int x) { return cell.pixelColor(x, cell.height() / 2 - 4) != Theme::bg; };
    int last = cell.width() - 1;
    while (last > 0 && !isPainted(last)) {
        --last;
    }
    EXPECT_NEAR(last, cell.width() - 6 - 4, 3) << "the mark stands at the cell's beginning";
}

TEST_F(VolumesTableTest, PaintsTheRowUnderThePointer)
{
    show(manyVolumes(5));
    QTest::mouseMove(table.viewport(), middle(1));
    EXPECT_TRUE(eventually([&] { return table.hoveredRow() == 1; }));
    EXPECT_TRUE(eventually([&] { return pixel({60, 45}) == Theme::panel2; }));
    EXPECT_EQ(pixel({890, 45}), Theme::panel2) << "the whole row, not the cell";
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(table.viewport(), &leave);
    EXPECT_EQ(pixel({60, 45}), Theme::bg);
}

TEST_F(VolumesTableTest, PaintsTheFocusRingInsideTheRow)
{
    show(manyVolumes(5));
    table.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(pixel({450, 3}), Theme::ok);
    EXPECT_EQ(pixel({450, 0}), Theme::bg);
}

TEST_F(VolumesTableTest, OnlyAnElidedTextHasATooltip)
{
    show(Records{volume(1, QString(200, u'w')), volume(2, u"short"_s)});
    const auto tip = [&](QPoint at) {
        QHelpEvent help(QEvent::ToolTip, at, table.viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(table.viewport(), &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    EXPECT_TRUE(tip(middle(0)).contains(QString(200, u'w')) || tip(middle(0)).count(u'w') >= 200);
    QToolTip::hideText();
    EXPECT_TRUE(eventually([] { return !QToolTip::isVisible(); }));
    EXPECT_EQ(tip(middle(1)), QString());
    EXPECT_EQ(tip(middle(1, VolumeColumn::Encryption)), QString());
}

TEST_F(VolumesTableTest, ANarrowKeyTellsItsTextInATooltip)
{
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", "/nonexistent");
    show(Records{with(volume(1, u"a"_s), "encryption", "customer")}, {696, 200});
    const QPoint at = middle(0, VolumeColumn::Encryption);
    QHelpEvent help(QEvent::ToolTip, at, table.viewport()->mapToGlobal(at));
    QCoreApplication::sendEvent(table.viewport(), &help);
    EXPECT_TRUE(QToolTip::text().contains(u"On · key elsewhere"_s)) << qPrintable(QToolTip::text());
    qputenv("HOME", before);
}

TEST_F(VolumesTableTest, ACaptionThatIsNotWrittenOutHasATooltip)
{
    const auto tip = [&](VolumeColumn column) {
        QToolTip::hideText();
        EXPECT_TRUE(eventually([] { return !QToolTip::isVisible(); }));
        QWidget *const header = table.horizontalHeader()->viewport();
        const QPoint at(table.horizontalHeader()->sectionViewportPosition(static_cast<int>(column)) + 4, 10);
        QHelpEvent help(QEvent::ToolTip, at, header->mapToGlobal(at));
        QCoreApplication::sendEvent(header, &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    show(manyVolumes(1), {696, 200});
    EXPECT_TRUE(tip(VolumeColumn::Encryption).contains(u"Encryption"_s)) << "a key stands for it";
    EXPECT_EQ(tip(VolumeColumn::Offsite), QString());
    table.resize(900, 200);
    EXPECT_EQ(tip(VolumeColumn::Encryption), QString());
}

TEST_F(VolumesTableTest, TheHeaderMeasuresNoCaption)
{
    // Qt would in bold, and a cut of the font that nothing is written in takes a quarter of a megabyte.
    show(manyVolumes(3));
    EXPECT_EQ(table.horizontalHeader()->sectionSizeHint(0), 0);
    EXPECT_EQ(table.horizontalHeader()->height(), 28);
}

TEST_F(VolumesTableTest, AMegabyteOfNameDoesNotStallThePainting)
{
    show(Records{volume(1, QString(1'000'000, u'w'))});
    QElapsedTimer clock;
    clock.start();
    (void)table.grab();
    EXPECT_LT(clock.elapsed(), 1'000);
}

TEST_F(VolumesTableTest, IsATableWithHeadersToAScreenReader)
{
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", "/nonexistent");
    show(Records{volume(1, u"Documents"_s), with(volume(2, u"photos"_s), "encryption", "customer")}, {696, 300});
    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(&table);
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->role(), QAccessible::Table);
    EXPECT_EQ(face->text(QAccessible::Name), u"Volumes"_s);
    QAccessibleTableInterface *cells = face->tableInterface();
    ASSERT_NE(cells, nullptr);
    EXPECT_EQ(cells->rowCount(), 2);
    EXPECT_EQ(cells->columnCount(), 7);
    EXPECT_EQ(cells->cellAt(0, 0)->text(QAccessible::Name), u"Documents"_s);
    EXPECT_EQ(cells->cellAt(1, 5)->text(QAccessible::Name), u"On · key elsewhere"_s)
        << "the picture of the narrow column reads as its words";
    EXPECT_EQ(cells->columnDescription(5), u"Encryption"_s);
    QAccessibleTableCellInterface *cell = cells->cellAt(1, 5)->tableCellInterface();
    const QList<QAccessibleInterface *> headers = cell->columnHeaderCells();
    ASSERT_EQ(headers.size(), 1);
    EXPECT_EQ(headers.at(0)->text(QAccessible::Name), u"Encryption"_s);
    // Made for the asking, and nobody's but ours.
    QAccessible::deleteAccessibleInterface(QAccessible::registerAccessibleInterface(headers.at(0)));
    EXPECT_TRUE(cells->cellAt(0, 0)->text(QAccessible::Description).startsWith(u"Size 100 GB"_s));
    table.mark(2);
    EXPECT_EQ(cells->selectedRows(), QList<int>{1});
    qputenv("HOME", before);
}

TEST_F(VolumesTableTest, AScreenReaderCanChooseARow)
{
    show(manyVolumes(3));
    QAccessibleTableInterface *cells = QAccessible::queryAccessibleInterface(&table)->tableInterface();
    EXPECT_TRUE(cells->selectRow(1));
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen[0][0].toLongLong(), 2);
}

} // namespace
