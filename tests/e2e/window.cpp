// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "flow.h"

namespace quillfen::e2e {
namespace {

class WindowFlow : public Flow {
protected:
    static Rect place(const Client &client)
    {
        const auto windows = client.windows();
        return windows.empty() ? Rect() : windows.front().place();
    }

    static bool hasSize(const Client &client, int width, int height)
    {
        const Rect now = place(client);
        return now.width == width && now.height == height;
    }
};

TEST_F(WindowFlow, OpensAtItsOwnSize)
{
    const Client &client = startClient();
    EXPECT_TRUE(waitFor([&] { return hasSize(client, 1180, 760); })) << place(client).width;
}

TEST_F(WindowFlow, MaximiseFillsTheScreenAndRestoreGivesTheSizeBack)
{
    const Client &client = startClient();
    client.press("push button", "Maximise");
    EXPECT_TRUE(waitFor([&] { return hasSize(client, 1600, 1000); }));
    client.press("push button", "Restore");
    EXPECT_TRUE(waitFor([&] { return hasSize(client, 1180, 760); }));
    EXPECT_TRUE(client.see("push button", "Maximise"));
}

TEST_F(WindowFlow, MinimiseTakesTheWindowAway)
{
    const Client &client = startClient();
    client.press("push button", "Minimise");
    EXPECT_TRUE(waitFor([&] { return client.windows().empty() || !client.windows().front().active(); }));
}

TEST_F(WindowFlow, CloseEndsTheProgramWhereItWasAskedTo)
{
    Client &client = startClient({}, {"--quit-on-close"});
    client.press("push button", "Close");
    EXPECT_EQ(client.process().finish(), 0) << client.process().output();
}

TEST_F(WindowFlow, TheTopStripMovesTheWindow)
{
    const Client &client = startClient();
    client.seeText("Waiting for the Quillfen agent");
    const Rect before = windowOnScreen();
    {
        Drag drag(before.x + 600, before.y + 16);
        EXPECT_TRUE(waitFor([&] {
            drag.moveBy(3, 2);
            return windowOnScreen().x > before.x && windowOnScreen().y > before.y;
        }));
    }
    EXPECT_TRUE(waitFor([&] { return place(client).x > before.x && place(client).y > before.y; }));
    EXPECT_TRUE(hasSize(client, before.width, before.height));
}

TEST_F(WindowFlow, AnEdgeResizesTheWindow)
{
    const Client &client = startClient();
    client.seeText("Waiting for the Quillfen agent");
    const Rect before = windowOnScreen();
    {
        Drag drag(before.x + before.width - 3, before.y + before.height / 2);
        EXPECT_TRUE(waitFor([&] {
            drag.moveBy(-3, 0);
            return windowOnScreen().width < before.width;
        }));
    }
    EXPECT_TRUE(waitFor([&] { return place(client).width < before.width; }));
    EXPECT_EQ(place(client).height, before.height);
    EXPECT_EQ(place(client).x, before.x);
}

TEST_F(WindowFlow, TheWindowDoesNotGetSmallerThanItsLayout)
{
    const Client &client = startClient();
    client.seeText("Waiting for the Quillfen agent");
    const Rect before = windowOnScreen();
    {
        Drag drag(before.x + before.width - 3, before.y + before.height - 3);
        EXPECT_TRUE(waitFor([&] {
            drag.moveBy(-6, -6);
            return windowOnScreen().width < before.width - 100;
        }));
        drag.moveBy(-600, -600);
    }
    EXPECT_TRUE(waitFor([&] { return hasSize(client, 960, 600); }))
        << place(client).width << 'x' << place(client).height;
}

} // namespace
} // namespace quillfen::e2e
