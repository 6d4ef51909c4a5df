// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/advanced/outputrows.h"

#include <gmock/gmock.h>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;

std::shared_ptr<const OutputText> ofJson(const json::value &value)
{
    return std::make_shared<OutputText>(OutputText::ofJson(value));
}

std::string bytesOf(const OutputRows &rows, const OutputRows::Row &row)
{
    return rows.text()->bytes().substr(row.begin, row.end - row.begin);
}

json::array mixed()
{
    json::array list;
    for (std::size_t number = 0; number < 300; ++number) {
        list.push_back(json::object{{"short", number}, {"text", json::value(std::string(number * 37 % 6'000, 'x'))}});
        list.push_back(
            json::value("ä🙂漢" + std::string(number % 90, 'y') + "漢字漢字漢字漢字漢字漢字漢字漢字漢字漢字"));
    }
    return list;
}

TEST(OutputRows, AShortLineIsARow)
{
    const OutputRows rows(ofJson({1, 2}), 80);
    EXPECT_EQ(rows.count(), 4U);
    EXPECT_EQ(bytesOf(rows, rows.row(1)), "1,");
    EXPECT_EQ(rows.row(1).indent, 2U);
}

TEST(OutputRows, ALongLineWrapsAtTheWidth)
{
    const OutputRows rows(std::make_shared<OutputText>(OutputText::ofWords(QString(200, u'x') + u"\ny"_s)), 80);
    EXPECT_EQ(rows.count(), 4U);
    EXPECT_EQ(bytesOf(rows, rows.row(0)).size(), 80U);
    EXPECT_EQ(bytesOf(rows, rows.row(2)).size(), 40U);
    EXPECT_EQ(bytesOf(rows, rows.row(3)), "y");
}

TEST(OutputRows, WideCharactersTakeTwoColumns)
{
    const OutputRows rows(std::make_shared<OutputText>(OutputText::ofWords(QString(60, u'漢'))), 40);
    EXPECT_EQ(rows.count(), 3U);
    EXPECT_EQ(bytesOf(rows, rows.row(0)).size(), 60U) << "twenty of three bytes";
}

TEST(OutputRows, IndentationTakesHalfTheWidthAtMost)
{
    json::value value(std::string(100, 'x'));
    for (int level = 0; level < 500; ++level) {
        value = json::array{std::move(value)};
    }
    const OutputRows rows(ofJson(value), 60);
    EXPECT_EQ(rows.row(500).indent, 30U);
    EXPECT_EQ(bytesOf(rows, rows.row(500)).size(), 30U);
    EXPECT_EQ(rows.count(), 500 + 4 + 500U);
}

TEST(OutputRows, EveryRowFollowsFromTheOneBefore)
{
    const auto text = ofJson(mixed());
    for (const std::size_t columns : {40U, 41U, 77U, 200U, 5'000U}) {
        const OutputRows rows(text, columns);
        OutputRows::Row walked = rows.row(0);
        std::size_t next = 0;
        for (std::size_t number = 0;; ++number, walked = rows.after(walked)) {
            const OutputRows::Row found = rows.row(number);
            ASSERT_EQ(found.begin, walked.begin) << columns << " row " << number;
            ASSERT_EQ(found.end, walked.end) << columns << " row " << number;
            ASSERT_GE(walked.begin, next);
            ASSERT_LE(walked.begin - next, 1U) << "nothing but line feeds lies between rows";
            ASSERT_LE(OutputText::columnsOf(bytesOf(rows, walked)) + walked.indent, columns + 1);
            next = walked.end;
            if (number + 1 == rows.count()) {
                break;
            }
        }
        EXPECT_EQ(next, text->bytes().size()) << columns;
    }
}

TEST(OutputRows, APlaceIsFoundInItsRow)
{
    const auto text = ofJson(mixed());
    const OutputRows rows(text, 61);
    for (std::size_t number = 0; number < rows.count(); number += 7) {
        const OutputRows::Row row = rows.row(number);
        const OutputRows::Place place = rows.placeOf(row.begin);
        if (row.begin == row.end) {
            continue;
        }
        ASSERT_EQ(place.row, number);
        ASSERT_EQ(place.column, 0U);
        ASSERT_EQ(rows.offsetAt(number, 0), row.begin);
        ASSERT_LE(rows.offsetAt(number, 10'000), row.end);
    }
}

TEST(OutputRows, AnotherWidthIsQuick)
{
    json::array list(200'000, json::value(std::string(60, 'x')));
    const auto text = ofJson(list);
    EXPECT_EQ(OutputRows(text, 40).count(), 400'002U);
    EXPECT_EQ(OutputRows(text, 200).count(), 200'002U);
}

} // namespace
