// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/advanced/jsoneditor.h"

#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;

class JsonEditorTest : public testing::Test {
protected:
    JsonEditorTest() : edited(&editor, &JsonEditor::edited), problems(&editor, &JsonEditor::problemChanged)
    {
        editor.resize(400, 80);
        editor.show();
    }

    [[nodiscard]] QPlainTextEdit &field() const { return *editor.findChild<QPlainTextEdit *>(); }

    JsonEditor editor{u"Other"_s};
    QSignalSpy edited;
    QSignalSpy problems;
};

TEST_F(JsonEditorTest, TellsOfTyping)
{
    QTest::keyClicks(&field(), u"{}"_s);
    EXPECT_EQ(editor.text(), u"{}"_s);
    EXPECT_EQ(edited.count(), 2);
    EXPECT_EQ(editor.problem(), std::nullopt);
}

TEST_F(JsonEditorTest, MarksWhereItIsNoJson)
{
    editor.setText(u"{\n  \"a\": tru\n}"_s);
    ASSERT_TRUE(editor.problem());
    EXPECT_EQ(problems.count(), 1);
    const auto marks = field().extraSelections();
    ASSERT_EQ(marks.size(), 1);
    EXPECT_EQ(marks.front().cursor.selectedText(), u"tru"_s);
    EXPECT_EQ(marks.front().format.underlineStyle(), QTextCharFormat::WaveUnderline);
    editor.setText(u"{}"_s);
    EXPECT_TRUE(field().extraSelections().isEmpty());
    EXPECT_EQ(problems.count(), 2);
}

TEST_F(JsonEditorTest, MarksTheEndWhereSomethingIsMissing)
{
    editor.setText(u"{\"a\": 1\n"_s);
    ASSERT_TRUE(editor.problem());
    const auto marks = field().extraSelections();
    ASSERT_EQ(marks.size(), 1);
    EXPECT_TRUE(marks.front().cursor.hasSelection());
}

TEST_F(JsonEditorTest, WhatIsPutInIsNoEdit)
{
    editor.setText(u"{"_s);
    EXPECT_EQ(edited.count(), 0);
    EXPECT_EQ(problems.count(), 1);
}

TEST_F(JsonEditorTest, TheSameTextLeavesTheCursorAlone)
{
    editor.setText(u"{ }"_s);
    QTextCursor cursor = field().textCursor();
    cursor.setPosition(2);
    field().setTextCursor(cursor);
    editor.setText(u"{ }"_s);
    EXPECT_EQ(field().textCursor().position(), 2);
}

TEST_F(JsonEditorTest, KeepsHardSpacesAndLines)
{
    const QString text = u"{\"a\":\n\"x\u00a0y\"}"_s;
    editor.setText(text);
    EXPECT_EQ(editor.text(), text);
}

TEST_F(JsonEditorTest, TabLeavesIt)
{
    EXPECT_TRUE(field().tabChangesFocus());
    EXPECT_EQ(field().accessibleName(), u"Other"_s);
}

} // namespace
