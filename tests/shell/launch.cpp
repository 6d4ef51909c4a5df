// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/process/launch.h"

#include <gtest/gtest.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;

QStringList line(const QStringList &arguments)
{
    return QStringList(u"quillfen"_s) + arguments;
}

TEST(PendingEnrolFrom, TakesTheArgumentAfterEnroll)
{
    EXPECT_EQ(pendingEnrolFrom(line({u"--enroll"_s, u"quill-7FQ2"_s})), u"quill-7FQ2"_s);
    EXPECT_EQ(pendingEnrolFrom(line({u"--tour"_s, u"x"_s, u"--enroll"_s, u"quill-7FQ2"_s})), u"quill-7FQ2"_s);
}

TEST(PendingEnrolFrom, IsNothingForATrailingEnroll)
{
    EXPECT_FALSE(pendingEnrolFrom(line({u"--enroll"_s})));
}

TEST(PendingEnrolFrom, IsNothingWithoutEnroll)
{
    EXPECT_FALSE(pendingEnrolFrom(line({})));
    EXPECT_FALSE(pendingEnrolFrom({}));
    EXPECT_FALSE(pendingEnrolFrom(line({u"--ENROLL"_s, u"quill-7FQ2"_s})));
}

TEST(PendingEnrolFrom, DoesNotTakeTheProgramsNameForTheOption)
{
    EXPECT_FALSE(pendingEnrolFrom({u"--enroll"_s, u"quill-7FQ2"_s}));
}

TEST(PendingEnrolFrom, TakesWhateverFollowsTheFirstEnroll)
{
    EXPECT_EQ(pendingEnrolFrom(line({u"--enroll"_s, u"--enroll"_s, u"b"_s})), u"--enroll"_s);
    EXPECT_EQ(pendingEnrolFrom(line({u"--enroll"_s, u""_s})), u""_s);
    EXPECT_EQ(pendingEnrolFrom(line({u"--enroll"_s, u"a"_s, u"--enroll"_s, u"b"_s})), u"a"_s);
}

TEST(AsksForNewVolume, OnlyForExactlyThatWord)
{
    EXPECT_TRUE(asksForNewVolume(u"newvolume"_s));
    EXPECT_FALSE(asksForNewVolume(u"NewVolume"_s));
    EXPECT_FALSE(asksForNewVolume(u"newvolume "_s));
    EXPECT_FALSE(asksForNewVolume(u"new"_s));
    EXPECT_FALSE(asksForNewVolume(u""_s));
    EXPECT_FALSE(asksForNewVolume(std::nullopt));
}

TEST(IsProductLink, OnlyForTheSchemeInLowerCase)
{
    EXPECT_TRUE(isProductLink(u"quillfen:enrol?code=quill-7FQ2"_s));
    EXPECT_TRUE(isProductLink(u"quillfen://enrol/quill-7FQ2"_s));
    EXPECT_FALSE(isProductLink(u"QUILLFEN:enrol"_s));
    EXPECT_FALSE(isProductLink(u"Quillfen:enrol"_s));
    EXPECT_FALSE(isProductLink(u"quillfen2:enrol"_s));
    EXPECT_FALSE(isProductLink(u"https://quillfen.example"_s));
    EXPECT_FALSE(isProductLink(u"quillfen"_s));
    EXPECT_FALSE(isProductLink(u""_s));
}

TEST(StartSectionWish, TellsAnEmptyWishFromNone)
{
    qunsetenv("QUILLFEN_START_SECTION");
    EXPECT_FALSE(startSectionWish());
    qputenv("QUILLFEN_START_SECTION", "");
    EXPECT_EQ(startSectionWish(), u""_s);
    qputenv("QUILLFEN_START_SECTION", "Get");
    EXPECT_EQ(startSectionWish(), u"Get"_s);
    qunsetenv("QUILLFEN_START_SECTION");
}

TEST(LaunchOptions, ReadWhatTheLineAsksFor)
{
    EXPECT_TRUE(launchOptionsFrom(line({u"--help"_s})).help);
    EXPECT_TRUE(launchOptionsFrom(line({u"-h"_s})).help);
    EXPECT_TRUE(launchOptionsFrom(line({u"--version"_s})).version);
    EXPECT_EQ(launchOptionsFrom(line({u"--tour"_s, u"/tmp/pictures"_s})).tourFolder, u"/tmp/pictures"_s);
    EXPECT_EQ(launchOptionsFrom(line({u"quillfen:a"_s, u"quillfen:b"_s})).links,
              (QStringList{u"quillfen:a"_s, u"quillfen:b"_s}));
}

TEST(LaunchOptions, FindNoFaultWithAPlainLine)
{
    for (const QStringList &arguments :
         {line({}), line({u"--enroll"_s}), line({u"--enroll"_s, u"--odd-looking-code"_s})}) {
        const LaunchOptions options = launchOptionsFrom(arguments);
        EXPECT_FALSE(options.problem) << options.problem->toStdString();
        EXPECT_FALSE(options.help || options.version || options.tourFolder);
    }
}

TEST(LaunchOptions, LeaveTheReadingDirectionToQt)
{
    EXPECT_FALSE(launchOptionsFrom(line({u"-reverse"_s})).problem);
    EXPECT_TRUE(launchOptionsFrom(line({u"--reverse"_s, u"--background"_s})).background);
}

TEST(LaunchOptions, NameTheArgumentTheyDoNotKnow)
{
    EXPECT_EQ(launchOptionsFrom(line({u"--frobnicate"_s})).problem, u"Unknown option: --frobnicate"_s);
    EXPECT_EQ(launchOptionsFrom(line({u"--help"_s, u"-x"_s})).problem, u"Unknown option: -x"_s);
    EXPECT_EQ(launchOptionsFrom(line({u"--help"_s, u"file.txt"_s})).problem, u"Unexpected argument number 2"_s);
}

TEST(LaunchOptions, NameNoCodeInWhatTheyDoNotKnow)
{
    EXPECT_EQ(launchOptionsFrom(line({u"--enroll=quill-abc"_s})).problem, u"Unknown option: --enroll"_s);
    for (const QString &argument : {u"QUILLFEN:enrol?code=quill-abc"_s, u"quill-abc"_s}) {
        EXPECT_FALSE(launchOptionsFrom(line({argument})).problem.value().contains(u"quill-abc"_s));
    }
}

TEST(LaunchOptions, WantAFolderForTheTour)
{
    EXPECT_EQ(launchOptionsFrom(line({u"--tour"_s})).problem, u"--tour needs the folder for its pictures."_s);
}

TEST(HelpText, NamesEveryOptionAndVariable)
{
    for (const QString &word : {u"--enroll CODE"_s, u"--tour FOLDER"_s, u"--version"_s, u"--help"_s,
                                u"QUILL_AGENT_SOCKET"_s, u"QUILLFEN_START_SECTION"_s}) {
        EXPECT_TRUE(helpText().contains(word)) << word.toStdString();
    }
}

} // namespace
} // namespace quillfen
