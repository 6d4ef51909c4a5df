// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "flow.h"
#include "notificationserver.h"

#include <gmock/gmock.h>

namespace quillfen::e2e {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class NotificationsFlow : public Flow {
protected:
    static void unmount(const Client &client, const std::string &volume)
    {
        client.click("table cell", volume);
        const auto isItsFolder = [&](const Element &element) {
            return element.name().find("/Quillfen/" + volume) != std::string::npos;
        };
        ASSERT_TRUE(waitFor([&] { return bool(client.find(isItsFolder)); })) << client.dump();
        client.press("push button", "Unmount");
    }
};

// What takes long takes ten seconds, and nobody can tell a client otherwise: one case waits that long, and no other.
TEST_F(NotificationsFlow, TheDesktopTellsHowLongOperationsEndedWhileTheWindowWasClosed)
{
    NotificationServer desktop;
    Client &client = open("everyday", {}, {"--delay", "mount.detach=10.5"});
    unmount(client, "Documents");
    unmount(client, "photos-archive");
    client.press("push button", "Close");
    ASSERT_TRUE(waitFor([&] { return client.windows().empty(); }));
    EXPECT_EQ(desktop.calls(), 0) << "nothing is asked of the desktop before there is something to tell";

    ASSERT_TRUE(waitFor([&] { return desktop.standing().size() == 2; }));
    const Notification &told = desktop.standing().front();
    EXPECT_EQ(told.program, "Quillfen");
    EXPECT_EQ(told.icon, "io.quillfen.Quillfen");
    EXPECT_EQ(told.summary, "Quillfen");
    EXPECT_EQ(told.body, "unmounted Documents");
    EXPECT_THAT(told.actions, ElementsAre("default", "Open Quillfen"));
    EXPECT_EQ(told.hints, "{'category': <'transfer.complete'>, 'desktop-entry': <'io.quillfen.Quillfen'>, "
                          "'urgency': <byte 0x01>}");
    EXPECT_EQ(desktop.standing().back().body, "unmounted photos-archive");
    EXPECT_TRUE(client.windows().empty());

    desktop.click(desktop.standing().back().id, "token");
    EXPECT_TRUE(client.see("page tab", "Volumes"));
    EXPECT_TRUE(waitFor([&] { return desktop.standing().empty(); })) << "the window tells the rest";
}

} // namespace
} // namespace quillfen::e2e
