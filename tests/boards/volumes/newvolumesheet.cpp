// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/newvolumesheet.h"

#include "boardtest.h"

#include "boards/volumes/sizefield.h"
#include "ui/controls/sharetile.h"
#include "ui/controls/slider.h"
#include "ui/controls/textfield.h"
#include "ui/controls/toggle.h"
#include "ui/overlays/sheet.h"
#include "ui/parts/inlineerror.h"
#include "ui/style/fade.h"
#include "ui/text/type.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;

class NewVolumeSheetTest : public BoardTest {
protected:
    void SetUp() override
    {
        setReducedMotion(true);
        BoardTest::SetUp();
        agent.answer("account", params("purchased_capacity_bytes", 760 * gigabyte));
        give({});
        agent.answer("volumes.create", params("id", 42));
        agent.answer("appliance.deploy", nullptr);
        agent.answer("mount.attach", nullptr);
        window.resize(1180, 760);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        present();
    }

    void present()
    {
        state->showNewVolume = true;
        sheet = NewVolumeSheet::present(&window, state);
        sheet->show();
        name = sheet->findChild<TextField *>();
        size = sheet->findChild<SizeField *>();
        slider = sheet->findChild<Slider *>();
        error = sheet->findChild<InlineError *>();
        ASSERT_TRUE(eventually([&] { return window.focusWidget() == name; })) << "the focus starts in the name";
    }

    [[nodiscard]] QAbstractButton *tile(const QString &title) const
    {
        for (ShareTile *each : sheet->findChildren<ShareTile *>()) {
            if (each->accessibleName().startsWith(title)) {
                return each;
            }
        }
        return nullptr;
    }

    [[nodiscard]] Toggle *toggle(const QString &beginning) const
    {
        for (Toggle *each : sheet->findChildren<Toggle *>()) {
            if (each->isVisible() && each->text().startsWith(beginning)) {
                return each;
            }
        }
        return nullptr;
    }

    [[nodiscard]] QStringList words() const
    {
        QStringList all;
        for (const QWidget *each : sheet->findChildren<QWidget *>()) {
            if (each->isVisible()) {
                all << each->property("text").toString() << each->accessibleName();
            }
        }
        return all;
    }

    QWidget window;
    Sheet *sheet = nullptr;
    TextField *name = nullptr;
    SizeField *size = nullptr;
    Slider *slider = nullptr;
    InlineError *error = nullptr;
};

TEST_F(NewVolumeSheetTest, StartsWithOneHundredSharedBySmbAndMounted)
{
    EXPECT_EQ(size->value(), 100);
    EXPECT_EQ(slider->value(), 100);
    EXPECT_EQ(slider->minimum(), 1);
    EXPECT_EQ(slider->maximum(), 760);
    EXPECT_TRUE(tile(u"SMB"_s)->isChecked());
    EXPECT_FALSE(toggle(u"Encrypt"_s)->isChecked());
    EXPECT_TRUE(toggle(u"Mount"_s)->isChecked());
    EXPECT_EQ(name->placeholderText(), u"Documents"_s);
    for (const QString &text :
         {u"New volume"_s, u"It appears in Finder as soon as it's created."_s,
          u"760 GB left on your plan. History is kept inside this space."_s, u"SMB, Finder, recommended"_s,
          u"NFS, Served to your network"_s, u"iSCSI, Served to your network"_s}) {
        EXPECT_THAT(words(), testing::Contains(text));
    }
    EXPECT_TRUE(error->isHidden());
}

TEST_F(NewVolumeSheetTest, TheSizeStandsInLineWithTheFieldsEdge)
{
    const auto rightOf = [this](const QWidget *widget) { return widget->mapTo(sheet, QPoint(widget->width(), 0)).x(); };
    EXPECT_EQ(rightOf(slider), rightOf(name));
    EXPECT_EQ(name->width(), sheet->findChild<Slider *>()->width());
    const QImage picture = sheet->grab().toImage();
    const QPoint middle = size->mapTo(sheet, QPoint(0, size->height() / 2));
    int last = 0; // of the digits' and letters' own colour
    for (int x = middle.x(); x < middle.x() + size->width(); ++x) {
        for (int y = middle.y() - 8; y < middle.y() + 8; ++y) {
            last = picture.pixelColor(x, y).lightness() < 120 ? x : last;
        }
    }
    EXPECT_NEAR(last + 1, rightOf(name), 2);
    size->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(rightOf(size), rightOf(name) + sheetOverhang) << "and its frame has room beside it";
}

TEST_F(NewVolumeSheetTest, TheKeyboardAloneCreatesAVolume)
{
    QTest::keyClicks(window.focusWidget(), u"field-recordings"_s);
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), size);
    QTest::keyClicks(window.focusWidget(), u"250"_s);
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), slider);
    EXPECT_EQ(slider->value(), 250);
    QTest::keyClick(window.focusWidget(), Qt::Key_Right);
    EXPECT_EQ(size->value(), 251);
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), tile(u"SMB"_s));
    QTest::keyClick(window.focusWidget(), Qt::Key_Right);
    EXPECT_TRUE(tile(u"NFS"_s)->isChecked());
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    while (window.focusWidget() != toggle(u"Encrypt"_s)) {
        ASSERT_NE(window.focusWidget(), name);
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    }
    QTest::keyClick(window.focusWidget(), Qt::Key_Space);
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    ASSERT_TRUE(eventually([&] { return !state->showNewVolume(); }));
    EXPECT_EQ(agent.count("volumes.create"), 1U);
    EXPECT_EQ(sent("volumes.create"), params("name", "field-recordings", "size_bytes", 251 * gigabyte,
                                             "presentation_type", "nfs", "encryption", "customer"));
    EXPECT_TRUE(eventually([&] { return agent.count("mount.attach") == 1; }));
}

TEST_F(NewVolumeSheetTest, EnterCreatesFromEveryField)
{
    int attempts = 0;
    agent.on("volumes.create", [&](const json::object &) -> FakeAgent::Answer {
        return FakeAgent::Error{.message = "no " + std::to_string(++attempts)};
    });
    name->setText(u"a"_s);
    int expected = 0;
    for (QWidget *from : {static_cast<QWidget *>(name), static_cast<QWidget *>(size), static_cast<QWidget *>(slider),
                          static_cast<QWidget *>(toggle(u"Encrypt"_s)), static_cast<QWidget *>(tile(u"SMB"_s))}) {
        from->setFocus();
        QTest::keyClick(from, Qt::Key_Return);
        const QString refusal = u"no %1"_s.arg(++expected);
        EXPECT_TRUE(eventually([&] {
            return error->text() == refusal && buttonOf(sheet, u"Create volume"_s)->isEnabled();
        })) << from->metaObject()->className();
    }
    EXPECT_EQ(agent.count("volumes.create"), 5U) << "one for each Enter";
}

TEST_F(NewVolumeSheetTest, EscapeAndCancelCloseIt)
{
    QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(state->showNewVolume());
    state->showNewVolume = true;
    press(sheet, u"Cancel"_s);
    EXPECT_FALSE(state->showNewVolume());
    state->showNewVolume = true;
    buttonOf(sheet, u"Cancel"_s)->setFocus();
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(state->showNewVolume());
    EXPECT_EQ(agent.count("volumes.create"), 0U);
}

TEST_F(NewVolumeSheetTest, AMissingNameIsMarkedUntilItIsThere)
{
    QTest::keyClicks(name, u"   "_s);
    press(sheet, u"Create volume"_s);
    ASSERT_TRUE(eventually([&] { return error->isVisible(); }));
    EXPECT_EQ(error->text(), u"Give the volume a name."_s);
    EXPECT_TRUE(name->isInvalid());
    QTest::keyClicks(name, u"a"_s);
    EXPECT_TRUE(eventually([&] { return error->isHidden(); }));
    EXPECT_FALSE(name->isInvalid());
}

TEST_F(NewVolumeSheetTest, ASizeBeyondThePlanIsNotTheNamesFault)
{
    name->setText(u"a"_s);
    size->setFocus();
    size->selectAll();
    QTest::keyClicks(size, u"761"_s);
    QTest::keyClick(size, Qt::Key_Return);
    ASSERT_TRUE(eventually([&] { return error->isVisible(); }));
    EXPECT_EQ(error->text(), u"Only 760 GB are left on your plan."_s);
    EXPECT_FALSE(name->isInvalid());
    EXPECT_EQ(size->value(), 761) << "what was typed stays";
    EXPECT_EQ(slider->value(), 760);
}

TEST_F(NewVolumeSheetTest, ARefusalLeavesEveryField)
{
    agent.fail("volumes.create", {.message = "a volume called x is there already"});
    name->setText(u" x "_s);
    slider->setValue(5);
    tile(u"iSCSI"_s)->click();
    toggle(u"Encrypt"_s)->click();
    press(sheet, u"Create volume"_s);
    ASSERT_TRUE(eventually([&] { return error->isVisible(); }));
    EXPECT_EQ(error->text(), u"a volume called x is there already"_s);
    EXPECT_TRUE(name->isInvalid());
    EXPECT_EQ(name->text(), u" x "_s);
    EXPECT_EQ(size->value(), 5);
    EXPECT_TRUE(tile(u"iSCSI"_s)->isChecked());
    EXPECT_TRUE(toggle(u"Encrypt"_s)->isChecked());
    EXPECT_TRUE(buttonOf(sheet, u"Create volume"_s)->isEnabled());
}

TEST_F(NewVolumeSheetTest, WhileItCreatesTheButtonsAreDisabledAndEscapeWaits)
{
    agent.hold("volumes.create");
    name->setText(u"x"_s);
    press(sheet, u"Create volume"_s);
    ASSERT_TRUE(eventually([&] { return !buttonOf(sheet, u"Create volume"_s)->isEnabled(); }));
    EXPECT_FALSE(buttonOf(sheet, u"Cancel"_s)->isEnabled());
    QTest::keyClick(window.focusWidget() ? window.focusWidget() : sheet, Qt::Key_Escape);
    EXPECT_TRUE(state->showNewVolume());
    agent.release("volumes.create");
    EXPECT_TRUE(eventually([&] { return !state->showNewVolume(); }));
}

TEST_F(NewVolumeSheetTest, IscsiIsNotMountedHere)
{
    tile(u"iSCSI"_s)->click();
    EXPECT_EQ(toggle(u"Mount"_s), nullptr);
    name->setText(u"x"_s);
    press(sheet, u"Create volume"_s);
    ASSERT_TRUE(eventually([&] { return !state->showNewVolume(); }));
    QTest::qWait(20);
    EXPECT_EQ(agent.count("appliance.deploy"), 0U);
    EXPECT_EQ(sent("volumes.create"), params("name", "x", "size_bytes", 100 * gigabyte, "presentation_type", "iscsi"));
}

TEST_F(NewVolumeSheetTest, TheTogglesNameWhatTheyAreAbout)
{
    name->setText(u"a %1 b"_s);
    EXPECT_EQ(toggle(u"Mount"_s)->accessibleName(), u"Mount on this Mac (~/Quillfen/a %1 b)"_s);
    EXPECT_THAT(words(), testing::Contains(u"The vault stores the volume with its own key."_s));
    toggle(u"Encrypt"_s)->click();
    EXPECT_THAT(words(),
                testing::Contains(u"The key file is created on this Mac at ~/.quill/quill-a %1 b.key when the volume "
                                  "first starts. Quillfen never sees it. If it's lost, the data can't be read."_s));
}

TEST_F(NewVolumeSheetTest, ThePlanMayComeLateAndLeavesAChosenSize)
{
    state->account = json::object();
    ASSERT_TRUE(eventually([&] { return words().contains(u"Loading your plan…"_s); }));
    state->account = params("purchased_capacity_bytes", 10 * gigabyte + gigabyte / 2);
    ASSERT_TRUE(eventually([&] { return slider->maximum() == 10; }));
    EXPECT_EQ(size->value(), 10) << "what is left, where nobody has chosen";
    slider->setValue(7);
    state->account = params("purchased_capacity_bytes", 900 * gigabyte);
    ASSERT_TRUE(eventually([&] { return slider->maximum() == 900; }));
    EXPECT_EQ(size->value(), 7);
    EXPECT_EQ(slider->value(), 7);
}

TEST_F(NewVolumeSheetTest, AFullPlanStillOffersOneGB)
{
    state->account = params("purchased_capacity_bytes", gigabyte * 2 / 5);
    ASSERT_TRUE(eventually([&] { return slider->maximum() == 2; }));
    EXPECT_THAT(words(), testing::Contains(u"Your plan is fully allocated; resize or delete a volume first."_s));
    name->setText(u"x"_s);
    slider->setValue(2);
    press(sheet, u"Create volume"_s);
    ASSERT_TRUE(eventually([&] { return error->text() == u"Only 0 GB are left on your plan."_s; }));
    slider->setValue(1);
    press(sheet, u"Create volume"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.create") == 1; }));
    EXPECT_EQ(num(sent("volumes.create"), "size_bytes"), gigabyte);
}

TEST_F(NewVolumeSheetTest, APlanBeyondAllMeasureHasASlider)
{
    state->account = params("purchased_capacity_bytes", std::numeric_limits<std::int64_t>::max());
    ASSERT_TRUE(eventually([&] { return slider->maximum() > 1'000'000; }));
    EXPECT_EQ(slider->minimum(), 1);
}

/// Runs once more with text half as large again.
TEST_F(NewVolumeSheetTest, ATileHasRoomForItsLongestWordWhateverTheTextSize)
{
    constexpr int padding = 13;
    const int word = QFontMetrics(quillfen::font(Type::Caption)).horizontalAdvance(u"recommended"_s);
    EXPECT_GE(tile(u"SMB"_s)->width() - 2 * padding, word);
}

TEST_F(NewVolumeSheetTest, NamesOfAnyKindFitIntoTheSheet)
{
    const int before = sheet->width();
    toggle(u"Encrypt"_s)->click();
    for (const QString &text : {QString(300, u'W'), u"صور\u202e"_s, u"📷 photos"_s, u"../.."_s}) {
        name->setText(text);
        QTest::qWait(20);
        EXPECT_EQ(sheet->width(), before);
        EXPECT_LE(sheet->height(), window.height() + 80);
    }
}

} // namespace
