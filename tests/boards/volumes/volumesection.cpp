// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/volumesection.h"

#include "boardtest.h"

#include "boards/volumes/iscsicard.h"
#include "boards/volumes/keynote.h"
#include "desktop/fileviewer.h"
#include "ui/parts/pill.h"
#include "ui/style/fade.h"
#include "ui/text/label.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

class VolumeSectionTest : public BoardTest {
protected:
    void SetUp() override
    {
        setReducedMotion(true);
        BoardTest::SetUp();
        give({volume(1, u"photos"_s, 2 * gigabyte), with(volume(2, u"music"_s), "encryption", "customer"),
              with(volume(3, u"vm"_s), "presentation_type", "iscsi")});
        agent.answer("volumes.iscsi", json::object());
        agent.answer("volumes.iscsi.local", json::object());
        QApplication::clipboard()->clear();
    }

    void show(std::optional<std::int64_t> id, int width = 900)
    {
        state->selectedVolume = id;
        section = std::make_unique<VolumeSection>(state, &window);
        section->resize(width, 600);
        window.resize(width, 600);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    [[nodiscard]] bool says(const QString &text) const
    {
        const auto named = [&](const QWidget *each) { return each->isVisible() && each->accessibleName() == text; };
        const auto shows = [&](const auto *each) { return each->isVisible() && each->text() == text; };
        const auto all = section->findChildren<QWidget *>();
        const auto labels = section->findChildren<AgentLabel *>();
        const auto plain = section->findChildren<QLabel *>();
        return std::any_of(all.begin(), all.end(), named) || std::any_of(labels.begin(), labels.end(), shows) ||
               std::any_of(plain.begin(), plain.end(), shows);
    }

    [[nodiscard]] QStringList buttons() const
    {
        QStringList texts;
        for (const QAbstractButton *each : section->findChildren<QAbstractButton *>()) {
            if (each->isVisible() && !section->findChild<IscsiCard *>()->isAncestorOf(each)) {
                texts << each->text();
            }
        }
        return texts;
    }

    [[nodiscard]] bool eventuallyOffers(const QString &text) const
    {
        return eventually([&] { return buttonOf(section.get(), text) != nullptr; });
    }

    QWidget window;
    std::unique_ptr<VolumeSection> section;
};

TEST_F(VolumeSectionTest, IsHiddenWithoutASelectionAndForAVolumeThatIsGone)
{
    show(std::nullopt);
    EXPECT_TRUE(section->isHidden());
    state->selectedVolume = 1;
    EXPECT_TRUE(eventually([&] { return section->isVisible(); }));
    state->selectedVolume = 99;
    EXPECT_TRUE(eventually([&] { return section->isHidden(); }));
}

TEST_F(VolumeSectionTest, FollowsTheSelection)
{
    agent.on("restore_points.list", [](const json::object &asked) -> FakeAgent::Answer {
        json::array list(asked.at("volume_id").as_int64() == 1 ? 7 : 9, params("timestamp", "2024-08-24T10:00:00Z"));
        return params("recovery_points", list);
    });
    show(1);
    EXPECT_TRUE(eventually([&] { return says(u"7"_s) && says(u"Aug 24, 2024"_s); }));
    EXPECT_TRUE(says(u"photos"_s));
    state->selectedVolume = 2;
    EXPECT_TRUE(eventually([&] { return says(u"9"_s) && says(u"music"_s); }));
    EXPECT_EQ(agent.count("restore_points.list"), 2U);
}

TEST_F(VolumeSectionTest, ARefreshDoesNotReadThePointsAgain)
{
    show(1);
    ASSERT_TRUE(eventually([&] { return agent.count("restore_points.list") == 1; }));
    await(state->refresh());
    QTest::qWait(20);
    EXPECT_EQ(agent.count("restore_points.list"), 1U);
}

TEST_F(VolumeSectionTest, OffersStartWithoutAnAppliance)
{
    show(1);
    EXPECT_THAT(buttons(), ElementsAre(u"Start"_s, u"Resize"_s, u"Time travel"_s, u"Copy"_s, u"Delete volume…"_s));
    agent.answer("appliance.deploy", nullptr);
    press(section.get(), u"Start"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"appliance for photos started"_s; }));
}

TEST_F(VolumeSectionTest, MountingSaysSoAndHoldsTheButton)
{
    runHere(u"quill-vol-1"_s);
    agent.answer("appliance.deploy", nullptr);
    agent.answer("mount.attach", nullptr);
    agent.hold("mount.attach");
    show(1);
    press(section.get(), u"Mount"_s);
    ASSERT_TRUE(eventuallyOffers(u"Mounting"_s));
    EXPECT_FALSE(buttonOf(section.get(), u"Mounting"_s)->isEnabled());
    // Another volume's card knows nothing of it, and the way back does.
    state->selectedVolume = 2;
    ASSERT_TRUE(eventually([&] { return buttonOf(section.get(), u"Mounting"_s) == nullptr; }));
    state->selectedVolume = 1;
    ASSERT_TRUE(eventuallyOffers(u"Mounting"_s));
    agent.answer("mount.state", json::array({params("name", "photos", "mountpoint", "/mnt/photos")}));
    agent.release("mount.attach");
    ASSERT_TRUE(eventuallyOffers(u"Show in Finder"_s));
    EXPECT_TRUE(eventually([&] { return buttonOf(section.get(), u"Mounting"_s) == nullptr; }));
    EXPECT_EQ(buttonOf(section.get(), u"Mount"_s), nullptr);
}

TEST_F(VolumeSectionTest, AMountedVolumeIsShownUnmountedAndItsPathCopied)
{
    runHere(u"quill-vol-1"_s);
    mounted(u"photos"_s, u"/mnt/photos"_s);
    show(1);
    EXPECT_THAT(buttons(), ElementsAre(u"Show in Finder"_s, u"Unmount"_s, u"Resize"_s, u"Time travel"_s, u"Copy"_s,
                                       u"Delete volume…"_s));
    QStringList shown;
    const FileViewerOverride viewer({[&](const QString &path) { shown << path; }, {}, {}});
    press(section.get(), u"Show in Finder"_s);
    EXPECT_THAT(shown, ElementsAre(u"/mnt/photos"_s));
    press(section.get(), u"Copy"_s);
    EXPECT_EQ(QApplication::clipboard()->text(), u"/mnt/photos"_s);
    agent.answer("mount.detach", nullptr);
    press(section.get(), u"Unmount"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"unmounted photos"_s; }));
}

TEST_F(VolumeSectionTest, TheKeyCanBeRevealedAndCopiedWhereItIs)
{
    show(2);
    EXPECT_TRUE(says(u"Encrypted with a key only you hold · key is NOT on this Mac"_s));
    EXPECT_EQ(buttonOf(section.get(), u"Reveal"_s), nullptr);
    EXPECT_EQ(buttonOf(section.get(), u"Copy key"_s), nullptr);
    const QString path = home.path() + u"/.quill/quill-music.key"_s;
    writeFile(path, "k-1");
    await(state->refresh());
    ASSERT_TRUE(eventuallyOffers(u"Reveal"_s));
    EXPECT_TRUE(says(u"~/.quill/quill-music.key · back it up somewhere that is not this Mac; without it nobody can "
                     "read this volume, Quillfen included."_s));
    QStringList revealed;
    const FileViewerOverride viewer({{}, [&](const QString &file) { revealed << file; }, {}});
    press(section.get(), u"Reveal"_s);
    EXPECT_THAT(revealed, ElementsAre(path));
    press(section.get(), u"Copy key"_s);
    EXPECT_EQ(QApplication::clipboard()->text(), u"k-1"_s);
    EXPECT_EQ(toast(), u"Key copied."_s);
}

TEST_F(VolumeSectionTest, AnIscsiVolumeHasItsCardInPlaceOfTheMountActions)
{
    runHere(u"quill-vol-3"_s);
    show(3);
    EXPECT_THAT(buttons(), ElementsAre(u"Resize"_s, u"Time travel"_s, u"Delete volume…"_s));
    EXPECT_TRUE(says(u"On a Mac, Quillfen mounts SMB and NFS volumes; this volume is served to other machines on your "
                     "network."_s));
    EXPECT_TRUE(section->findChild<IscsiCard *>()->isVisible());
    EXPECT_TRUE(eventually([&] { return agent.count("volumes.iscsi") == 1; }));
    state->selectedVolume = 1;
    ASSERT_TRUE(eventually([&] { return !section->findChild<IscsiCard *>()->isVisible(); }));
    state->selectedVolume = 3;
    EXPECT_TRUE(eventually([&] { return agent.count("volumes.iscsi") == 2; })) << "it is read when it appears";
}

TEST_F(VolumeSectionTest, ResizingAsksForTheSize)
{
    show(1);
    agent.answer("volumes.resize", json::object());
    const Answering answer(u"Resize"_s, u"3"_s);
    press(section.get(), u"Resize"_s);
    EXPECT_EQ(answer.initial, u"2"_s);
    EXPECT_THAT(answer.texts, testing::Contains(u"Resize photos"_s));
    EXPECT_THAT(answer.texts, testing::Contains(u"Now 2 GB. Whole GB only; the filesystem follows."_s));
    EXPECT_TRUE(toast().startsWith(u"Growing photos to 3 GB…"_s));
    EXPECT_TRUE(eventually([&] { return toast() == u"photos is now 3 GB."_s; }));
    EXPECT_EQ(sent("volumes.resize"), params("volume_id", 1, "size_bytes", std::int64_t{3221225472}));
}

TEST_F(VolumeSectionTest, ASizeThatIsNoneSendsNothing)
{
    show(1);
    for (const QString &typed : {u"0"_s, u"-5"_s, u"ten"_s, u"2"_s}) {
        const Answering answer(u"Resize"_s, typed);
        press(section.get(), u"Resize"_s);
    }
    {
        const Answering answer(u"Cancel"_s, u"7"_s);
        press(section.get(), u"Resize"_s);
    }
    QTest::qWait(20);
    EXPECT_EQ(agent.count("volumes.resize"), 0U);
    EXPECT_EQ(toast(), QString());
}

TEST_F(VolumeSectionTest, DeletingAsksFirst)
{
    show(1);
    {
        const Answering answer(u"Cancel"_s);
        press(section.get(), u"Delete volume…"_s);
        EXPECT_THAT(answer.texts, testing::Contains(u"Delete photos?"_s));
        EXPECT_THAT(answer.texts,
                    testing::Contains(u"The volume is unmounted and its appliance removed from this Mac. Its data and "
                                      "history stay recoverable for 30 days, then are destroyed."_s));
    }
    EXPECT_EQ(agent.count("volumes.remove"), 0U);
    agent.answer("volumes.remove", nullptr);
    agent.answer("volumes.list", json::array());
    const Answering answer(u"Delete"_s);
    press(section.get(), u"Delete volume…"_s);
    EXPECT_TRUE(eventually([&] { return section->isHidden(); }));
    EXPECT_EQ(toast(), u"deleted photos; its appliance is removed from this Mac"_s);
}

TEST_F(VolumeSectionTest, TheVolumeMayVanishWhileTheQuestionIsOpen)
{
    show(1);
    agent.fail("volumes.remove", {.message = "no such volume"});
    const Answering answer(u"Delete"_s, {}, [&] { state->volumes = Records(); });
    press(section.get(), u"Delete volume…"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"no such volume"_s; }));
    EXPECT_EQ(sent("volumes.remove"), params("volume_id", 1));
    EXPECT_TRUE(section->isHidden());
}

TEST_F(VolumeSectionTest, AnotherSelectionMeanwhileDoesNotChangeWhatWasAsked)
{
    show(1);
    agent.answer("volumes.remove", nullptr);
    const Answering answer(u"Delete"_s, {}, [&] {
        state->selectedVolume = 2;
        QTest::qWait(20);
    });
    press(section.get(), u"Delete volume…"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.remove") == 1; }));
    EXPECT_EQ(sent("volumes.remove"), params("volume_id", 1));
}

TEST_F(VolumeSectionTest, TheCardMayGoWhileTheQuestionIsOpen)
{
    show(1);
    const Answering answer(u"Cancel"_s, {}, [&] { section.release()->deleteLater(); });
    press(section.get(), u"Resize"_s);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(agent.count("volumes.resize"), 0U);
}

TEST_F(VolumeSectionTest, TheAgentMayGoBetweenQuestionAndCall)
{
    show(1);
    const Answering answer(u"Delete"_s, {}, [&] {
        agent.stop();
        ASSERT_TRUE(eventually([&] { return !state->connected(); }));
    });
    press(section.get(), u"Delete volume…"_s);
    EXPECT_TRUE(eventually([&] { return !toast().isEmpty() && !toast().startsWith(u"Deleting"_s); }));
    EXPECT_TRUE(says(u"photos"_s)) << "nothing half-applied";
}

TEST_F(VolumeSectionTest, TimeTravelNavigates)
{
    show(2);
    json::object heard;
    const auto listening =
        state->notifications().listen(Notifications::navigate, [&](const json::object &where) { heard = where; });
    press(section.get(), u"Time travel"_s);
    EXPECT_EQ(heard, params("section", "timetravel", "volume", 2));
}

TEST_F(VolumeSectionTest, ThePillsSayHowWellItIsProtected)
{
    giveStatus(syncedStatus());
    show(1);
    EXPECT_TRUE(says(u"Protected"_s));
    EXPECT_TRUE(says(u"appliance running on another computer"_s));
    giveStatus(uploadingStatus(97));
    EXPECT_TRUE(eventually([&] { return says(u"97% · uploading"_s); }));
}

TEST_F(VolumeSectionTest, EveryActionIsReachedByTab)
{
    runHere(u"quill-vol-2"_s);
    mounted(u"music"_s, u"/mnt/music"_s);
    writeFile(home.path() + u"/.quill/quill-music.key"_s, "k");
    show(2);
    QStringList reached{u"Show in Finder"_s};
    buttonOf(section.get(), reached.first())->setFocus(Qt::TabFocusReason);
    for (int presses = 0; presses < 7; ++presses) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        reached << qobject_cast<QAbstractButton *>(window.focusWidget())->text();
    }
    EXPECT_THAT(reached, ElementsAre(u"Show in Finder"_s, u"Unmount"_s, u"Resize"_s, u"Time travel"_s, u"Copy"_s,
                                     u"Reveal"_s, u"Copy key"_s, u"Delete volume…"_s));
    QTest::keyClick(buttonOf(section.get(), u"Copy"_s), Qt::Key_Return);
    EXPECT_EQ(QApplication::clipboard()->text(), u"/mnt/music"_s);
}

TEST_F(VolumeSectionTest, NothingWidensTheWindow)
{
    const QString name = QString(4'000, u'W') + u"\u202e\n<b>"_s;
    give({with(volume(1, name), "encryption", "customer")});
    show(1, 696);
    QTest::qWait(20);
    EXPECT_LE(section->minimumSizeHint().width(), 696);
    EXPECT_TRUE(section->findChild<KeyNote *>()->height() < 200);
}

} // namespace
