// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "flow.h"

#include <gtest/gtest.h>

namespace quillfen::e2e {
namespace {

class ShortcutsFlow : public Flow {
protected:
    static bool isInFront(const Client &client, const std::string &window)
    {
        return waitFor([&] {
            for (const Element &one : client.windows()) {
                if (one.name() == window && one.active()) {
                    return true;
                }
            }
            return false;
        });
    }
    static bool hasKeyboard(const Client &client, const std::string &name)
    {
        return waitFor([&] { return client.focused().name() == name; });
    }
    static void leave(const Client &client)
    {
        pressKeys("Escape");
        client.seeNo("list item", "Ctrl+1, Volumes");
        EXPECT_TRUE(isInFront(client, "Quillfen"));
    }
};

TEST_F(ShortcutsFlow, AreReadRowByRowAndGiveTheKeyboardBack)
{
    const Client &client = open("everyday");
    client.tabTo("push button", "Shortcuts");
    for (const char *keys : {"F1", "Ctrl+slash", "Return"}) {
        pressKeys(keys);
        ASSERT_TRUE(hasKeyboard(client, "Ctrl+1, Volumes")) << keys << '\n' << client.dump();
        EXPECT_EQ(client.focused().role(), "list item");
        EXPECT_EQ(client.focused().parent().name(), "Go to");
        pressKeys("Down");
        EXPECT_TRUE(hasKeyboard(client, "Ctrl+2, Time travel"));
        pressKeys("End");
        EXPECT_TRUE(hasKeyboard(client, "Esc, Cancel, close a sheet"));
        leave(client);
        EXPECT_TRUE(hasKeyboard(client, "Shortcuts")) << keys;
    }
}

TEST_F(ShortcutsFlow, ComeWhileTheAgentIsAwayAndGoByTheWindowsKey)
{
    const Client &client = startClient();
    client.seeText("Waiting for the Quillfen agent");
    pressKeys("F1");
    ASSERT_TRUE(hasKeyboard(client, "Ctrl+1, Volumes"));
    pressKeys("Ctrl+w");
    client.seeNo("list item", "Ctrl+1, Volumes");
    EXPECT_TRUE(isInFront(client, "Quillfen")) << "only the one in front closes";
}

TEST_F(ShortcutsFlow, ComeOnTheFirstRunAndLeaveWhatIsTyped)
{
    const Client &client = open("first-run");
    ASSERT_TRUE(waitFor([&] { return client.find("text", "Enrolment code or link").focused(); }));
    typeText("quill-7");
    pressKeys("Ctrl+slash");
    ASSERT_TRUE(hasKeyboard(client, "Ctrl+1, Volumes"));
    leave(client);
    ASSERT_TRUE(waitFor([&] { return client.find("text", "Enrolment code or link").focused(); }));
    typeText("FQ2");
    EXPECT_TRUE(waitFor([&] { return client.find("text", "Enrolment code or link").text() == "quill-7FQ2"; }));
}

TEST_F(ShortcutsFlow, LeaveASheetOpenBeneath)
{
    const Client &client = open("everyday");
    ASSERT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
    pressKeys("Ctrl+n");
    ASSERT_TRUE(hasKeyboard(client, "Name"));
    pressKeys("F1");
    ASSERT_TRUE(hasKeyboard(client, "Ctrl+1, Volumes"));
    leave(client);
    EXPECT_TRUE(hasKeyboard(client, "Name"));
    pressKeys("Escape");
    client.seeNo("push button", "Create volume");
}

TEST_F(ShortcutsFlow, WaitForTheAnswerToAQuestion)
{
    const Client &client = open("everyday");
    ASSERT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
    pressKeys("Ctrl+5");
    client.enter("push button", "Create token");
    ASSERT_TRUE(isInFront(client, "New token"));
    pressKeys("F1");
    pressKeys("Escape"); // keys arrive in order: this one has found the question in front
    EXPECT_TRUE(isInFront(client, "Quillfen"));
    client.seeNo("list item", "Ctrl+1, Volumes");
    EXPECT_TRUE(hasKeyboard(client, "Create token"));
}

TEST_F(ShortcutsFlow, TheKeyboardStaysByTheVolumesWhenOneIsDeleted)
{
    const Client &client = open("everyday");
    ASSERT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
    client.tabTo("table", "Volumes");
    pressKeys("End");
    ASSERT_TRUE(waitFor([&] { return selectedVolume(client) == "accounts-2025"; }));
    client.enter("push button", "Delete volume…");
    ASSERT_TRUE(isInFront(client, "Delete accounts-2025?"));
    pressKeys("Return");
    ASSERT_TRUE(waitFor([&] { return volumeNames(client).size() == 4; })) << client.dump();
    client.seeNo("push button", "Delete volume…");
    pressKeys("Home");
    EXPECT_TRUE(waitFor([&] { return selectedVolume(client) == "Documents"; })) << client.focused().name();
}

} // namespace
} // namespace quillfen::e2e
