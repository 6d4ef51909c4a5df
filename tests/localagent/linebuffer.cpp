// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/wire/linebuffer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

using quillfen::localagent::LineBuffer;

namespace {

// Every line, "!" for one that was too long.
std::vector<std::string> drain(LineBuffer &buffer)
{
    std::vector<std::string> lines;
    for (;;) {
        const LineBuffer::Next next = buffer.next();
        if (std::holds_alternative<LineBuffer::NeedMore>(next)) {
            return lines;
        }
        const auto *line = std::get_if<std::string_view>(&next);
        lines.push_back(line ? std::string(*line) : "!");
    }
}

std::vector<std::string> fed(LineBuffer &buffer, std::string_view bytes)
{
    buffer.append(bytes);
    return drain(buffer);
}

using Lines = std::vector<std::string>;

} // namespace

TEST(LineBuffer, LinesComeOutWholeHoweverTheyArrive)
{
    LineBuffer buffer(100);
    EXPECT_EQ(fed(buffer, "one\ntwo\nth"), (Lines{"one", "two"}));
    EXPECT_EQ(fed(buffer, "re"), Lines{});
    EXPECT_EQ(fed(buffer, "e\n\n\r\n"), (Lines{"three", "", "\r"}));
}

TEST(LineBuffer, ALineThatIsTooLongIsReportedOnceAndSkipped)
{
    LineBuffer buffer(5);
    EXPECT_EQ(fed(buffer, "12345\n123456\nok\n"), (Lines{"12345", "!", "ok"}));
    EXPECT_EQ(fed(buffer, "1234567"), Lines{"!"});
    EXPECT_EQ(fed(buffer, "8901234567890"), Lines{});
    EXPECT_EQ(fed(buffer, "end\nnext\n"), Lines{"next"});
}

TEST(LineBuffer, WhatIsLeftOfASkippedLineIsNotKept)
{
    LineBuffer buffer(16);
    for (int part = 0; part < 1000; ++part) {
        buffer.append(std::string(1000, 'x')), static_cast<void>(drain(buffer));
    }
    EXPECT_EQ(fed(buffer, "\nalive\n"), Lines{"alive"});
}

// A buffer that searches or moves its bytes again with every read takes minutes for this.
TEST(LineBuffer, AMillionSmallReadsOfOneLineStayLinear)
{
    LineBuffer buffer(64U << 20U);
    const auto begin = std::chrono::steady_clock::now();
    const std::string part(32, 'x');
    for (int read = 0; read < 1000000; ++read) {
        buffer.append(part);
        ASSERT_TRUE(drain(buffer).empty());
    }
    buffer.append("\n");
    ASSERT_EQ(drain(buffer).front().size(), 32000000U);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}
