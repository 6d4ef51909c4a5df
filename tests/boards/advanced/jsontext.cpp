// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/advanced/jsontext.h"

#include <gmock/gmock.h>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;

TEST(ProblemIn, NothingTypedIsNoProblem)
{
    EXPECT_EQ(problemIn(QString()), std::nullopt);
    EXPECT_EQ(problemIn(u" \n\t"_s), std::nullopt);
}

TEST(ProblemIn, AnObjectIsNoProblem)
{
    EXPECT_EQ(problemIn(u"{}"_s), std::nullopt);
    EXPECT_EQ(problemIn(u" {\n  \"order\": \"ascending\"\n}\n"_s), std::nullopt);
}

TEST(ProblemIn, TellsLineAndColumn)
{
    const std::optional<JsonProblem> problem = problemIn(u"{\n  \"a\": tru\n}"_s);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->position, 9);
    EXPECT_EQ(problem->message, u"Line 2, column 8 is not JSON: the text is not sent."_s);
}

TEST(ProblemIn, CountsCharactersAndNotBytes)
{
    const std::optional<JsonProblem> problem = problemIn(u"{\"äöü🙂\": x}"_s);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->position, 10);
}

TEST(ProblemIn, TellsWhatIsMissingAtTheEnd)
{
    for (const QString &text : {u"{\"a\": [1"_s, u"{"_s, u"{\"a"_s}) {
        const std::optional<JsonProblem> problem = problemIn(text);
        ASSERT_TRUE(problem) << text.toStdString();
        EXPECT_EQ(problem->position, text.size());
        EXPECT_EQ(problem->message, u"The JSON is not complete: it is not sent."_s);
    }
}

TEST(ProblemIn, TellsWhatFollowsTheEnd)
{
    const std::optional<JsonProblem> problem = problemIn(u"{} x"_s);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->position, 3);
}

TEST(ProblemIn, OtherJsonThanAnObjectIsSaidToBeSo)
{
    for (const QString &text : {u"[1]"_s, u"7"_s, u"\"x\""_s, u"null"_s}) {
        const std::optional<JsonProblem> problem = problemIn(text);
        ASSERT_TRUE(problem) << text.toStdString();
        EXPECT_EQ(problem->message, u"This is JSON, but not an object: it is not sent."_s);
    }
}

TEST(ObjectIn, TakesWhatAnAnswerCouldHold)
{
    const int depth = 1'000;
    const QString deep = QString(depth, u'[') + QString(depth, u']');
    EXPECT_EQ(objectIn(u"{\"a\":"_s + deep + u"}"_s).size(), 1U);
    EXPECT_TRUE(objectIn(QString(100'000, u'[')).empty());
    EXPECT_TRUE(problemIn(QString(100'000, u'[')));
}

} // namespace
