// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/advanced/outputtext.h"

#include <gmock/gmock.h>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

std::vector<std::string> indented(const OutputText &text)
{
    std::vector<std::string> lines;
    for (std::size_t number = 0; number < text.segments(); ++number) {
        const OutputText::Segment segment = text.segment(number);
        lines.push_back(std::string(segment.depth * 2, ' ') + std::string(text.bytesOf(segment)));
    }
    return lines;
}

json::value parsed(const std::string &text)
{
    json::parse_options options;
    options.max_depth = 2'000;
    return json::parse(text, {}, options);
}

TEST(OutputText, NothingIsOneEmptyLine)
{
    const OutputText text;
    EXPECT_EQ(text.segments(), 1U);
    EXPECT_EQ(text.lines(), 1U);
    EXPECT_EQ(text.text(0, 0), QString());
}

TEST(OutputText, LinesAreIndentedByTheirDepth)
{
    const OutputText text = OutputText::ofJson(parsed(R"({"a":[1,{"b":[]},"x"],"c":{"d":"}]"}})"));
    EXPECT_THAT(indented(text), ElementsAre("{", "  \"a\": [", "    1,", "    {", "      \"b\": []", "    },",
                                            "    \"x\"", "  ],", "  \"c\": {", "    \"d\": \"}]\"", "  }", "}"));
    EXPECT_EQ(text.lines(), 12U);
}

TEST(OutputText, BracketsWithinTextsIndentNothing)
{
    const OutputText text = OutputText::ofJson(parsed(R"(["[","{","]","}",{"[":"{"},"a"])"));
    EXPECT_THAT(indented(text), ElementsAre("[", "  \"[\",", "  \"{\",", "  \"]\",", "  \"}\",", "  {",
                                            "    \"[\": \"{\"", "  },", "  \"a\"", "]"));
}

TEST(OutputText, WordsAreNotTakenForJson)
{
    const OutputText text = OutputText::ofWords(u"error: {\n}\u202e\x1b"_s);
    EXPECT_THAT(indented(text), ElementsAre("error: {", "}⟨U+202E⟩␛"));
}

TEST(OutputText, ALongLineIsCutBetweenCharacters)
{
    const QString long_ = QString(5'000, u'ä');
    const OutputText text = OutputText::ofWords(long_ + u"\nend"_s);
    EXPECT_EQ(text.lines(), 2U);
    EXPECT_EQ(text.segments(), 4U) << "ten thousand bytes in pieces of four thousand, and the end";
    QString whole;
    for (std::size_t number = 0; number + 1 < text.segments(); ++number) {
        const std::string_view bytes = text.bytesOf(text.segment(number));
        EXPECT_LE(bytes.size(), OutputText::longestSegment);
        whole += QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
    EXPECT_EQ(whole, long_);
}

TEST(OutputText, ALineOfExactlyOneSegmentIsOne)
{
    for (const std::size_t size : {OutputText::longestSegment - 1, OutputText::longestSegment}) {
        const OutputText text = OutputText::ofWords(QString(static_cast<qsizetype>(size), u'x') + u"\ny"_s);
        EXPECT_EQ(text.segments(), 2U) << size;
        EXPECT_EQ(OutputText::ofWords(QString(static_cast<qsizetype>(size), u'x')).segments(), 1U) << size;
    }
    EXPECT_EQ(OutputText::ofWords(QString(4'097, u'x') + u"\ny"_s).segments(), 3U);
}

TEST(OutputText, APieceOfALongTextDoesNotIndent)
{
    const json::value value = json::array{std::string(9'000, '}'), std::string(9'000, '['), 1};
    const OutputText text = OutputText::ofJson(value);
    EXPECT_EQ(text.segment(text.segments() - 2).depth, 1U);
    EXPECT_EQ(text.segment(text.segments() - 1).depth, 0U);
}

TEST(OutputText, EverySegmentIsFoundByNumberAndByPlace)
{
    json::array list;
    for (int number = 0; number < 1'000; ++number) {
        list.push_back(json::object{{"id", number}, {"text", std::string(static_cast<std::size_t>(number) * 9, 'x')}});
    }
    const OutputText text = OutputText::ofJson(list);
    OutputText::Segment walked = text.segment(0);
    for (std::size_t number = 0;; ++number, walked = text.after(walked)) {
        const OutputText::Segment found = text.segment(number);
        ASSERT_EQ(found.begin, walked.begin) << number;
        ASSERT_EQ(found.depth, walked.depth) << number;
        ASSERT_EQ(text.segmentAt(walked.begin).number, number);
        if (number + 1 == text.segments()) {
            EXPECT_EQ(walked.end, text.bytes().size());
            EXPECT_EQ(text.segmentAt(walked.end).number, number);
            break;
        }
        ASSERT_EQ(text.segmentAt(walked.next - 1).number, number);
    }
}

TEST(OutputText, CopiesWithIndentation)
{
    const OutputText text = OutputText::ofJson(parsed(R"({"a":[1,2]})"));
    const QString whole = u"{\n  \"a\": [\n    1,\n    2\n  ]\n}"_s;
    const std::string &bytes = text.bytes();
    EXPECT_EQ(text.text(0, bytes.size()), whole);
    EXPECT_EQ(text.text(bytes.find("1,"), bytes.find("2")), u"    1,\n"_s);
    EXPECT_EQ(text.text(bytes.find(": ["), bytes.find(",")), u": [\n    1"_s);
    EXPECT_EQ(text.text(3, 3), QString());
}

TEST(OutputText, ATextCutIntoSegmentsIsCopiedWhole)
{
    const json::value value = json::object{{"text", std::string(20'000, 'x')}, {"next", 1}};
    const OutputText text = OutputText::ofJson(value);
    EXPECT_EQ(json::parse(text.text(0, text.bytes().size()).toStdString()), value);
}

TEST(OutputText, DepthCostsNoMemory)
{
    const int depth = 1'000;
    std::string deep(depth, '[');
    for (int number = 0; number < 10'000; ++number) {
        deep += "1,";
    }
    deep += "1" + std::string(depth, ']');
    const OutputText text = OutputText::ofJson(parsed(deep));
    EXPECT_LT(text.bytes().size(), 2 * deep.size());
    EXPECT_LT(text.longSegments().size(), 10U);
    EXPECT_EQ(text.segment(depth + 5'000).depth, std::size_t{depth});
}

} // namespace
