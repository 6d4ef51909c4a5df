// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/home.h"

#include "folder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

using namespace quillfen::localagent;
using quillfen::localagent::test::Folder;

TEST(Home, TheFirstKeyOfANameStays)
{
    const Folder folder;
    const Home home(folder.path());
    EXPECT_FALSE(home.hasKey("a"));
    home.makeKey("a", "first");
    home.makeKey("a", "other");
    EXPECT_TRUE(home.hasKey("a"));
    std::string content;
    std::ifstream(home.keyFile("a")) >> content;
    EXPECT_EQ(content, "first");
}
