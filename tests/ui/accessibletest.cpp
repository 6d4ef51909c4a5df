// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/accessible.h"

#include "kit.h"
#include "ui/controls/buttons.h"
#include "ui/controls/iconbutton.h"
#include "ui/parts/boardframe.h"
#include "ui/parts/brand.h"
#include "ui/parts/sectiontitle.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QAbstractButton>
#include <QAccessibleInterface>
#include <QDialog>
#include <QPaintEvent>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>

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

/// A painted thing whose number may be changed.
class PaintedDial final : public QWidget, public AdjustableValue {
public:
    [[nodiscard]] double accessibleNumber() const override { return number; }
    [[nodiscard]] double smallestNumber() const override { return -10; }
    [[nodiscard]] double largestNumber() const override { return 10; }
    [[nodiscard]] double numberStep() const override { return 2; }
    void adjustTo(double to) override { number = to; }

    double number = 4;
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

TEST(Accessible, ALineWithoutWordsIsNothingToStopAt)
{
    AgentLabel label({}, Type::Body, Theme::text);
    label.show();
    EXPECT_TRUE(tree(label).state().invisible);
    label.setText(u"nightly"_s);
    EXPECT_FALSE(tree(label).state().invisible);
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
    button.show();
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return clicks.size() == 1; }));
    button.setEnabled(false);
    EXPECT_TRUE(tree(button).state().disabled);
    EXPECT_FALSE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    QCoreApplication::processEvents();
    EXPECT_EQ(clicks.size(), 1);
}

TEST(Accessible, WhoPressesAButtonDoesNotWaitForItsDialog)
{
    Button button(u"Remove…"_s, PrimaryButtonStyle{});
    QDialog dialog;
    bool isAnswered = false;
    std::optional<bool> wasAnsweredBefore;
    QObject::connect(&button, &QAbstractButton::clicked, &button, [&] {
        wasAnsweredBefore = isAnswered;
        dialog.exec();
    });
    button.show();
    QTimer::singleShot(std::chrono::seconds(5), &dialog, &QDialog::reject); // or a failure would wait for ever
    tree(button).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    isAnswered = true;
    QTimer::singleShot(0, &button, [&] { dialog.reject(); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return wasAnsweredBefore.has_value(); }));
    EXPECT_EQ(wasAnsweredBefore, true);
}

TEST(Accessible, AButtonBehindAModalDialogIsOutOfReach)
{
    QWidget window;
    Button behind(u"Mount"_s, PrimaryButtonStyle{}, &window);
    PaintedDial dial;
    dial.setParent(&window);
    setAccessible(&dial, QAccessible::Slider, u"Age"_s);
    window.show();
    QDialog dialog(&window);
    dialog.setModal(true);
    Button front(u"Cancel"_s, SecondaryButtonStyle{}, &dialog);
    dialog.show();
    QSignalSpy behindClicks(&behind, &QAbstractButton::clicked);
    QSignalSpy frontClicks(&front, &QAbstractButton::clicked);
    tree(behind).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    tree(dial).valueInterface()->setCurrentValue(8.0);
    tree(front).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return frontClicks.size() == 1; }));
    EXPECT_EQ(behindClicks.size(), 0);
    EXPECT_EQ(dial.number, 4);

    dialog.hide();
    tree(behind).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return behindClicks.size() == 1; }));
}

TEST(Accessible, TwoPressesInARowOpenOneDialog)
{
    QWidget window;
    Button button(u"Remove…"_s, PrimaryButtonStyle{}, &window);
    window.show();
    int opened = 0;
    QObject::connect(&button, &QAbstractButton::clicked, &button, [&] {
        ++opened;
        QDialog dialog(&window);
        QTimer::singleShot(std::chrono::milliseconds(50), &dialog, &QDialog::reject);
        dialog.exec();
    });
    bool isOver = false;
    tree(button).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    tree(button).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTimer::singleShot(std::chrono::milliseconds(100), &button, [&] { isOver = true; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return isOver; }));
    EXPECT_EQ(opened, 1);
}

TEST(Accessible, AButtonThatIsGoneOrHiddenByThenIsNotPressed)
{
    auto gone = std::make_unique<Button>(u"Mount"_s, PrimaryButtonStyle{});
    Button hidden(u"Unmount"_s, PrimaryButtonStyle{});
    gone->show();
    hidden.show();
    QSignalSpy clicks(&hidden, &QAbstractButton::clicked);
    tree(*gone).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    tree(hidden).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    gone.reset();
    hidden.hide();
    QCoreApplication::processEvents();
    EXPECT_EQ(clicks.size(), 0);
}

TEST(Accessible, ACheckableWidgetReportsItsCheckAndToggles)
{
    PaintedButton toggle;
    setAccessible(&toggle, QAccessible::CheckBox, u"Mount after creating"_s);
    EXPECT_TRUE(tree(toggle).state().checkable);
    EXPECT_FALSE(tree(toggle).state().checked);
    toggle.show();
    tree(toggle).actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return toggle.isChecked(); }));
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
    tab.show();
    tree(tab).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return tree(tab).state().selected; }));
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

TEST(Accessible, AnAdjustableValueIsReadAndSet)
{
    PaintedDial dial;
    setAccessible(&dial, QAccessible::Slider, u"Age"_s);
    QAccessibleValueInterface *const value = tree(dial).valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue(), QVariant(4.0));
    EXPECT_EQ(value->minimumValue(), QVariant(-10.0));
    EXPECT_EQ(value->maximumValue(), QVariant(10.0));
    EXPECT_EQ(value->minimumStepSize(), QVariant(2.0));
    value->setCurrentValue(7.5);
    EXPECT_EQ(dial.number, 7.5);
    value->setCurrentValue(u"most"_s);
    EXPECT_EQ(dial.number, 7.5) << "what is no number changes nothing";

    QAccessibleActionInterface *const actions = tree(dial).actionInterface();
    EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::increaseAction()));
    actions->doAction(QAccessibleActionInterface::increaseAction());
    EXPECT_EQ(dial.number, 9.5);
    actions->doAction(QAccessibleActionInterface::decreaseAction());
    EXPECT_EQ(dial.number, 7.5);

    dial.setEnabled(false);
    value->setCurrentValue(1.0);
    EXPECT_EQ(dial.number, 7.5);
    EXPECT_FALSE(actions->actionNames().contains(QAccessibleActionInterface::increaseAction()));
}
