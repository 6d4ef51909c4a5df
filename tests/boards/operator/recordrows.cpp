// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/recordrows.h"

#include "operatortest.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

Records people()
{
    return {params("id", 1, "email", "Noor@tide.example", "house", "Weir", "age", 30),
            params("id", 2, "email", "ada@weir.example", "house", "Marsh", "age", 7),
            params("id", 3, "email", "bruno@tide.example", "house", "marsh", "age", 100),
            params("id", 4, "email", "müller@tide.example", "house", "", "age", 30)};
}

RecordRows rows()
{
    const auto text = [](const char *key) { return [key](const Record &record) { return str(record, key); }; };
    RecordRows all({{u"E-mail"_s, text("email"), {}},
                    {u"House"_s, text("house"), {}},
                    {u"Age"_s, {}, [](const Record &record) { return num(record, "age"); }}});
    all.setRecords(people());
    return all;
}

std::vector<std::int64_t> ids(const RecordRows &rows)
{
    std::vector<std::int64_t> found;
    for (int row = 0; row < rows.count(); ++row) {
        found.push_back(rows.id(row));
    }
    return found;
}

TEST(RecordRows, StandAsTheyCame)
{
    EXPECT_THAT(ids(rows()), ElementsAre(1, 2, 3, 4));
}

TEST(RecordRows, AreFoundByAnyText)
{
    RecordRows all = rows();
    all.search(u"weir"_s);
    EXPECT_THAT(ids(all), ElementsAre(1, 2)) << "a house and an address";
    all.search(u"NOOR"_s);
    EXPECT_THAT(ids(all), ElementsAre(1));
    all.search(u"MÜLLER"_s);
    EXPECT_THAT(ids(all), ElementsAre(4));
    all.search(u"30"_s);
    EXPECT_THAT(ids(all), IsEmpty()) << "numbers are no texts";
    all.search(u"exampleweir"_s);
    EXPECT_THAT(ids(all), IsEmpty()) << "no search reaches across two texts";
    EXPECT_EQ(all.total(), 4);
    all.search({});
    EXPECT_EQ(all.count(), 4);
}

TEST(RecordRows, AreSortedAndComeBackToTheirOrder)
{
    RecordRows all = rows();
    all.sort(0, Sorting::Ascending);
    EXPECT_EQ(ids(all).front(), 2);
    all.sort(2, Sorting::Ascending);
    EXPECT_THAT(ids(all), ElementsAre(2, 1, 4, 3)) << "as numbers; equal ones as they came";
    all.sort(2, Sorting::Descending);
    EXPECT_THAT(ids(all), ElementsAre(3, 1, 4, 2));
    all.sort(2, Sorting::None);
    EXPECT_THAT(ids(all), ElementsAre(1, 2, 3, 4));
}

TEST(RecordRows, AreMadeReadyForASearchBitByBit)
{
    RecordRows all = rows();
    EXPECT_TRUE(all.prepareSearch(3));
    EXPECT_FALSE(all.prepareSearch(3));
    all.search(u"weir"_s);
    EXPECT_THAT(ids(all), ElementsAre(1, 2));
    RecordRows early = rows();
    EXPECT_TRUE(early.prepareSearch(1));
    early.search(u"tide"_s);
    EXPECT_THAT(ids(early), ElementsAre(1, 3, 4)) << "a search does not wait";
    early.setRecords({params("id", 9, "email", "other@tide.example")});
    EXPECT_THAT(ids(early), ElementsAre(9));
}

TEST(RecordRows, ANewListKeepsSearchAndOrder)
{
    RecordRows all = rows();
    all.sort(2, Sorting::Descending);
    all.search(u"tide"_s);
    EXPECT_THAT(ids(all), ElementsAre(3, 1, 4));
    Records next = people();
    next.append(params("id", 5, "email", "new@tide.example", "age", 50));
    all.setRecords(next);
    EXPECT_THAT(ids(all), ElementsAre(3, 5, 1, 4));
}

TEST(RecordRows, ShowOnlyWhatIsWanted)
{
    RecordRows all = rows();
    all.setRecords(people(), [](const Record &record) { return num(record, "age") > 7; });
    EXPECT_THAT(ids(all), ElementsAre(1, 3, 4));
    EXPECT_EQ(all.total(), 3);
}

} // namespace
