// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "flow.h"

#include <gmock/gmock.h>

namespace quillfen::e2e {
namespace {

using testing::ElementsAre;

class ScreensFlow : public Flow {};

TEST_F(ScreensFlow, WhoIsNotSignedInMeetsTheFirstRun)
{
    const Client &client = open("first-run");
    client.seeText("Welcome to Quillfen");
    EXPECT_THAT(sections(client), ElementsAre()) << "no sidebar before the sign-in";
}

TEST_F(ScreensFlow, TheSidebarHasNoOperatorForEverybodyElse)
{
    const Client &client = open("everyday");
    ASSERT_TRUE(waitFor([&] { return !sections(client).empty(); }));
    EXPECT_THAT(sections(client), ElementsAre("Volumes", "Time travel", "History policy", "Get a copy of my data",
                                              "Account & engine", "Advanced"));
}

TEST_F(ScreensFlow, AnOperatorFindsTheOperatorsEntry)
{
    const Client &client = open("operator");
    EXPECT_TRUE(waitFor([&] {
        return sections(client) ==
               std::vector<std::string>{"Volumes",          "Time travel", "History policy", "Get a copy of my data",
                                        "Account & engine", "Operator",    "Advanced"};
    })) << testing::PrintToString(sections(client));
    client.press("page tab", "Operator");
    EXPECT_TRUE(waitFor([&] { return chosenSection(client) == "Operator"; }));
}

TEST_F(ScreensFlow, TheEnvironmentChoosesTheFirstSection)
{
    const Client &client = open("everyday", {{"QUILLFEN_START_SECTION", "account"}});
    EXPECT_TRUE(waitFor([&] { return chosenSection(client) == "Account & engine"; }));
}

TEST_F(ScreensFlow, AWordThatBeginsNoTitleStartsOnVolumes)
{
    const Client &client = open("everyday", {{"QUILLFEN_START_SECTION", "timetravel"}});
    EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
    EXPECT_EQ(chosenSection(client), "Volumes");
}

TEST_F(ScreensFlow, AStoppedEngineIsNamedInTheFooter)
{
    const Client &client = open("engine-stopped");
    client.seeText("Engine Stopped");
}

TEST_F(ScreensFlow, AnEntryOpensItsSection)
{
    const Client &client = open("everyday");
    client.press("page tab", "Time travel");
    EXPECT_TRUE(waitFor([&] { return chosenSection(client) == "Time travel"; }));
    EXPECT_FALSE(client.find("table", "Volumes"));
    client.press("page tab", "Volumes");
    EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
}

} // namespace
} // namespace quillfen::e2e
