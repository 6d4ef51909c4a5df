// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/export/choicelist.h"

#include "support/await.h"
#include "ui/controls/radiorow.h"

#include <QApplication>
#include <QTest>

#include <gmock/gmock.h>

#include <memory>
#include <set>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;

class ChoiceListTest : public testing::Test {
protected:
    void show(int count)
    {
        window.resize(400, 600);
        list = new ChoiceList(u"Things"_s, 40, 7, &window);
        list->resize(400, 300);
        list->setChoices(count, [this](int index) {
            asked.insert(index);
            return Choice{u"thing %1"_s.arg(index), {}, u"%1 GB"_s.arg(index)};
        });
        QObject::connect(list, &ChoiceList::chosen, list, [this](int index) {
            chosen << index;
            list->setCurrent(index);
        });
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    [[nodiscard]] RadioRow *row(const QString &name) const
    {
        for (RadioRow *each : list->findChildren<RadioRow *>()) {
            if (each->accessibleName() == name) {
                return each;
            }
        }
        return nullptr;
    }
    [[nodiscard]] QString checked() const
    {
        QStringList names;
        for (const RadioRow *each : list->findChildren<RadioRow *>()) {
            if (each->isChecked()) {
                names << each->accessibleName();
            }
        }
        return names.join(u'|');
    }
    /// Whether the row lies whole within what the list shows.
    [[nodiscard]] bool inSight(const QString &name) const
    {
        const RadioRow *const found = row(name);
        return found != nullptr && list->rect().contains(QRect(found->mapTo(list, QPoint()), found->size()));
    }

    QWidget window;
    ChoiceList *list = nullptr;
    QList<int> chosen;
    std::set<int> asked;
};

TEST_F(ChoiceListTest, AShortListIsAsHighAsItsRows)
{
    show(3);
    EXPECT_EQ(list->height(), 3 * 41 - 1);
    EXPECT_TRUE(inSight(u"thing 0, 0 GB"_s) && inSight(u"thing 2, 2 GB"_s));
    EXPECT_EQ(checked(), QString());
}

TEST_F(ChoiceListTest, AClickAnywhereOnARowChoosesIt)
{
    show(3);
    RadioRow *const wanted = row(u"thing 1, 1 GB"_s);
    QTest::mouseClick(wanted, Qt::LeftButton, {}, QPoint(wanted->width() - 3, wanted->height() - 3));
    EXPECT_THAT(chosen, testing::ElementsAre(1));
    EXPECT_EQ(checked(), u"thing 1, 1 GB"_s);
    list->setCurrent(-1);
    EXPECT_EQ(checked(), QString());
}

TEST_F(ChoiceListTest, ALongListHasWidgetsForWhatIsSeenOnly)
{
    show(10'000);
    EXPECT_EQ(list->height(), 7 * 41 - 1);
    EXPECT_LE(list->findChildren<RadioRow *>().size(), 20);
    EXPECT_LE(asked.size(), 20U);
    list->setCurrent(9'999);
    EXPECT_TRUE(inSight(u"thing 9999, 9999 GB"_s));
    EXPECT_EQ(checked(), u"thing 9999, 9999 GB"_s);
    list->setCurrent(0);
    EXPECT_TRUE(inSight(u"thing 0, 0 GB"_s));
    EXPECT_EQ(checked(), u"thing 0, 0 GB"_s);
}

TEST_F(ChoiceListTest, TheKeyboardWalksTheWholeList)
{
    show(100);
    list->setCurrent(0);
    row(u"thing 0, 0 GB"_s)->setFocus(Qt::TabFocusReason);
    for (int step = 1; step <= 30; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        ASSERT_EQ(checked(), u"thing %1, %1 GB"_s.arg(step));
        ASSERT_TRUE(inSight(checked())) << step;
        ASSERT_EQ(QApplication::focusWidget(), row(checked()));
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    EXPECT_EQ(checked(), u"thing 29, 29 GB"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
    EXPECT_EQ(checked(), u"thing 99, 99 GB"_s);
    EXPECT_TRUE(inSight(checked()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageUp);
    EXPECT_EQ(checked(), u"thing 92, 92 GB"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
    EXPECT_EQ(checked(), u"thing 99, 99 GB"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home);
    EXPECT_EQ(checked(), u"thing 0, 0 GB"_s);
    EXPECT_EQ(chosen.last(), 0);
    EXPECT_EQ(QApplication::focusWidget(), row(checked()));
}

TEST_F(ChoiceListTest, GrowsShrinksAndFollowsItsTexts)
{
    show(3);
    list->setChoices(12, [](int index) { return Choice{u"other %1"_s.arg(index), u"caption"_s, {}}; });
    EXPECT_EQ(list->height(), 7 * 41 - 1);
    EXPECT_NE(row(u"other 0, caption"_s), nullptr);
    list->setChoices(0, [](int) { return Choice{}; });
    EXPECT_EQ(list->height(), 0);
    EXPECT_TRUE(list->findChildren<RadioRow *>().isEmpty());
    list->setChoices(2, [](int index) { return Choice{u"back %1"_s.arg(index), {}, {}}; });
    list->setCurrent(1);
    EXPECT_EQ(checked(), u"back 1"_s);
}

} // namespace
