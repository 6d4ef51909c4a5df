// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/overlays/sheet.h"

#include "kittest.h"
#include "ui/accessible.h"
#include "ui/controls/buttons.h"
#include "ui/controls/textfield.h"
#include "ui/layout.h"
#include "ui/overlays/scrim.h"
#include "ui/parts/scrollarea.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPointer>
#include <QSignalSpy>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

class SheetTest : public KitTest {
protected:
    SheetTest()
    {
        window.resize(1180, 760);
        opener = new Button(u"+ New volume"_s, PrimaryButtonStyle{}, &window);
        opener->setGeometry(1000, 60, 150, 32);
        controls = new Button(u"Close"_s, SecondaryButtonStyle{.height = 28}, &window);
        controls->setGeometry(1140, 4, 32, 28);
        controls->setFocusPolicy(Qt::NoFocus);
        controls->setProperty("aboveScrim", true);
    }

    /// A form of two fields, `height` high.
    void open(int height = 300)
    {
        show(window);
        opener->setFocus(Qt::TabFocusReason);
        auto *form = new QWidget;
        form->setAccessibleName(u"New volume"_s);
        name = new TextField(u"Name"_s);
        size = new TextField(u"Size"_s);
        form->setLayout(column({name, size, Stretch{}}, 8));
        form->setFixedHeight(height);
        sheet = new Sheet(&window, form);
        cancel = new Button(u"Cancel"_s, SecondaryButtonStyle{.height = 36});
        create = new Button(u"Create volume"_s, PrimaryButtonStyle{.height = 36});
        create->setDefault(true);
        sheet->foot()->addWidget(cancel);
        sheet->foot()->addWidget(create);
        QApplication::processEvents();
    }

    [[nodiscard]] QRect panel() const { return sheet->geometry().marginsRemoved({32, 20, 32, 44}); }

    static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    QWidget window;
    Button *opener;
    Button *controls;
    QPointer<Sheet> sheet;
    TextField *name = nullptr;
    TextField *size = nullptr;
    Button *cancel = nullptr;
    Button *create = nullptr;
};

} // namespace

TEST_F(SheetTest, Is504WideAnd52FromTheTop)
{
    open();
    EXPECT_EQ(panel().width(), 504);
    EXPECT_EQ(panel().top(), 52);
    EXPECT_NEAR(panel().center().x(), 590, 1);
    EXPECT_EQ(panel().height(), 1 + 24 + 300 + 20 + 16 + 36 + 20 + 1);
    EXPECT_EQ(role(*sheet), QAccessible::Dialog);
    EXPECT_EQ(KitTest::name(*sheet), u"New volume"_s);
}

TEST_F(SheetTest, FormScrollsInALowWindowAndTheFootStays)
{
    open(900);
    EXPECT_EQ(panel(), QRect((1180 - 504) / 2, 24, 504, 760 - 48));
    EXPECT_EQ(create->mapTo(&window, QPoint(0, 36)).y(), 760 - 24 - 1 - 20);
    window.resize(960, 600);
    QApplication::processEvents();
    EXPECT_EQ(panel().height(), 600 - 48);
    window.resize(1180, 1100);
    QApplication::processEvents();
    EXPECT_EQ(panel().top(), 52);
}

TEST_F(SheetTest, GrowsWithItsForm)
{
    open();
    const int before = panel().height();
    name->parentWidget()->setFixedHeight(360);
    QApplication::processEvents();
    QApplication::processEvents();
    EXPECT_EQ(panel().height(), before + 60);
}

TEST_F(SheetTest, FocusStartsInTheFirstFieldAndStaysInside)
{
    open();
    EXPECT_TRUE(name->hasFocus());
    const std::vector<QWidget *> round{size, cancel, create, name};
    for (QWidget *next : round) {
        press(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), next);
    }
    press(Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), create);
    create->setEnabled(false);
    cancel->setFocus();
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), name) << "disabled buttons are passed over";
}

TEST_F(SheetTest, FocusThatStraysIsBroughtBack)
{
    open();
    size->setFocus();
    opener->setFocus();
    EXPECT_TRUE(size->hasFocus());
}

TEST_F(SheetTest, IsModalToAssistiveTechnologyAndWhatIsBeneathIsOutOfItsReach)
{
    auto *const screen = new QWidget(&window);
    screen->setGeometry(0, 100, 600, 400);
    auto *const beneath = new Button(u"Delete volume…"_s, DangerButtonStyle{}, screen);
    auto *const toast = new QWidget(&window);
    setAccessible(toast, QAccessible::AlertMessage, u"deleted"_s);
    toast->setProperty("aboveScrim", true);
    const QSignalSpy pressed(beneath, &QAbstractButton::clicked);
    const auto act = [&](const QString &action) {
        tree(*beneath)->actionInterface()->doAction(action);
        QApplication::processEvents();
    };

    open();
    EXPECT_TRUE(tree(*sheet)->state().modal);
    EXPECT_FALSE(tree(*sheet)->state().invisible);
    EXPECT_TRUE(tree(*screen)->state().invisible);
    EXPECT_EQ(tree(*screen)->childCount(), 0);
    EXPECT_EQ(tree(*screen)->child(0), nullptr);
    EXPECT_TRUE(tree(*beneath)->state().invisible) << "for one who knows it from before";
    EXPECT_FALSE(tree(*toast)->state().invisible);
    EXPECT_FALSE(tree(*controls)->state().invisible);
    act(QAccessibleActionInterface::pressAction());
    act(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(pressed.isEmpty());
    EXPECT_TRUE(name->hasFocus());

    sheet->leave();
    EXPECT_FALSE(tree(*screen)->state().invisible);
    EXPECT_EQ(tree(*screen)->childCount(), 1);
    EXPECT_FALSE(tree(*beneath)->state().invisible);
    act(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(pressed.size(), 1);
}

TEST_F(SheetTest, OwnerMayChooseWhereFocusStarts)
{
    show(window);
    auto *form = new QWidget;
    auto *first = new TextField(u"Name"_s);
    auto *second = new TextField(u"Size"_s);
    form->setLayout(column({first, second}));
    sheet = new Sheet(&window, form);
    second->setFocus();
    QApplication::processEvents();
    EXPECT_TRUE(second->hasFocus());
}

TEST_F(SheetTest, EscAsksToLeaveAndLeavingGivesTheFocusBack)
{
    open();
    const QSignalSpy dismissed(sheet, &Sheet::dismissed);
    press(Qt::Key_Escape);
    EXPECT_EQ(dismissed.size(), 1);
    EXPECT_TRUE(sheet) << "it stays until its owner lets it leave";
    sheet->leave();
    EXPECT_TRUE(opener->hasFocus());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !sheet && !window.findChild<Scrim *>(); }, 2000));
}

TEST_F(SheetTest, EnterInAFieldPressesTheDefaultButton)
{
    open();
    const QSignalSpy created(create, &QAbstractButton::clicked);
    press(Qt::Key_Return);
    EXPECT_EQ(created.size(), 1);
}

TEST_F(SheetTest, ScrimCoversTheWindowButNotItsControls)
{
    open();
    auto *scrim = window.findChild<Scrim *>();
    ASSERT_NE(scrim, nullptr);
    EXPECT_EQ(scrim->geometry(), window.rect());
    const QSignalSpy opened(opener, &QAbstractButton::clicked);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, opener->geometry().center());
    EXPECT_EQ(opened.size(), 0);
    const QSignalSpy closed(controls, &QAbstractButton::clicked);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, controls->geometry().center());
    EXPECT_EQ(closed.size(), 1);
    EXPECT_TRUE(name->hasFocus());
}

TEST_F(SheetTest, CornersAreRoundOverTheScrim)
{
    open();
    const QImage picture = window.grab().toImage();
    const QPoint corner = panel().topLeft();
    EXPECT_NE(picture.pixelColor(corner), QColor(Theme::bg));
    EXPECT_EQ(picture.pixelColor(corner + QPoint(20, 3)), QColor(Theme::bg));
    EXPECT_EQ(picture.pixelColor(corner + QPoint(3, 20)), QColor(Theme::bg));
}

TEST_F(SheetTest, DeletedAtOnceItTakesItsScrimAlongAndGivesTheFocusBack)
{
    open();
    delete sheet;
    EXPECT_TRUE(opener->hasFocus());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window.findChild<Scrim *>(); }, 2000));
}

TEST_F(SheetTest, WindowMayGoWithTheSheetOpen)
{
    auto other = std::make_unique<QWidget>();
    other->resize(600, 500);
    auto *form = new QWidget;
    form->setLayout(column({new TextField(u"Name"_s)}));
    sheet = new Sheet(other.get(), form);
    show(*other);
    QApplication::processEvents();
    other.reset();
    EXPECT_FALSE(sheet);
}

TEST_F(SheetTest, FadesInAndOut)
{
    setReducedMotion(false);
    open();
    EXPECT_TRUE(QTest::qWaitFor([this] { return sheet->graphicsEffect() == nullptr; }, 2000));
    sheet->leave();
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !sheet && !window.findChild<Scrim *>(); }, 2000));
}
