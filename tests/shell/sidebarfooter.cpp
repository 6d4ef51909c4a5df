// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainview/sidebarfooter.h"

#include "states.h"

#include <gtest/gtest.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;

TEST(VersionLine, NamesTheAgentOnlyWhereItsVersionIsAnotherOne)
{
    EXPECT_EQ(versionLine(u"1.4.0"_s, u""_s), u"Quillfen 1.4.0"_s);
    EXPECT_EQ(versionLine(u"1.4.0"_s, u"1.4.0"_s), u"Quillfen 1.4.0"_s);
    EXPECT_EQ(versionLine(u"1.4.0"_s, u"1.4.1"_s), u"Quillfen 1.4.0 · agent 1.4.1"_s);
    EXPECT_EQ(versionLine(u"dev"_s, u"1.4.1"_s), u"Quillfen dev · agent 1.4.1"_s);
}

TEST(EngineLine, SaysHowTheEngineIs)
{
    const std::shared_ptr<AppState> state = newState();
    const auto lineFor = [&](const char *vm) {
        state->vm = record(vm);
        return engineLine(*state);
    };
    EXPECT_EQ(lineFor(R"({})"), u"Engine not set up"_s);
    EXPECT_EQ(lineFor(R"({"status": ""})"), u"Engine not set up"_s);
    EXPECT_EQ(lineFor(R"({"status": null})"), u"Engine not set up"_s);
    EXPECT_EQ(lineFor(R"({"status": "Running"})"), u"Engine running"_s);
    EXPECT_EQ(lineFor(R"({"status": "Stopped"})"), u"Engine Stopped"_s);
    EXPECT_EQ(lineFor(R"({"status": 7})"), u"Engine 7"_s);
}

TEST(EngineLine, TakesLowerCaseRunningForAnotherStatus)
{
    const std::shared_ptr<AppState> state = newState();
    state->vm = record(R"({"status": "running"})");
    EXPECT_FALSE(state->engineRunning());
    EXPECT_EQ(engineLine(*state), u"Engine running"_s);
}

TEST(PlanLine, ComparesAllocatedWithCapacity)
{
    EXPECT_EQ(planLine(*signedInState()), u"0 GB of 2.0 TB"_s);
}

} // namespace
} // namespace quillfen
