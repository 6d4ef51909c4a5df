// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"
#include "flow.h"

#include <map>
#include <set>

namespace quillfen::e2e {
namespace {

// What a person can act on, and what only speaks through its name. Without one a screen reader has nothing to say.
bool needsAName(const Element &element)
{
    static const std::set<std::string> roles{"push button", "check box", "radio button", "combo box",  "text",
                                             "slider",      "page tab",  "table",        "label",      "alert",
                                             "image",       "dialog",    "progress bar", "spin button"};
    return roles.contains(element.role()) || element.focusable();
}

std::string described(const Element &element)
{
    const Rect place = element.place();
    return element.role() + " at " + std::to_string(place.x) + "," + std::to_string(place.y) + " in " +
           element.parent().role() + " \"" + element.parent().name() + "\"\n";
}

/// What is wrong with the names and roles of everything that shows; empty when nothing is.
std::string problems(const Client &client)
{
    std::string result;
    std::map<std::string, int> fields;
    for (const auto &element : client.all([](const Element &) { return true; })) {
        const auto role = element.role();
        if (role.empty() || role == "unknown" || role == "invalid") {
            result += "no role: " + described(element);
        }
        if (needsAName(element) && element.name().empty()) {
            result += "no name: " + described(element);
        }
        if (role == "text" && ++fields[element.name()] == 2) {
            result += "two fields of one name: " + described(element);
        }
    }
    return result;
}

class NamesFlow : public Flow {};

TEST_F(NamesFlow, TheWindowIsAWindowWithTheProductsName)
{
    const Client &client = startClient();
    const Element window = client.windows().front();
    EXPECT_EQ(window.name(), "Quillfen");
    EXPECT_TRUE(window.role() == "frame" || window.role() == "window") << window.role();
}

TEST_F(NamesFlow, EverythingOnEverySectionHasANameAndARole)
{
    const Client &client = open("operator");
    ASSERT_TRUE(waitFor([&] { return volumeNames(client) == everydayVolumes(); }));
    for (const auto &section : sections(client)) {
        client.press("page tab", section);
        ASSERT_TRUE(waitFor([&] { return chosenSection(client) == section; }));
        client.seeText(section);
        // Elements that come and go while the tree is read have no name any more: what stays is wrong.
        std::string found;
        EXPECT_TRUE(waitFor([&] { return (found = problems(client)).empty(); }, std::chrono::seconds(5 * slowness)))
            << section << ":\n"
            << found;
    }
}

TEST_F(NamesFlow, EverythingOnTheFirstRunHasANameAndARole)
{
    const Client &client = open("first-run");
    client.seeText("Welcome to Quillfen");
    EXPECT_EQ(problems(client), "");
}

TEST_F(NamesFlow, EverythingOnTheAgentDownScreenHasANameAndARole)
{
    const Client &client = startClient();
    client.seeText("Waiting for the Quillfen agent");
    EXPECT_EQ(problems(client), "");
}

TEST_F(NamesFlow, EverythingOnTheEmptyBoardHasANameAndARole)
{
    const Client &client = open("empty");
    client.seeText("No volumes yet");
    EXPECT_EQ(problems(client), "");
}

} // namespace
} // namespace quillfen::e2e
