// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/lists/columns.h"

#include "kittest.h"

#include "ui/controls/buttons.h"
#include "ui/lists/cellrow.h"
#include "ui/lists/columnheader.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QAbstractButton>
#include <QSignalSpy>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;

std::vector<int> widths(const std::vector<Column> &columns, int room)
{
    std::vector<int> found;
    for (const QRect &rect : cellRects(columns, QRect(16, 0, room, 40))) {
        found.push_back(rect.width());
    }
    return found;
}

using Widths = std::vector<int>;
const std::vector<Column> three{{100, 60, 3}, {80, 40, 1}, {50, 50, 0}};

TEST(Columns, HaveTheirWidthWhereThereIsRoom)
{
    EXPECT_EQ(widths(three, 246), (Widths{100, 80, 50}));
}

TEST(Columns, ShareWhatIsLeft)
{
    EXPECT_EQ(widths(three, 286), (Widths{130, 90, 50}));
}

TEST(Columns, GiveWayDownToTheirLeast)
{
    EXPECT_EQ(widths(three, 206), (Widths{80, 60, 50}));
    EXPECT_EQ(widths(three, 166), (Widths{60, 40, 50}));
}

TEST(Columns, NeverReachOverTheEdge)
{
    for (int room = 0; room < 400; ++room) {
        const std::vector<QRect> rects = cellRects(three, QRect(16, 0, room, 40));
        int before = 16;
        for (const QRect &rect : rects) {
            EXPECT_GE(rect.left(), before);
            before = rect.right() + 1;
        }
        if (room >= 16) {
            EXPECT_LE(before, 16 + room) << room;
        }
    }
}

TEST(Columns, ReadNothingIntoAnEmptyList)
{
    EXPECT_TRUE(cellRects({}, QRect(0, 0, 100, 40)).empty());
}

class ColumnHeaderTest : public KitTest {
protected:
    QWidget window;
    ColumnHeader *header = new ColumnHeader({u"Name"_s, u"Size"_s, QString()},
                                            std::make_shared<const std::vector<Column>>(three), &window);

    void SetUp() override
    {
        window.resize(400, 60);
        header->setGeometry(0, 0, 400, 28);
        show(window);
    }

    [[nodiscard]] QAbstractButton *caption(int at) const { return header->findChildren<QAbstractButton *>().at(at); }
};

TEST_F(ColumnHeaderTest, ACaptionSortsUpwardsThenDownwardsThenNotAtAll)
{
    QList<std::pair<int, Sorting>> heard;
    QObject::connect(header, &ColumnHeader::sorted, header, [&](int column, Sorting sorting) {
        heard.append({column, sorting});
    });
    for (int click = 0; click < 3; ++click) {
        QTest::mouseClick(caption(1), Qt::LeftButton);
    }
    QTest::mouseClick(caption(0), Qt::LeftButton);
    QTest::mouseClick(caption(1), Qt::LeftButton);
    const QList<std::pair<int, Sorting>> wanted{{1, Sorting::Ascending},
                                                {1, Sorting::Descending},
                                                {-1, Sorting::None},
                                                {0, Sorting::Ascending},
                                                {1, Sorting::Ascending}};
    EXPECT_EQ(heard, wanted);
}

TEST_F(ColumnHeaderTest, IsReadAsHeadersWithTheirOrder)
{
    ASSERT_EQ(header->findChildren<QAbstractButton *>().size(), 2) << "no caption, nothing to sort by";
    EXPECT_EQ(role(*caption(0)), QAccessible::ColumnHeader);
    EXPECT_EQ(name(*caption(0)), u"Name"_s);
    EXPECT_EQ(description(*caption(0)), u"not sorted"_s);
    caption(0)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(caption(0), Qt::Key_Return);
    EXPECT_EQ(description(*caption(0)), u"sorted, ascending"_s);
    QTest::keyClick(caption(0), Qt::Key_Space);
    EXPECT_EQ(description(*caption(0)), u"sorted, descending"_s);
}

TEST_F(ColumnHeaderTest, TakesTheKeyboardByTabOnly)
{
    QWidget *const before = focused(window);
    QTest::mouseClick(caption(0), Qt::LeftButton);
    EXPECT_TRUE(before->hasFocus());
    QTest::keyClick(before, Qt::Key_Tab);
    EXPECT_TRUE(caption(0)->hasFocus() || caption(1)->hasFocus());
}

TEST_F(ColumnHeaderTest, CaptionsStandAboveTheirColumns)
{
    const std::vector<QRect> cells = cellRects(three, QRect(16, 0, 400 - 32, 28));
    EXPECT_NEAR(caption(0)->x(), cells[0].left(), 4);
    EXPECT_NEAR(caption(1)->x(), cells[1].left(), 4);
}

class SampleRow final : public CellRow {
public:
    SampleRow() : CellRow(std::make_shared<const std::vector<Column>>(three))
    {
        name = new AgentLabel({}, Type::Body, Theme::heading);
        addCell(name);
        addButton(remove);
        addButton(revoke);
    }
    void fill(const QString &text)
    {
        name->setText(text);
        setRowName(text, u"more"_s);
        arrange();
    }

    AgentLabel *name = nullptr;
    Button *remove = new Button(u"Remove"_s, SecondaryButtonStyle{28});
    Button *revoke = new Button(u"Revoke"_s, DangerButtonStyle{});
};

class CellRowTest : public KitTest {};

TEST_F(CellRowTest, ButtonsCarryTheRowAndStandAtTheRight)
{
    SampleRow row;
    row.resize(500, 48);
    show(row);
    row.fill(u"laptop"_s);
    EXPECT_EQ(name(*row.remove), u"Remove, laptop"_s);
    EXPECT_EQ(name(*row.revoke), u"Revoke, laptop"_s);
    EXPECT_EQ(name(row), u"laptop"_s);
    EXPECT_EQ(description(row), u"more"_s);
    EXPECT_EQ(row.revoke->geometry().right(), 500 - 16 - 1);
    EXPECT_EQ(row.remove->geometry().right(), row.revoke->x() - 8 - 1);
    row.revoke->hide();
    row.fill(u"laptop"_s);
    EXPECT_EQ(row.remove->geometry().right(), 500 - 16 - 1);
}

TEST_F(CellRowTest, AHostileNameStaysOneLineAndVisible)
{
    SampleRow row;
    row.resize(500, 48);
    show(row);
    row.fill(QStringLiteral("a\nb\u202Ec"));
    EXPECT_FALSE(name(*row.remove).contains(u'\n'));
    EXPECT_FALSE(name(*row.remove).contains(QChar(0x202E)));
    row.fill(QString(60, u'W'));
    EXPECT_EQ(row.revoke->geometry().right(), 500 - 16 - 1);
}

} // namespace
