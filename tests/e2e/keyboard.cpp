// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "flow.h"

#include <gmock/gmock.h>

namespace quillfen::e2e {
namespace {

using testing::ElementsAre;

class KeyboardFlow : public Flow {
protected:
    Client &openFilled(const std::string &world = "everyday")
    {
        Client &client = open(world);
        EXPECT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
        return client;
    }

    /// Goes on with Tab until the element has the focus; a round is over after as many stops as a window can have.
    static bool tabTo(const Client &client, const std::string &role, const std::string &name)
    {
        for (int stop = 0; stop < 30; ++stop) {
            const Element element = client.find(role, name);
            if (element.focused()) {
                return true;
            }
            const std::string before = client.focused().name();
            pressKeys("Tab");
            if (!waitFor([&] { return client.focused().name() != before; })) {
                return false;
            }
        }
        return false;
    }
};

TEST_F(KeyboardFlow, NumbersChooseTheSections)
{
    const Client &client = openFilled();
    const std::vector<std::pair<std::string, std::string>> keys{
        {"Ctrl+2", "Time travel"},      {"Ctrl+3", "History policy"}, {"Ctrl+4", "Get a copy of my data"},
        {"Ctrl+5", "Account & engine"}, {"Ctrl+7", "Advanced"},       {"Ctrl+1", "Volumes"}};
    for (const auto &[key, section] : keys) {
        pressKeys(key);
        EXPECT_TRUE(waitFor([&, &wanted = section] { return chosenSection(client) == wanted; })) << key;
        client.seeText(section);
    }
}

TEST_F(KeyboardFlow, TheOperatorsNumberDoesNothingWhileTheEntryIsHidden)
{
    const Client &client = openFilled();
    pressKeys("Ctrl+5");
    ASSERT_TRUE(waitFor([&] { return chosenSection(client) == "Account & engine"; }));
    pressKeys("Ctrl+6");
    pressKeys("Ctrl+7"); // keys arrive in order: once this one has acted, the one before has not
    bool seenOperator = false;
    EXPECT_TRUE(waitFor([&] {
        seenOperator = seenOperator || chosenSection(client) == "Operator";
        return chosenSection(client) == "Advanced";
    }));
    EXPECT_FALSE(seenOperator);
}

TEST_F(KeyboardFlow, TheOperatorsNumberOpensTheSectionForAnOperator)
{
    const Client &client = openFilled("operator");
    pressKeys("Ctrl+6");
    EXPECT_TRUE(waitFor([&] { return chosenSection(client) == "Operator"; }));
}

TEST_F(KeyboardFlow, ArrowsWalkTheSidebar)
{
    const Client &client = openFilled();
    ASSERT_TRUE(tabTo(client, "page tab", "Volumes"));
    pressKeys("Down");
    EXPECT_TRUE(waitFor([&] { return chosenSection(client) == "Time travel"; }));
    EXPECT_TRUE(waitFor([&] { return client.focused().name() == "Time travel"; }));
    pressKeys("End");
    EXPECT_TRUE(waitFor([&] { return chosenSection(client) == "Advanced"; }));
    pressKeys("Up");
    EXPECT_TRUE(waitFor([&] { return chosenSection(client) == "Account & engine"; })) << "no stop at a hidden entry";
    pressKeys("Home");
    EXPECT_TRUE(waitFor([&] { return chosenSection(client) == "Volumes"; }));
}

TEST_F(KeyboardFlow, ArrowsWalkTheTable)
{
    const Client &client = openFilled();
    pressKeys("Ctrl+f");
    ASSERT_TRUE(waitFor([&] { return client.focused().name() == "Search volumes"; }));
    ASSERT_TRUE(tabTo(client, "table", "Volumes") || client.focused().role() == "table cell") << client.dump();
    std::vector<std::string> walked;
    for (const char *key : {"Down", "Down", "End", "Up", "Home"}) {
        const std::string before = selectedVolume(client);
        pressKeys(key);
        ASSERT_TRUE(waitFor([&] { return selectedVolume(client) != before; })) << key;
        walked.push_back(selectedVolume(client));
    }
    EXPECT_THAT(walked, ElementsAre("Documents", "photos-archive", "accounts-2025", "vm-store", "Documents"));
}

TEST_F(KeyboardFlow, EveryStopOfTheTabKeyHasAName)
{
    const Client &client = openFilled();
    const auto here = [&] {
        const Element focused = client.focused();
        return focused.role() + ' ' + focused.name();
    };
    std::vector<std::string> stops;
    for (int stop = 0; stop < 12; ++stop) {
        const std::string before = here();
        pressKeys("Tab");
        ASSERT_TRUE(waitFor([&] { return client.focused() && here() != before; })) << before;
        EXPECT_NE(client.focused().name(), "") << here() << " after " << testing::PrintToString(stops);
        stops.push_back(here());
    }
}

TEST_F(KeyboardFlow, TheKeyboardDoesNotStartOnTheWindowsOwnButtons)
{
    const Client &client = openFilled();
    const std::string first = client.focused().name();
    EXPECT_TRUE(first != "Minimise" && first != "Maximise" && first != "Close") << first;
}

TEST_F(KeyboardFlow, CtrlQEndsTheProgram)
{
    Client &client = openFilled();
    pressKeys("Ctrl+q");
    EXPECT_EQ(client.process().finish(), 0) << client.process().output();
}

} // namespace
} // namespace quillfen::e2e
