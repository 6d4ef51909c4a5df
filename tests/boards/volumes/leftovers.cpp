// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/leftovers.h"

#include "boardtest.h"

#include "ui/style/fade.h"
#include "ui/text/label.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;

Record orphan(const char *container)
{
    return params("container", container, "status", "Exited (0) 3 days ago", "ports", json::array({4453, 32604}));
}

Record copyOf(std::int64_t id, const char *name)
{
    return params("recovery_id", id, "name", name, "source_name", "Documents");
}

template <typename View>
class LeftoversTest : public BoardTest {
protected:
    void SetUp() override
    {
        setReducedMotion(true);
        BoardTest::SetUp();
        view = std::make_unique<View>(std::make_shared<VolumesModel>(state), &window);
        window.resize(900, 400);
        view->resize(900, 400);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    [[nodiscard]] bool says(const QString &text) const
    {
        for (const QWidget *each : view->template findChildren<QWidget *>()) {
            if (each->isVisible() && (each->accessibleName() == text || each->property("text").toString() == text)) {
                return true;
            }
        }
        return false;
    }

    QWidget window;
    std::unique_ptr<View> view;
};

using OrphansTest = LeftoversTest<OrphanAppliances>;
using CopiesTest = LeftoversTest<ReadyCopies>;

TEST_F(OrphansTest, AreHiddenWhileThereAreNone)
{
    EXPECT_TRUE(view->isHidden());
    state->orphans = Records{orphan("quill-vol-9")};
    EXPECT_TRUE(eventually([&] { return view->isVisible(); }));
    state->orphans = Records();
    EXPECT_TRUE(eventually([&] { return view->isHidden(); }));
}

TEST_F(OrphansTest, SayWhatTheyAre)
{
    state->orphans = Records{orphan("quill-vol-9")};
    ASSERT_TRUE(eventually([&] { return says(u"quill-vol-9"_s); }));
    EXPECT_TRUE(says(u"Exited (0) 3 days ago"_s));
    EXPECT_TRUE(says(u"4453, 32604"_s));
    EXPECT_TRUE(says(u"Appliances with no volume in this account"_s));
    EXPECT_TRUE(says(u"Left behind by a delete from the dashboard, the CLI, another computer or an older app (or "
                     "another account's). They keep their ports, so a new volume given one of them cannot start. "
                     "Remove stops each patiently: its last writes reach the vault first."_s));
}

TEST_F(OrphansTest, TheButtonIsReadWithoutHiddenCharacters)
{
    state->orphans = Records{orphan("quill\u202eexe")};
    EXPECT_TRUE(eventually([&] { return says(u"Remove, "_s + madeVisible(u"quill\u202eexe"_s)); }));
    EXPECT_FALSE(says(u"Remove, quill\u202eexe"_s));
}

TEST_F(OrphansTest, RemovingAsksFirst)
{
    state->orphans = Records{orphan("one"), orphan("two")};
    ASSERT_TRUE(eventually([&] { return says(u"two"_s); }));
    {
        const Answering answer(u"Cancel"_s);
        press(view.get(), u"Remove, two"_s);
        EXPECT_THAT(answer.texts, testing::Contains(u"Remove two?"_s));
        EXPECT_THAT(answer.texts,
                    testing::Contains(u"Its volume is not in this account. The appliance is stopped patiently (its "
                                      "last writes reach the vault) and removed from this Mac; its cached state "
                                      "stays."_s));
    }
    EXPECT_EQ(agent.count("appliance.remove"), 0U);
    agent.answer("appliance.remove", nullptr);
    const Answering answer(u"Remove"_s);
    press(view.get(), u"Remove, two"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"two removed"_s; }));
    EXPECT_EQ(sent("appliance.remove"), params("container", "two"));
    EXPECT_TRUE(eventually([&] { return view->isHidden(); })) << "the agent knows of none";
}

TEST_F(OrphansTest, OneThatVanishesMeanwhileIsStillAskedFor)
{
    state->orphans = Records{orphan("one")};
    ASSERT_TRUE(eventually([&] { return says(u"one"_s); }));
    agent.fail("appliance.remove", {.message = "no such container"});
    const Answering answer(u"Remove"_s, {}, [&] {
        state->orphans = Records();
        QTest::qWait(20);
    });
    press(view.get(), u"Remove, one"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"no such container"_s; }));
}

TEST_F(CopiesTest, SayWhatTheyAreACopyOf)
{
    EXPECT_TRUE(view->isHidden());
    Record dated = copyOf(2, "docs-b");
    dated["rewind_to"] = "2026-11-18T17:42:10Z";
    state->readyCopies = Records{copyOf(1, "docs-a"), dated};
    ASSERT_TRUE(eventually([&] { return says(u"docs-b"_s); }));
    EXPECT_TRUE(says(u"Copies ready to become volumes"_s));
    EXPECT_TRUE(says(u"Documents as it was at a chosen moment · fully copied"_s));
    EXPECT_TRUE(says(u"Documents as it was Wed, Nov 18 · 17:42:10 · fully copied"_s));
}

TEST_F(CopiesTest, BecomeVolumesUnderTheNameThatIsTyped)
{
    state->readyCopies = Records{copyOf(12, "docs-a")};
    ASSERT_TRUE(eventually([&] { return says(u"docs-a"_s); }));
    agent.answer("recovery.promote", nullptr);
    const Answering answer(u"Create volume"_s, u"old docs"_s);
    press(view.get(), u"Make it a volume, docs-a"_s);
    EXPECT_EQ(answer.initial, u"docs-a"_s);
    EXPECT_THAT(answer.texts, testing::Contains(u"Make docs-a a volume?"_s));
    EXPECT_THAT(answer.texts, testing::Contains(u"It becomes an ordinary volume with its own history from now on. "
                                                "Click Mount on it afterwards to start it on this Mac."_s));
    EXPECT_TRUE(
        eventually([&] { return toast() == u"old docs is a volume now; click Mount to start it on this Mac."_s; }));
    EXPECT_EQ(sent("recovery.promote"), params("recovery_id", 12, "new_name", "old docs"));
}

TEST_F(CopiesTest, CancellingSendsNothing)
{
    state->readyCopies = Records{copyOf(12, "docs-a")};
    ASSERT_TRUE(eventually([&] { return says(u"docs-a"_s); }));
    {
        const Answering answer(u"Cancel"_s, u"x"_s);
        press(view.get(), u"Make it a volume, docs-a"_s);
    }
    {
        const Answering answer(u"Cancel"_s);
        press(view.get(), u"Discard, docs-a"_s);
        EXPECT_THAT(answer.texts, testing::Contains(u"Discard docs-a?"_s));
        EXPECT_THAT(answer.texts, testing::Contains(u"The copy is deleted. The original volume and its history are "
                                                    "untouched."_s));
    }
    QTest::qWait(20);
    EXPECT_EQ(agent.count("recovery.promote") + agent.count("recovery.delete"), 0U);
}

TEST_F(CopiesTest, AreDiscarded)
{
    state->readyCopies = Records{copyOf(12, "docs-a"), copyOf(13, "docs-b")};
    ASSERT_TRUE(eventually([&] { return says(u"docs-b"_s); }));
    agent.answer("recovery.delete", nullptr);
    const Answering answer(u"Discard"_s);
    press(view.get(), u"Discard, docs-b"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"discarded"_s; }));
    EXPECT_EQ(sent("recovery.delete"), params("recovery_id", 13));
}

TEST_F(CopiesTest, ARefreshKeepsTheFocusOfARow)
{
    state->readyCopies = Records{copyOf(12, "docs-a"), copyOf(13, "docs-b")};
    ASSERT_TRUE(eventually([&] { return says(u"docs-b"_s); }));
    QAbstractButton *const button = buttonOf(view.get(), u"Discard, docs-b"_s);
    button->setFocus();
    state->readyCopies = Records{copyOf(14, "docs-c"), copyOf(13, "docs-b2")};
    ASSERT_TRUE(eventually([&] { return says(u"docs-c"_s); }));
    EXPECT_TRUE(button->hasFocus());
    EXPECT_EQ(button->accessibleName(), u"Discard, docs-b2"_s);
}

} // namespace
