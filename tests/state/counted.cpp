// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/counted.h"

#include <gmock/gmock.h>

using namespace quillfen;

namespace {

std::string volumes(qint64 number)
{
    return counted(number, QStringLiteral("%1 volume"), QStringLiteral("%1 volumes")).toStdString();
}

TEST(Counted, OnlyOneIsSingular)
{
    EXPECT_EQ(volumes(0), "0 volumes");
    EXPECT_EQ(volumes(1), "1 volume");
    EXPECT_EQ(volumes(2), "2 volumes");
    EXPECT_EQ(volumes(-1), "-1 volumes");
    EXPECT_EQ(volumes(10'000), "10000 volumes");
}

TEST(Counted, LeavesRoomForWhatElseTheTextSays)
{
    EXPECT_EQ(counted(1, QStringLiteral("%1 volume · %2"), QString()).arg(QStringLiteral("uploading")),
              QStringLiteral("1 volume · uploading"));
}

} // namespace
