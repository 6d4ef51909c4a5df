// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/keyfiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace {

using namespace quillfen;
using namespace std::chrono_literals;

class KeyFilesTest : public testing::Test {
protected:
    void touch() const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("quill-photos.key"));
    Instant present = Instant(1'000'000s);
    ClockOverride clock{[this] { return present; }};
    KeyFiles files;
};

TEST_F(KeyFilesTest, FindsAFileThatIsThere)
{
    touch();
    EXPECT_TRUE(files.exists(path));
}

TEST_F(KeyFilesTest, FindsNothingWhereNothingIs)
{
    EXPECT_FALSE(files.exists(path));
    EXPECT_FALSE(files.exists(QString()));
}

TEST_F(KeyFilesTest, AFolderIsNoKey)
{
    EXPECT_FALSE(files.exists(folder.path()));
}

TEST_F(KeyFilesTest, AsksAgainAfterTwoSeconds)
{
    EXPECT_FALSE(files.exists(path));
    touch();
    present += 1'999ms;
    EXPECT_FALSE(files.exists(path));
    present += 1ms;
    EXPECT_TRUE(files.exists(path));
}

TEST_F(KeyFilesTest, NoticesAKeyThatWasTakenAway)
{
    touch();
    EXPECT_TRUE(files.exists(path));
    QFile::remove(path);
    EXPECT_TRUE(files.exists(path));
    present += 2s;
    EXPECT_FALSE(files.exists(path));
}

TEST_F(KeyFilesTest, AClockSetBackKeepsNoAnswer)
{
    EXPECT_FALSE(files.exists(path));
    touch();
    present -= 1h;
    EXPECT_TRUE(files.exists(path));
}

} // namespace
