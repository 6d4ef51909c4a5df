// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/picker.h"

#include "kittest.h"
#include "ui/theme.h"

#include <QAbstractItemView>
#include <QSignalSpy>
#include <QWheelEvent>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

class PickerTest : public KitTest {
protected:
    PickerTest() : picker(u"Keep a restore point"_s)
    {
        picker.addItems({u"12 hours"_s, u"2 days"_s, u"1 week"_s});
        picker.resize(picker.sizeHint());
    }

    QColor fill() { return kit::colourAt(kit::picture(picker, 1.0, Theme::panel2), 6, 16); }

    Picker picker;
};

} // namespace

TEST_F(PickerTest, IsAComboBoxWithItsLabelAndItsChoice)
{
    EXPECT_EQ(role(picker), QAccessible::ComboBox);
    EXPECT_EQ(picker.accessibleName(), u"Keep a restore point"_s);
    EXPECT_EQ(description(picker), u"Keep a restore point"_s);
    EXPECT_EQ(tree(picker)->text(QAccessible::Value), u"12 hours"_s);
}

TEST_F(PickerTest, LooksOfItsStates)
{
    EXPECT_EQ(fill(), QColor(Theme::bg));
    hover(picker);
    EXPECT_EQ(fill(), QColor(Theme::panel));
    picker.setEnabled(false);
    EXPECT_EQ(fill(), QColor(Theme::panel2)) << "no fill of its own";
    EXPECT_EQ(kit::colourAt(kit::picture(picker), picker.width() / 2.0, 0), QColor(Theme::line));
}

TEST_F(PickerTest, ArrowKeysChooseAndTheWheelDoesNot)
{
    show(picker);
    picker.setFocus();
    QTest::keyClick(&picker, Qt::Key_Down);
    EXPECT_EQ(picker.currentText(), u"2 days"_s);
    QWheelEvent wheel(QPointF(10, 10), picker.mapToGlobal(QPointF(10, 10)), QPoint(0, -120), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&picker, &wheel);
    EXPECT_EQ(picker.currentText(), u"2 days"_s);
    EXPECT_FALSE(wheel.isAccepted()) << "the form around it scrolls";
}

TEST_F(PickerTest, MouseOpensTheListWithoutTakingFocusAndChooses)
{
    const QSignalSpy chosen(&picker, &QComboBox::activated);
    show(picker);
    picker.clearFocus();
    QTest::mouseClick(&picker, Qt::LeftButton);
    ASSERT_TRUE(picker.view()->isVisible());
    EXPECT_FALSE(picker.hasFocus());
    EXPECT_TRUE(picker.view()->property("ownFocus").toBool()) << "no ring around the list";
    const QRect row = picker.view()->visualRect(picker.model()->index(2, 0));
    EXPECT_EQ(row.height(), 28);
    QTest::qWait(QApplication::doubleClickInterval() + 50); // or the list takes the press for the opening one's
    QTest::mouseClick(picker.view()->viewport(), Qt::LeftButton, {}, row.center());
    EXPECT_EQ(picker.currentText(), u"1 week"_s);
    EXPECT_EQ(chosen.size(), 1);
    EXPECT_FALSE(picker.view()->isVisible());
}

TEST_F(PickerTest, LongEntriesWidenNothing)
{
    Picker volumes(u"Volume"_s);
    volumes.addItem(QString(16 * 1024, u'x'));
    volumes.addItem(u"gnp\u202Eexe"_s);
    EXPECT_EQ(volumes.sizeHint().width(), 320);
    EXPECT_LE(volumes.minimumSizeHint().width(), 100);
    volumes.resize(200, 32);
    show(volumes);
    volumes.showPopup();
    EXPECT_LE(volumes.view()->window()->width(), 400);
    volumes.hidePopup();
    EXPECT_EQ(volumes.itemText(1), u"gnp\u202Eexe"_s) << "the entry itself stays as it is";
}

TEST_F(PickerTest, FillUnderThePointerFadesIn)
{
    setReducedMotion(false);
    show(picker);
    hover(picker);
    EXPECT_EQ(fill(), QColor(Theme::bg)) << "not at once";
    EXPECT_TRUE(QTest::qWaitFor([&] { return fill() == QColor(Theme::panel); }));
}
