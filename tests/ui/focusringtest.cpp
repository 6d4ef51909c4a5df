// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/style/focusring.h"

#include "kit.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/parts/scrollarea.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QDialog>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

void installOnce()
{
    static const bool installed = [] {
        kit::wearHouseLook();
        installFocusRing(*static_cast<QApplication *>(QCoreApplication::instance()));
        return true;
    }();
    Q_UNUSED(installed)
}

QWidget *ringOf(const QWidget &window)
{
    auto *ring = window.findChild<QWidget *>(u"focusRing"_s);
    return ring != nullptr && ring->isVisible() ? ring : nullptr;
}

QRect around(const QWidget *widget)
{
    return QRect(widget->mapTo(widget->window(), QPoint(0, 0)), widget->size()).adjusted(-4, -4, 4, 4);
}

class FocusRing : public testing::Test {
protected:
    FocusRing()
    {
        installOnce();
        field->setProperty("ownFocus", true);
        window.setLayout(column({field, first, second, Stretch{}}, 12, {20, 20, 20, 20}));
        window.resize(300, 300);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        field->setFocus(Qt::MouseFocusReason);
    }

    QWidget window;
    QLineEdit *field = new QLineEdit;
    Button *first = new Button(u"First"_s, SecondaryButtonStyle{});
    Button *second = new Button(u"Second"_s, SecondaryButtonStyle{32, true});
};

} // namespace

TEST_F(FocusRing, SurroundsWhatHasFocusByKeyboard)
{
    EXPECT_EQ(ringOf(window), nullptr);
    QTest::keyClick(field, Qt::Key_Tab);
    ASSERT_TRUE(first->hasFocus());
    QWidget *ring = ringOf(window);
    ASSERT_NE(ring, nullptr);
    // A move of the widget in the same turn of the event loop is followed in the next.
    EXPECT_TRUE(QTest::qWaitFor([&] { return ring->geometry() == around(first); }));
    const QImage image = kit::picture(*ring, 1.0, Theme::bg);
    EXPECT_EQ(kit::colourAt(image, ring->width() / 2.0, 0), Theme::ok);
    EXPECT_EQ(kit::colourAt(image, ring->width() / 2.0, 1), Theme::ok);
    EXPECT_EQ(kit::colourAt(image, ring->width() / 2.0, 2), Theme::bg) << "the gap";
}

TEST_F(FocusRing, IsAccentOnDarkSurfaces)
{
    second->setFocus(Qt::TabFocusReason);
    QWidget *ring = ringOf(window);
    ASSERT_NE(ring, nullptr);
    EXPECT_EQ(kit::colourAt(kit::picture(*ring), ring->width() / 2.0, 0), Theme::accent);
}

TEST_F(FocusRing, IsNotThereForFocusByMouse)
{
    first->setFocusPolicy(Qt::StrongFocus);
    QTest::mouseClick(first, Qt::LeftButton);
    ASSERT_TRUE(first->hasFocus());
    EXPECT_EQ(ringOf(window), nullptr);
}

TEST_F(FocusRing, FocusGivenByTheProgramBelongsToTheLastHand)
{
    QTest::mouseClick(field, Qt::LeftButton);
    first->setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(ringOf(window), nullptr);
    QTest::keyClick(first, Qt::Key_Left);
    second->setFocus(Qt::OtherFocusReason);
    EXPECT_NE(ringOf(window), nullptr);
}

TEST_F(FocusRing, LeavesFieldsAlone)
{
    first->setFocus(Qt::TabFocusReason);
    ASSERT_NE(ringOf(window), nullptr);
    field->setFocus(Qt::BacktabFocusReason);
    EXPECT_EQ(ringOf(window), nullptr);
}

TEST_F(FocusRing, FollowsItsWidget)
{
    first->setFocus(Qt::TabFocusReason);
    first->setText(u"A much longer label"_s);
    window.resize(400, 320);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(ringOf(window)->geometry(), around(first));
    first->hide();
    QCoreApplication::processEvents();
    EXPECT_TRUE(ringOf(window) == nullptr || ringOf(window)->geometry() != around(first));
}

TEST_F(FocusRing, EndsWithItsWidget)
{
    first->setFocus(Qt::TabFocusReason);
    ASSERT_NE(ringOf(window), nullptr);
    second->setFocusPolicy(Qt::NoFocus);
    field->setFocusPolicy(Qt::NoFocus);
    delete first;
    QCoreApplication::processEvents();
    EXPECT_EQ(ringOf(window), nullptr);
}

TEST_F(FocusRing, IsCutByTheScrollAreaAroundItsWidget)
{
    auto *area = new ScrollArea;
    auto *contents = new QWidget;
    auto *inside = new Button(u"Inside"_s, SecondaryButtonStyle{});
    contents->setLayout(column({inside, Space{600}}, 0, {20, 20, 20, 20}));
    area->setWidget(contents);
    area->setFixedHeight(100);
    static_cast<QBoxLayout *>(window.layout())->addWidget(area);
    QCoreApplication::processEvents();
    inside->setFocus(Qt::TabFocusReason);
    ASSERT_NE(ringOf(window), nullptr);
    EXPECT_EQ(ringOf(window)->geometry(), around(inside));

    area->verticalScrollBar()->setValue(30);
    QCoreApplication::processEvents();
    const QRect view(area->mapTo(&window, QPoint(0, 0)), area->size());
    EXPECT_EQ(ringOf(window)->geometry(), around(inside) & view);
    EXPECT_LT(ringOf(window)->height(), around(inside).height());

    area->verticalScrollBar()->setValue(300);
    QCoreApplication::processEvents();
    EXPECT_EQ(ringOf(window), nullptr);
}

TEST_F(FocusRing, WorksInDialogsToo)
{
    first->setFocus(Qt::TabFocusReason);
    QDialog dialog(&window);
    auto *answer = new Button(u"Delete"_s, DangerDefaultButtonStyle{});
    dialog.setLayout(column({answer}, 0, {20, 20, 20, 20}));
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return dialog.isActiveWindow(); }));
    answer->setFocus(Qt::TabFocusReason);
    ASSERT_NE(ringOf(dialog), nullptr);
    EXPECT_EQ(ringOf(dialog)->geometry(), around(answer));
    EXPECT_EQ(window.findChildren<QWidget *>(u"focusRing"_s, Qt::FindDirectChildrenOnly).size(), 0);
}
