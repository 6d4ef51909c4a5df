// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "flow.h"

namespace quillfen::e2e {
namespace {

using namespace std::chrono_literals;

constexpr auto waiting = "Waiting for the Quillfen agent";

class AgentDownFlow : public Flow {};

TEST_F(AgentDownFlow, ALostAgentShowsAtOnceAndItsReturnBringsTheBoardBack)
{
    const Client &client = open("everyday");
    ASSERT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));

    const auto killed = Clock::now();
    killAgent();
    client.seeText(waiting);
    client.seeText("the agent connection closed");
    const std::chrono::duration<double> noticed = Clock::now() - killed;

    startAgent("everyday");
    const auto back = Clock::now();
    ASSERT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
    const std::chrono::duration<double> filled = Clock::now() - back;
    EXPECT_FALSE(client.shows(waiting));
    RecordProperty("seconds_until_noticed", std::to_string(noticed.count()));
    RecordProperty("seconds_until_filled", std::to_string(filled.count()));
    // The client tries every two seconds. The rest of these bounds is for reading the window on a machine under load.
    EXPECT_LT(noticed, 2s * slowness);
    EXPECT_LT(filled, 4s * slowness);
}

TEST_F(AgentDownFlow, AMissingAgentIsNamedWithItsSocket)
{
    const Client &client = startClient();
    client.seeText("the Quillfen agent is not running (" + Desktop::instance().agentSocket().string() + ")");
    client.seeText("It starts with your login and restarts after an upgrade; the app reconnects every two seconds.");
    client.seeText("launchctl kickstart -k gui/$(id -u)/io.quillfen.agent");
}

TEST_F(AgentDownFlow, AnEmptySocketPathIsNamedAsItStands)
{
    const Client &client = startClient({{"QUILL_AGENT_SOCKET", ""}});
    client.seeText("the Quillfen agent is not running ()");
}

TEST_F(AgentDownFlow, ACopiedCommandIsAnnounced)
{
    const Client &client = startClient();
    client.press("push button", "Copy the command");
    client.seeText("Copied.");
    EXPECT_TRUE(waitFor([] { return Desktop::instance().announced("Copied."); }));
}

TEST_F(AgentDownFlow, AnAgentThatComesLaterIsFound)
{
    const Client &client = startClient();
    client.seeText(waiting);
    startAgent("everyday");
    EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
}

} // namespace
} // namespace quillfen::e2e
