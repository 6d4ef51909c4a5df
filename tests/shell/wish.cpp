// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/process/wish.h"

#include "shell/process/launch.h"
#include "states.h"

#include <gtest/gtest.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;

Wish wished(const QStringList &arguments)
{
    const QStringList line = QStringList(u"quillfen"_s) + arguments;
    return wishOf(launchOptionsFrom(line), line);
}

TEST(Wish, SaysWhatAStartAsksFor)
{
    EXPECT_EQ(wished({}), Wish());
    EXPECT_FALSE(wished({u"--background"_s}).show);
    EXPECT_EQ(wished({u"--enroll"_s, u"quill-7FQ2"_s}).code, u"quill-7FQ2"_s);
    EXPECT_EQ(wished({u"--enroll"_s}).code, QString());
    EXPECT_EQ(wished({u"quillfen:enroll/quill-7FQ2"_s}).links, QStringList(u"quillfen:enroll/quill-7FQ2"_s));
    EXPECT_EQ(wished({u"--new-volume"_s}).action, u"new-volume"_s);
    EXPECT_EQ(wished({u"--time-travel"_s}).action, u"time-travel"_s);
}

TEST(Wish, TakesTheDesktopsTokensAlong)
{
    const Environment token("XDG_ACTIVATION_TOKEN", "token-7");
    const Environment startup("DESKTOP_STARTUP_ID", "panel_TIME123");
    EXPECT_EQ(wished({}).activationToken, u"token-7"_s);
    EXPECT_EQ(wished({}).startupId, u"panel_TIME123"_s);
}

TEST(Wish, TravelsAsOneLine)
{
    Wish wish;
    wish.show = false;
    wish.code = u"quill-\"7\n\u00fc"_s;
    wish.links = {u"quillfen:a"_s, u"quillfen:b"_s};
    wish.action = u"time-travel"_s;
    wish.activationToken = u"token"_s;
    wish.startupId = u"id"_s;
    const QByteArray line = lineOf(wish);
    EXPECT_EQ(line.count('\n'), 1);
    EXPECT_TRUE(line.endsWith('\n'));
    EXPECT_EQ(wishFromLine(line), wish);
}

TEST(Wish, IsNotReadFromAnythingElse)
{
    for (const char *line : {"", "\n", "null\n", "[]\n", "{}\n", R"({"show": 1, "links": []})", R"({"show": true})",
                             R"({"show": true, "links": {}})", "{\"show\": true, \"links\": []", "\xff\xfe\n"}) {
        EXPECT_EQ(wishFromLine(line), std::nullopt) << line;
    }
}

TEST(Wish, AcceptsCodesAndLinksOfASensibleLengthWithoutControlCharacters)
{
    EXPECT_TRUE(isAcceptable(u"quillfen:enroll/quill-7FQ2"_s));
    EXPECT_TRUE(isAcceptable(QString(2048, u'a')));
    EXPECT_FALSE(isAcceptable(QString(2049, u'a')));
    EXPECT_FALSE(isAcceptable(u"quillfen:\n"_s));
    EXPECT_FALSE(isAcceptable(u"quillfen:\u001b[2J"_s));
    EXPECT_FALSE(isAcceptable(u"quillfen:\u0085"_s)) << "the controls beyond ASCII count as well";
    EXPECT_FALSE(isAcceptable(u"quillfen:\u0000"_s));
}

} // namespace
} // namespace quillfen
