// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "flow.h"
#include "otherwindow.h"
#include "program.h"

#include <gmock/gmock.h>

namespace quillfen::e2e {
namespace {

using program::activate;
using program::startAgain;
using testing::HasSubstr;
using testing::Not;

constexpr auto noData = "@a{sv} {}";

class OneProcessFlow : public Flow {
protected:
    static void closeWindow(const Client &client)
    {
        client.press("push button", "Close");
        EXPECT_TRUE(waitFor([&] { return client.windows().empty(); }));
    }

    static bool isChosen(const Client &client, const std::string &section)
    {
        return waitFor([&] { return client.see("page tab", section).selected(); });
    }

    /// Whether a program that the bus has started shows this.
    static bool startedShows(const std::string &role, const std::string &name)
    {
        const auto process = program::onBus();
        return process && waitFor([&] {
                   const Element application = Desktop::instance().application(*process);
                   return application && application.find(role, name);
               });
    }
};

TEST_F(OneProcessFlow, AClosedWindowComesBackWhenTheProgramIsStartedAgain)
{
    Client &client = open("everyday");
    closeWindow(client);
    EXPECT_TRUE(client.process().running());
    const auto [status, output] = startAgain({});
    EXPECT_EQ(status, 0) << output;
    EXPECT_TRUE(client.see("page tab", "Volumes"));
    EXPECT_TRUE(client.process().running());
}

TEST_F(OneProcessFlow, ALinkSignsInWhereTheWindowIs)
{
    Client &client = startClient();
    client.seeText("Waiting for the Quillfen agent");
    const auto [status, output] = startAgain({"quillfen:enrol?code=quill-second-start"});
    EXPECT_EQ(status, 0) << output;
    startAgent("first-run"); // the first run takes the link when it appears
    client.seeText("Set up the engine?");
    client.press("push button", "Cancel");
    client.seeNo("push button", "Cancel");
    EXPECT_EQ(client.process().output().find("second-start"), std::string::npos) << "a code is no matter for a log";
}

TEST_F(OneProcessFlow, ACodeSignsInWhereTheWindowIsAndIsNotLogged)
{
    Client &client = startClient();
    client.seeText("Waiting for the Quillfen agent");
    const auto [status, output] = startAgain({"--enroll", "quill-by-option"});
    EXPECT_EQ(status, 0) << output;
    startAgent("first-run");
    client.seeText("Set up the engine?");
    client.press("push button", "Cancel");
    client.seeNo("push button", "Cancel");
    EXPECT_THAT(output + client.process().output(), Not(HasSubstr("by-option")));
}

TEST_F(OneProcessFlow, OtherSchemesAndCasesAreNoLinks)
{
    Client &client = open("first-run");
    EXPECT_TRUE(client.see("push button", "Sign in"));
    EXPECT_EQ(startAgain({"QUILLFEN:enrol?code=quill-upper"}).first, 2);
    EXPECT_EQ(startAgain({"https://quillfen.example/enrol?code=quill-web"}).first, 2);
    program::call("Open", {"['https://quillfen.example/quill-web', 'QUILLFEN:quill-upper']", noData});
    EXPECT_TRUE(client.see("push button", "Sign in"));
    EXPECT_FALSE(client.shows("Set up the engine?"));
}

TEST_F(OneProcessFlow, LinksThatNoServiceIssuesAreDropped)
{
    Client &client = startClient();
    client.seeText("Waiting for the Quillfen agent");
    EXPECT_EQ(startAgain({"quillfen:" + std::string(5000, 'a')}).first, 0);
    program::call("Open", {"['quillfen:enrol?code=quill\\u001b[2J', 'quillfen:enrol\\n?code=quill']", noData});
    program::call("ActivateAction", {"enroll", "[<'quill\\u0007'>]", noData});
    startAgent("first-run"); // the first run would take one of them when it appears
    EXPECT_TRUE(client.see("push button", "Sign in").enabled());
    EXPECT_EQ(client.see("text", "Enrolment code or link").text(), "");
    EXPECT_FALSE(client.shows("Set up the engine?"));
}

TEST_F(OneProcessFlow, AnActionOfTheDesktopEntryReachesTheWindow)
{
    Client &client = open("everyday");
    EXPECT_TRUE(client.see("page tab", "Volumes"));
    EXPECT_EQ(startAgain({"--time-travel"}).first, 0);
    EXPECT_TRUE(isChosen(client, "Time travel"));
    EXPECT_EQ(startAgain({"--new-volume"}).first, 0);
    EXPECT_TRUE(client.see("push button", "Create volume"));
}

TEST_F(OneProcessFlow, TheBusReachesAWindowThatIsOpen)
{
    Client &client = open("everyday");
    EXPECT_TRUE(isChosen(client, "Volumes"));
    activate();
    program::call("ActivateAction", {"time-travel", "[]", noData});
    EXPECT_TRUE(isChosen(client, "Time travel"));
    program::call("ActivateAction", {"new-volume", "[]", noData});
    EXPECT_TRUE(client.see("push button", "Create volume"));
}

TEST_F(OneProcessFlow, TheBusReachesAWindowThatIsClosed)
{
    Client &client = open("everyday");
    EXPECT_TRUE(client.see("page tab", "Volumes"));
    closeWindow(client);
    activate();
    EXPECT_TRUE(client.see("page tab", "Volumes"));
    closeWindow(client);
    program::call("ActivateAction", {"time-travel", "[]", noData});
    EXPECT_TRUE(isChosen(client, "Time travel"));
    closeWindow(client);
    program::call("Open", {"['quillfen:enrol?code=quill-too-late']", noData});
    EXPECT_TRUE(isChosen(client, "Time travel")) << "who is signed in needs no code, but sees the window";
}

TEST_F(OneProcessFlow, TheBusStartsTheProgramWhereNoneRuns)
{
    startAgent("everyday");
    const program::Activatable bus(program::serviceFile());
    activate();
    EXPECT_TRUE(startedShows("page tab", "Volumes"));
}

TEST_F(OneProcessFlow, TheBusStartsTheProgramWithALink)
{
    startAgent("first-run");
    const program::Activatable bus(program::serviceFile());
    program::call("Open", {"['quillfen:enrol?code=quill-cold']", noData});
    EXPECT_TRUE(startedShows("label", "Set up the engine?"));
}

TEST_F(OneProcessFlow, TheBusStartsTheProgramWithAnAction)
{
    startAgent("everyday");
    const program::Activatable bus(program::serviceFile());
    program::call("ActivateAction", {"new-volume", "[]", noData});
    EXPECT_TRUE(startedShows("push button", "Create volume"));
}

TEST_F(OneProcessFlow, WithoutABusASocketHandsOverWhatASecondStartWants)
{
    startAgent("everyday");
    const Desktop &desktop = Desktop::instance();
    auto variables = desktop.environment();
    variables["DBUS_SESSION_BUS_ADDRESS"] = "";
    Process first({QUILLFEN_CLIENT, "--background"}, variables, desktop.folder() / "first.log");
    ASSERT_TRUE(waitFor([&] { return listensAt(desktop.folder() / "runtime" / "quillfen" / "client.sock"); }));
    // Without a bus there is no accessibility tree: the window manager knows whether there is a window.
    EXPECT_EQ(windowOnScreen().width, 0);
    const auto [status, output] = startAgain({}, {{"DBUS_SESSION_BUS_ADDRESS", ""}});
    EXPECT_EQ(status, 0) << output;
    EXPECT_TRUE(waitFor([] { return windowOnScreen().width >= 960; }));
    EXPECT_TRUE(first.running()) << first.output();
}

TEST_F(OneProcessFlow, AStartOfTheDesktopTakesTheKeyboardFromAnotherProgram)
{
    Client &client = open("everyday");
    EXPECT_TRUE(client.see("page tab", "Volumes"));
    OtherWindow other;
    ASSERT_TRUE(waitFor([&] { return !client.windows().front().active(); }));
    const std::string id = "panel-7_TIME" + std::to_string(other.type());
    EXPECT_EQ(startAgain({}, {{"DESKTOP_STARTUP_ID", id}}).first, 0);
    EXPECT_TRUE(waitFor([&] { return client.windows().front().active(); }));
    EXPECT_TRUE(waitFor([&] { return other.heard() == "remove: ID=\"" + id + '"'; })) << other.heard();
}

TEST_F(OneProcessFlow, AClosedWindowTakesTheKeyboardAtAStartOfTheDesktop)
{
    Client &client = open("everyday");
    EXPECT_TRUE(client.see("page tab", "Volumes"));
    closeWindow(client);
    OtherWindow other;
    const std::string id = "panel-8_TIME" + std::to_string(other.type());
    activate("{'desktop-startup-id': <'" + id + "'>}");
    EXPECT_TRUE(waitFor([&] { return !client.windows().empty() && client.windows().front().active(); }));
    EXPECT_TRUE(waitFor([&] { return other.heard() == "remove: ID=\"" + id + '"'; })) << other.heard();
}

} // namespace
} // namespace quillfen::e2e
