// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/names.h"

#include "localagent/world/refusal.h"

#include <gtest/gtest.h>

#include <string>

using namespace quillfen::localagent;

namespace {

std::string verdict(std::string_view name)
{
    try {
        checkVolumeName(name);
        return "good";
    } catch (const Refusal &refusal) {
        return refusal.what();
    }
}

} // namespace

TEST(VolumeNames, WordsOfEveryScriptAreGood)
{
    for (const char *name : {"Documents", "photos-archive", "a", "Client Work (old)", "Übungen", "写真", "ארכיון",
                             "📷 2026", "a.b", "x\u00a0y"}) {
        EXPECT_EQ(verdict(name), "good") << name;
    }
    EXPECT_EQ(verdict(std::string(64, 'x')), "good");
}

TEST(VolumeNames, WhatIsNoSafeFolderIsRefusedWithTheReason)
{
    EXPECT_EQ(verdict(""), "Give the volume a name.");
    EXPECT_EQ(verdict("   "), "Give the volume a name.");
    EXPECT_EQ(verdict(std::string(300, 'x')), "The name is too long: at most 64 bytes, this one has 300.");
    EXPECT_EQ(verdict(".hidden"), "The name cannot begin with a point: its folder would be hidden.");
    EXPECT_EQ(verdict(".."), "The name cannot begin with a point: its folder would be hidden.");
    EXPECT_EQ(verdict("a/b"), "The name cannot hold \"/\": it is the name of a folder too.");
    EXPECT_EQ(verdict("a\\b"), "The name cannot hold \"\\\": it is the name of a folder too.");
    EXPECT_EQ(verdict("a:b"), "The name cannot hold \":\": it is the name of a folder too.");
    EXPECT_EQ(verdict(" a"), "The name cannot begin or end with a space.");
}

TEST(VolumeNames, CharactersThatCannotBeSeenAreRefused)
{
    const std::string message = "The name cannot hold control characters.";
    EXPECT_EQ(verdict("a\nb"), message);
    EXPECT_EQ(verdict(std::string_view("a\0b", 3)), message);
    EXPECT_EQ(verdict("a\x7f"), message);
    for (const char *name : {"gpj.\u202eexe", "a\u2066b", "a\u2069b", "a\u200fb", "a\u0085b", "a\u2028b"}) {
        EXPECT_EQ(verdict(name), message) << name;
    }
}

TEST(VolumeNames, TheSameFolderIsSeenThroughTheCaseOfLetters)
{
    EXPECT_TRUE(sameFolder("Documents", "documents"));
    EXPECT_FALSE(sameFolder("Documents", "document"));
}
