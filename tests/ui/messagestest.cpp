// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "kittest.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/overlays/scrim.h"
#include "ui/overlays/toast.h"
#include "ui/parts/emptystate.h"
#include "ui/parts/inlineerror.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QSignalSpy>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

class InlineErrorTest : public KitTest {};
class EmptyStateTest : public KitTest {};

class ToastTest : public KitTest {
protected:
    ToastTest()
    {
        window.resize(960, 600);
        toast = new Toast(&window);
    }

    QWidget window;
    Toast *toast;
};

} // namespace

TEST_F(InlineErrorTest, IsHiddenWhileEmptyAndAnAlertOtherwise)
{
    QWidget form;
    auto *error = new InlineError;
    form.setLayout(column({error}));
    form.show();
    EXPECT_TRUE(error->isHidden());
    error->setText(u"A volume named Documents exists already."_s);
    EXPECT_TRUE(error->isVisible());
    EXPECT_EQ(error->text(), u"A volume named Documents exists already."_s);
    EXPECT_EQ(role(*error->findChild<AgentLabel *>()), QAccessible::AlertMessage);
    EXPECT_EQ(name(*error->findChild<AgentLabel *>()), u"A volume named Documents exists already."_s);
    error->setText({});
    EXPECT_TRUE(error->isHidden());
}

TEST_F(InlineErrorTest, LongReasonsWrapButNeverPushTheRestAway)
{
    InlineError error;
    error.setText(u"Something went wrong. "_s.repeated(1000));
    EXPECT_LE(error.heightForWidth(400), 4 * 20);
    EXPECT_GT(error.heightForWidth(400), 20);
    EXPECT_LT(error.minimumSizeHint().width(), 200);
    error.setText(QString(16 * 1024, u'x'));
    EXPECT_LT(error.minimumSizeHint().width(), 200);
}

TEST_F(EmptyStateTest, SaysItsLineAndOffersItsButton)
{
    EmptyState empty(Icon::Drive, u"A volume is a drive on this Mac."_s, u"+ New volume"_s);
    const QSignalSpy activated(&empty, &EmptyState::activated);
    empty.resize(800, 500);
    show(empty);
    auto *button = empty.findChild<Button *>();
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->height(), 36);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(activated.size(), 1);
    auto *line = empty.findChild<AgentLabel *>();
    EXPECT_EQ(name(*line), u"A volume is a drive on this Mac."_s);
    EXPECT_NEAR(line->mapTo(&empty, line->rect().center()).x(), 400, 1);
    empty.setLine(QString(16 * 1024, u'x'));
    EXPECT_LT(empty.minimumSizeHint().width(), 400);
}

TEST_F(EmptyStateTest, WithoutAButtonThereIsNone)
{
    EmptyState empty(Icon::Box, u"No copies yet."_s);
    EXPECT_EQ(empty.findChild<Button *>(), nullptr);
}

TEST_F(ToastTest, StandsAtTheBottomCentreAsWideAsItsLine)
{
    show(window);
    toast->setText(u"policy saved"_s);
    EXPECT_TRUE(toast->isVisible());
    EXPECT_EQ(toast->height(), 40);
    EXPECT_EQ(toast->geometry().bottom() + 1, 600 - 24);
    EXPECT_NEAR(toast->geometry().center().x(), 480, 1);
    EXPECT_LT(toast->width(), 160);
    window.resize(1180, 760);
    EXPECT_EQ(toast->geometry().bottom() + 1, 760 - 24);
    EXPECT_NEAR(toast->geometry().center().x(), 590, 1);
}

TEST_F(ToastTest, LongTextStaysWithinTheWindowAndKeepsItsWholeName)
{
    show(window);
    const QString text = u"no such volume "_s.repeated(200);
    toast->setText(text);
    EXPECT_EQ(toast->width(), 960 - 96);
    EXPECT_EQ(name(*toast), text);
    EXPECT_EQ(role(*toast), QAccessible::AlertMessage);
    toast->setText(QString(1024 * 1024, u'x'));
    EXPECT_EQ(toast->width(), 960 - 96);
}

TEST_F(ToastTest, EmptyTextTakesItAwayAndNewTextReplacesTheOld)
{
    show(window);
    toast->setText(u"policy saved"_s);
    toast->setText(u"volume created"_s);
    EXPECT_EQ(name(*toast), u"volume created"_s);
    toast->setText({});
    EXPECT_TRUE(toast->isHidden());
    toast->setText(u"volume created"_s);
    EXPECT_TRUE(toast->isVisible());
}

TEST_F(ToastTest, TakesNoFocusAndLetsClicksBesideItThrough)
{
    auto *button = new Button(u"Mount"_s, PrimaryButtonStyle{}, &window);
    button->resize(200, 32);
    show(window);
    toast->setText(u"policy saved"_s);
    button->move(toast->geometry().right() + 3, toast->y());
    QWidget *other = focused(window);
    QTest::mouseClick(toast, Qt::LeftButton);
    EXPECT_TRUE(other->hasFocus());
    EXPECT_EQ(window.childAt(button->pos() + QPoint(2, 10)), button) << "the shadow lies over it and is not in the way";
}

TEST_F(ToastTest, WhatItsTextHidesIsShownInItsName)
{
    show(window);
    toast->setText(u"photos\u202Egpj"_s);
    EXPECT_EQ(name(*toast), u"photos⟨U+202E⟩gpj"_s);
    toast->setText(u"photos\u202Efdp"_s);
    EXPECT_EQ(name(*toast), u"photos⟨U+202E⟩fdp"_s) << "also for a text that changes in place";
}

TEST_F(ToastTest, StaysAboveAScrimThatComesAfterIt)
{
    show(window);
    toast->setText(u"policy saved"_s);
    new Scrim(&window); // the window's own
    EXPECT_EQ(window.childAt(toast->geometry().center()), toast);
}

TEST_F(ToastTest, FadesInAndOut)
{
    setReducedMotion(false);
    show(window);
    toast->setText(u"policy saved"_s);
    QImage early = kit::picture(*toast, 1.0, Theme::bg);
    EXPECT_NE(kit::colourAt(early, 10, 20), QColor(Theme::dPanel));
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return kit::colourAt(kit::picture(*toast, 1.0, Theme::bg), 10, 20) == Theme::dPanel; }, 2000));
    toast->setText({});
    EXPECT_TRUE(toast->isVisible()) << "on its way out";
    EXPECT_TRUE(QTest::qWaitFor([this] { return toast->isHidden(); }, 2000));
}

TEST_F(ToastTest, TakenAwayBeforeItWasSeen)
{
    setReducedMotion(false);
    show(window);
    toast->setText(u"policy saved"_s);
    toast->setText({});
    EXPECT_TRUE(QTest::qWaitFor([this] { return toast->isHidden(); }, 2000));
    toast->setText(u"volume created"_s);
    EXPECT_TRUE(toast->isVisible());
}
