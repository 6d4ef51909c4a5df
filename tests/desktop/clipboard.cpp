// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/clipboard.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>

#include <gmock/gmock.h>

using namespace quillfen;

namespace {

const QMimeData &held()
{
    return *QApplication::clipboard()->mimeData();
}

TEST(Clipboard, TextIsTextAndNothingElse)
{
    copyText(QStringLiteral("/home/u/Quillfen/<b>photos</b>"));
    EXPECT_EQ(held().text(), QStringLiteral("/home/u/Quillfen/<b>photos</b>"));
    EXPECT_FALSE(held().hasFormat(QStringLiteral("x-kde-passwordManagerHint")));
}

TEST(Clipboard, ASecretIsMarkedForClipboardManagers)
{
    copySecret(QStringLiteral("k-1234\n"));
    EXPECT_EQ(held().text(), QStringLiteral("k-1234\n"));
    EXPECT_EQ(held().data(QStringLiteral("x-kde-passwordManagerHint")), "secret");
    EXPECT_TRUE(held().hasFormat(QStringLiteral("application/x-nspasteboard-concealed-type")));
}

TEST(Clipboard, TextAfterASecretLosesTheMark)
{
    copySecret(QStringLiteral("k"));
    copyText(QStringLiteral("plain"));
    EXPECT_FALSE(held().hasFormat(QStringLiteral("x-kde-passwordManagerHint")));
}

} // namespace
