// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/accessible.h"

#include "kit.h"
#include "ui/boardframe.h"
#include "ui/brand.h"
#include "ui/buttons.h"
#include "ui/iconbutton.h"
#include "ui/label.h"
#include "ui/sectiontitle.h"
#include "ui/theme.h"

#include <QAbstractButton>
#include <QAccessibleInterface>
#include <QPaintEvent>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

QAccessibleInterface &tree(QWidget &widget)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&widget);
    EXPECT_NE(interface, nullptr);
    return *interface;
}

QString nameOf(QWidget &widget)
{
    return tree(widget).text(QAccessible::Name);
}

/// A checkable thing that a board paints by hand.
class PaintedButton final : public QAbstractButton {
public:
    PaintedButton() { setCheckable(true); }

protected:
    void paintEvent(QPaintEvent *) override {}
};

} // namespace

TEST(Accessible, APaintedWidgetGetsRoleAndName)
{
    QWidget timeline;
    setAccessible(&timeline, QAccessible::Slider, u"Timeline"_s);
    EXPECT_EQ(tree(timeline).role(), QAccessible::Slider);
    EXPECT_EQ(nameOf(timeline), u"Timeline"_s);
}

TEST(Accessible, WidgetsWithoutARoleStayAsQtSeesThem)
{
    const QWidget plain;
    EXPECT_EQ(tree(const_cast<QWidget &>(plain)).role(), QAccessible::Client);
}

TEST(Accessible, TheKitHasItsRolesAndNames)
{
    kit::wearHouseLook();
    Button button(u"Copy & paste"_s, SecondaryButtonStyle{});
    EXPECT_EQ(tree(button).role(), QAccessible::PushButton);
    EXPECT_EQ(nameOf(button), u"Copy & paste"_s);
    IconButton icon(Icon::Copy, u"Copy the line"_s);
    EXPECT_EQ(tree(icon).role(), QAccessible::PushButton);
    EXPECT_EQ(nameOf(icon), u"Copy the line"_s);
    Label label(u"A & B"_s, Type::Body, Theme::text);
    EXPECT_EQ(tree(label).role(), QAccessible::StaticText);
    EXPECT_EQ(nameOf(label), u"A & B"_s);
    AgentLabel agent(u"photos & more"_s, Type::Body, Theme::text);
    EXPECT_EQ(tree(agent).role(), QAccessible::StaticText);
    EXPECT_EQ(nameOf(agent), u"photos & more"_s);
    Brand brand;
    EXPECT_EQ(tree(brand).role(), QAccessible::StaticText);
    EXPECT_EQ(nameOf(brand), u"Quillfen"_s);
    BrandMark mark(28);
    EXPECT_EQ(tree(mark).role(), QAccessible::Graphic);
    EXPECT_EQ(nameOf(mark), u"Quillfen"_s);
}

TEST(Accessible, TitlesAreHeadings)
{
    kit::wearHouseLook();
    BoardFrame board(u"Volumes"_s);
    SectionTitle section(u"Ready copies"_s);
    auto *title = board.findChild<AgentLabel *>();
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(tree(*title).role(), QAccessible::Heading);
    EXPECT_EQ(nameOf(*title), u"Volumes"_s);
    EXPECT_EQ(tree(*section.findChild<AgentLabel *>()).role(), QAccessible::Heading);
}

TEST(Accessible, AButtonIsPressedByItsAction)
{
    Button button(u"Mount"_s, PrimaryButtonStyle{});
    QSignalSpy clicks(&button, &QAbstractButton::clicked);
    QAccessibleActionInterface *actions = tree(button).actionInterface();
    ASSERT_NE(actions, nullptr);
    EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks.size(), 1);
    button.setEnabled(false);
    EXPECT_TRUE(tree(button).state().disabled);
    EXPECT_FALSE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks.size(), 1);
}

TEST(Accessible, ACheckableWidgetReportsItsCheckAndToggles)
{
    PaintedButton toggle;
    setAccessible(&toggle, QAccessible::CheckBox, u"Mount after creating"_s);
    EXPECT_TRUE(tree(toggle).state().checkable);
    EXPECT_FALSE(tree(toggle).state().checked);
    tree(toggle).actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(toggle.isChecked());
    EXPECT_TRUE(tree(toggle).state().checked);
}

TEST(Accessible, APageTabIsSelectedWhileChecked)
{
    PaintedButton tab;
    tab.setText(u"Volumes"_s);
    setRole(&tab, QAccessible::PageTab);
    EXPECT_EQ(nameOf(tab), u"Volumes"_s);
    EXPECT_TRUE(tree(tab).state().selectable);
    EXPECT_FALSE(tree(tab).state().selected);
    EXPECT_FALSE(tree(tab).state().checkable);
    tree(tab).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(tree(tab).state().selected);
}

TEST(Accessible, AValueIsThereInWordsAndAsANumber)
{
    QWidget bar;
    setAccessible(&bar, QAccessible::ProgressBar, u"Plan"_s);
    EXPECT_EQ(tree(bar).textInterface(), nullptr);
    EXPECT_EQ(tree(bar).valueInterface(), nullptr);
    setAccessibleValue(&bar, u"1.3 TB of 2.0 TB"_s, 0.65);
    EXPECT_EQ(tree(bar).text(QAccessible::Value), u"1.3 TB of 2.0 TB"_s);
    ASSERT_NE(tree(bar).textInterface(), nullptr);
    EXPECT_EQ(tree(bar).textInterface()->characterCount(), 16);
    EXPECT_EQ(tree(bar).textInterface()->text(0, 6), u"1.3 TB"_s);
    ASSERT_NE(tree(bar).valueInterface(), nullptr);
    EXPECT_DOUBLE_EQ(tree(bar).valueInterface()->currentValue().toDouble(), 0.65);
    EXPECT_DOUBLE_EQ(tree(bar).valueInterface()->maximumValue().toDouble(), 1.0);
}

TEST(Accessible, ThePropertyAloneIsAValueToo)
{
    QWidget timeline;
    setAccessible(&timeline, QAccessible::Slider, u"Timeline"_s);
    timeline.setProperty("accessibleValue", u"Thu, Nov 19 · 18:20:04"_s);
    ASSERT_NE(tree(timeline).textInterface(), nullptr);
    EXPECT_EQ(tree(timeline).textInterface()->text(0, 100), u"Thu, Nov 19 · 18:20:04"_s);
    EXPECT_EQ(tree(timeline).valueInterface(), nullptr);
}

TEST(Accessible, ARoleCountsEvenForAWidgetThatIsKnownAlready)
{
    PaintedButton tab;
    tab.setText(u"Hubs"_s);
    EXPECT_EQ(tree(tab).role(), QAccessible::CheckBox);
    setRole(&tab, QAccessible::PageTab);
    EXPECT_EQ(tree(tab).role(), QAccessible::PageTab);
}

TEST(Accessible, AnAnnouncementNamesItsWidget)
{
    QWidget toast;
    setAccessible(&toast, QAccessible::AlertMessage, {});
    announce(&toast, u"policy saved"_s);
    EXPECT_EQ(tree(toast).role(), QAccessible::AlertMessage);
    EXPECT_EQ(nameOf(toast), u"policy saved"_s);
    announce(&toast, {});
    EXPECT_EQ(nameOf(toast), u"policy saved"_s) << "nothing to say leaves what was said";
}
