// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/radiorow.h"

#include "kittest.h"
#include "ui/controls/sharetile.h"
#include "ui/layout.h"
#include "ui/theme.h"

#include <QBoxLayout>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

class RadioRowTest : public KitTest {};
class ShareTileTest : public KitTest {};

} // namespace

TEST_F(RadioRowTest, IsARadioButtonWhoseNameBeginsWithItsTitle)
{
    RadioRow choice(u"Documents"_s, u"as of Thu, Nov 19"_s);
    choice.setValue(u"100 GB"_s);
    EXPECT_EQ(role(choice), QAccessible::RadioButton);
    EXPECT_EQ(name(choice), u"Documents, as of Thu, Nov 19, 100 GB"_s);
    choice.setTitle(u"Pictures"_s);
    choice.setCaption({});
    EXPECT_EQ(name(choice), u"Pictures, 100 GB"_s);
    choice.setChecked(true);
    EXPECT_TRUE(tree(choice)->state().checked);
}

TEST_F(RadioRowTest, FortyHighAndFortyEightWithACaption)
{
    EXPECT_EQ(RadioRow(u"Documents"_s).sizeHint().height(), 40);
    EXPECT_EQ(RadioRow(u"Documents"_s, u"a caption"_s).sizeHint().height(), 48);
    EXPECT_LT(RadioRow(QString(16 * 1024, u'x')).minimumSizeHint().width(), 150);
}

TEST_F(RadioRowTest, WholeRowChoosesAndOthersYield)
{
    QWidget group;
    auto *first = new RadioRow(u"Documents"_s);
    auto *second = new RadioRow(u"photos-archive"_s);
    group.setLayout(column({first, second}));
    group.resize(300, 80);
    show(group);
    QWidget *other = focused(group);
    QTest::mouseClick(first, Qt::LeftButton, {}, QPoint(290, 5));
    EXPECT_TRUE(first->isChecked());
    EXPECT_TRUE(other->hasFocus());
    QTest::mouseClick(second, Qt::LeftButton, {}, QPoint(150, 20));
    EXPECT_TRUE(second->isChecked());
    EXPECT_FALSE(first->isChecked());
    second->setFocus(Qt::TabFocusReason);
    QTest::keyClick(second, Qt::Key_Up);
    EXPECT_TRUE(first->isChecked());
    EXPECT_TRUE(first->hasFocus());
}

TEST_F(RadioRowTest, TabComesToTheChosenRow)
{
    QWidget group;
    auto *before = new QWidget;
    before->setFocusPolicy(Qt::TabFocus);
    auto *first = new RadioRow(u"Documents"_s);
    auto *second = new RadioRow(u"photos-archive"_s);
    auto *third = new RadioRow(u"scratch"_s);
    auto *after = new QWidget;
    after->setFocusPolicy(Qt::TabFocus);
    group.setLayout(column({before, first, second, third, after}));
    group.resize(300, 200);
    show(group);
    const auto next = [&](QWidget *from, Qt::KeyboardModifiers held = {}) {
        from->setFocus(Qt::TabFocusReason);
        QTest::keyClick(from, Qt::Key_Tab, held);
        return group.focusWidget();
    };
    EXPECT_EQ(next(before), first) << "while nothing is chosen";
    EXPECT_EQ(next(after, Qt::ShiftModifier), first);
    QTest::mouseClick(second, Qt::LeftButton);
    EXPECT_EQ(next(before), second);
    EXPECT_EQ(next(second), after);
    EXPECT_EQ(next(after, Qt::ShiftModifier), second);
    third->setChecked(true);
    EXPECT_EQ(next(before), third);
    third->setEnabled(false);
    EXPECT_EQ(next(before), first) << "what cannot be used is nothing to come to";
    third->setEnabled(true);
    third->hide();
    EXPECT_EQ(next(before), first);
    third->show();
    EXPECT_EQ(next(before), third);
}

TEST_F(RadioRowTest, RadioIsFilledInOkWhenChosen)
{
    RadioRow choice(u"Documents"_s);
    choice.resize(300, 40);
    EXPECT_EQ(kit::colourAt(kit::picture(choice, 2.0, Theme::panel2), 25, 20), QColor(Theme::panel2));
    choice.setChecked(true);
    EXPECT_EQ(kit::colourAt(kit::picture(choice, 2.0, Theme::panel2), 25, 20), QColor(Theme::ok));
}

TEST_F(ShareTileTest, ChosenTileHasTheAccentsBorder)
{
    for (const qreal scale : everyScale) {
        ShareTile tile(u"SMB"_s, u"Finder, recommended"_s);
        tile.resize(143, 76);
        const auto border = [&](qreal y) { return kit::colourAt(kit::picture(tile, scale, Theme::bg), 60, y); };
        EXPECT_EQ(border(0), QColor(Theme::line));
        EXPECT_EQ(border(5), QColor(Theme::panel2));
        hover(tile);
        EXPECT_EQ(border(0), QColor(Theme::muted));
        tile.setChecked(true);
        EXPECT_EQ(border(0), QColor(Theme::accent));
        EXPECT_EQ(border(1.5), QColor(Theme::accent));
        tile.setEnabled(false);
        EXPECT_EQ(border(0), QColor(Theme::line));
    }
}

TEST_F(ShareTileTest, TilesShareARowAndArrowsChoose)
{
    QWidget form;
    auto *smb = new ShareTile(u"SMB"_s, u"Finder, recommended"_s);
    auto *nfs = new ShareTile(u"NFS"_s, u"Served to your network"_s);
    auto *iscsi = new ShareTile(u"iSCSI"_s, u"Served to your network"_s);
    form.setLayout(row({smb, nfs, iscsi}));
    form.resize(448, 76);
    smb->setChecked(true);
    show(form);
    EXPECT_NEAR(smb->width(), 144, 1);
    EXPECT_NEAR(iscsi->width(), 144, 1);
    EXPECT_EQ(smb->heightForWidth(143), 76) << "the subtitle wraps";
    EXPECT_EQ(smb->heightForWidth(300), 60);
    EXPECT_EQ(role(*nfs), QAccessible::RadioButton);
    EXPECT_EQ(name(*nfs), u"NFS, Served to your network"_s);

    smb->setFocus(Qt::TabFocusReason);
    QTest::keyClick(smb, Qt::Key_Right);
    EXPECT_TRUE(nfs->isChecked());
    EXPECT_TRUE(nfs->hasFocus());
    QTest::mouseClick(iscsi, Qt::LeftButton, {}, QPoint(5, 70));
    EXPECT_TRUE(iscsi->isChecked());
    EXPECT_FALSE(iscsi->hasFocus());
    EXPECT_FALSE(nfs->isChecked());
}
