// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/linereader.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <cstring>

namespace quillfen::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Feeds `text` in reads of at most `chunk` bytes and returns what came out, written as text again.
std::vector<std::string> messagesOf(std::string_view text, std::size_t chunk)
{
    LineReader reader;
    std::vector<std::string> messages;
    const LineReader::Sink sink = [&](LineReader::Message &message, std::size_t) {
        messages.push_back(json::serialize(*message));
    };
    while (!text.empty()) {
        const std::span<char> room = reader.room();
        const std::size_t count = std::min({chunk, room.size(), text.size()});
        std::memcpy(room.data(), text.data(), count);
        text.remove_prefix(count);
        reader.received(count, sink);
    }
    return messages;
}

std::string nested(std::string_view open, std::string_view innermost, std::string_view close, std::size_t depth)
{
    std::string line;
    for (std::size_t level = 0; level < depth; ++level) {
        line += open;
    }
    line += innermost;
    for (std::size_t level = 0; level < depth; ++level) {
        line += close;
    }
    return line + "\n";
}

/// Lines of many lengths around the size of the buffer, each knowing its number.
std::string linesOfManyLengths(std::vector<std::string> &expected)
{
    std::string text;
    for (const std::size_t length :
         {0UL, 10UL, 1'000UL, 40'000UL, 65'000UL, 65'500UL, 65'534UL, 65'535UL, 65'536UL, 65'537UL, 3UL, 131'072UL, 0UL,
          200'000UL, 65'519UL, 65'520UL, 65'521UL, 65'522UL, 1UL}) {
        expected.push_back(R"({"n":)" + std::to_string(expected.size()) + R"(,"t":")" + std::string(length, 'x') +
                           "\"}");
        text += expected.back() + "\n";
        text += "not JSON " + std::string(length, 'y') + "\n";
    }
    return text;
}

TEST(LineReader, FindsTheSameLinesWhateverTheSizesOfTheReads)
{
    std::vector<std::string> expected;
    const std::string text = linesOfManyLengths(expected);
    for (const std::size_t chunk : {1UL, 2UL, 7UL, 100UL, 4'096UL, 65'535UL, 65'536UL, 1'000'000UL}) {
        EXPECT_TRUE(messagesOf(text, chunk) == expected) << chunk;
    }
}

TEST(LineReader, TellsTheLengthOfEachLine)
{
    LineReader reader;
    std::vector<std::size_t> lengths;
    for (const std::size_t length : {2UL, 70'000UL, 200'000UL}) {
        std::string line = "{" + std::string(length - 2, ' ') + "}\n";
        for (std::string_view rest = line; !rest.empty();) {
            const std::span<char> room = reader.room();
            const std::size_t count = std::min(room.size(), rest.size());
            std::memcpy(room.data(), rest.data(), count);
            rest.remove_prefix(count);
            reader.received(count, [&](LineReader::Message &, std::size_t bytes) { lengths.push_back(bytes); });
        }
    }
    EXPECT_THAT(lengths, ElementsAre(2, 70'000, 200'000));
}

TEST(LineReader, AnUnfinishedLineIsNoMessage)
{
    EXPECT_THAT(messagesOf(R"({"a":1})", 3), IsEmpty());
    EXPECT_THAT(messagesOf("{\"a\":\"" + std::string(200'000, 'x') + "\"}", 65'536), IsEmpty());
}

TEST(LineReader, ALongLineThatEndsTooEarlyIsDroppedAndTheNextIsNot)
{
    const std::string text = "{\"a\":\"" + std::string(200'000, 'x') + "\"\n{\"b\":2}\n";
    EXPECT_THAT(messagesOf(text, 65'536), ElementsAre(R"({"b":2})"));
}

TEST(LineReader, ALongLineWithTwoObjectsIsDropped)
{
    const std::string text = R"({"a":1})" + std::string(100'000, ' ') + "{\"a\":2}\n{\"b\":2}\n";
    EXPECT_THAT(messagesOf(text, 65'536), ElementsAre(R"({"b":2})"));
}

TEST(LineReader, ACharacterCutByTheEndOfTheBufferIsWholeAgain)
{
    for (std::size_t before = 65'525; before < 65'540; ++before) {
        const std::string message = "{\"a\":\"" + std::string(before - 6, 'x') + "€ \\u20ac\"}";
        const std::string expected = "{\"a\":\"" + std::string(before - 6, 'x') + "€ €\"}";
        ASSERT_TRUE(messagesOf(message + "\n", 65'536) == std::vector<std::string>{expected}) << before;
    }
}

TEST(LineReader, NestingFarBeyondWhatAnAgentSendsIsRead)
{
    const std::string arrays = R"({"a":)" + nested("[", "", "]", 1'000);
    const std::string line = arrays.substr(0, arrays.size() - 1) + "}\n";
    EXPECT_THAT(messagesOf(line, 65'536), SizeIs(1));
    EXPECT_THAT(messagesOf(nested("{\"a\":", "1", "}", 1'000), 65'536), SizeIs(1));
}

TEST(LineReader, NestingWithoutMeasureIsDroppedAndTheNextLineIsNot)
{
    for (const std::size_t depth : {LineReader::maxDepth + 1, 100'000UL}) {
        EXPECT_THAT(messagesOf(R"({"a":)" + nested("[", "", "]", depth) + "{\"b\":2}\n", 65'536),
                    ElementsAre(R"({"b":2})"));
        EXPECT_THAT(messagesOf(nested("{\"a\":", "1", "}", depth) + "{\"b\":2}\n", 65'536), ElementsAre(R"({"b":2})"));
    }
}

TEST(LineReader, ManyTimesTheBytesTakeAsManyTimesAsLong)
{
    using Clock = std::chrono::steady_clock;
    const auto timeOf = [](std::size_t size) {
        const std::string line = "{" + std::string(size, ' ') + "}\n"; // framing alone: nothing to keep
        auto best = Clock::duration::max();
        for (int attempt = 0; attempt < 3; ++attempt) {
            const auto begin = Clock::now();
            EXPECT_THAT(messagesOf(line, 65'536), SizeIs(1));
            best = std::min(best, Clock::now() - begin);
        }
        return std::chrono::duration<double>(best).count();
    };
    // Scans from the front on each read, or erasures there, would cost 256 times as much; the rest is for the machine.
    EXPECT_LT(timeOf(64'000'000), 16 * 5 * timeOf(4'000'000));
}

} // namespace

} // namespace quillfen::test
