// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/searchkey.h"

#include "state/userlocale.h"

#include <gmock/gmock.h>

using namespace quillfen;

namespace {

bool finds(const char *query, const char *name)
{
    return searchKey(QString::fromUtf8(name)).contains(searchKey(QString::fromUtf8(query)));
}

class SearchKey : public testing::Test {
protected:
    LocaleOverride m_locale{"en_US"};
};

TEST_F(SearchKey, CaseDoesNotMatter)
{
    EXPECT_TRUE(finds("DOC", "Documents"));
    EXPECT_TRUE(finds("ments", "DOCUMENTS"));
    EXPECT_TRUE(finds("ÉTÉ", "photos d'été"));
    EXPECT_TRUE(finds("ΣΊΣΥΦΟΣ", "σίσυφος")) << "the final sigma too";
    EXPECT_TRUE(finds("STRASSE", "Hauptstraße"));
    EXPECT_FALSE(finds("dok", "Documents"));
}

TEST_F(SearchKey, AccentsMatterHoweverTheyAreWritten)
{
    EXPECT_TRUE(finds("e\u0301t\u00e9", "\u00c9te\u0301"));
    EXPECT_FALSE(finds("ete", "été"));
}

TEST_F(SearchKey, OfNothingIsNothing)
{
    EXPECT_TRUE(searchKey(QString()).isEmpty());
    EXPECT_TRUE(finds("", "Documents"));
}

TEST_F(SearchKey, DotsOfTheLetterIMatterInTurkishOnly)
{
    EXPECT_TRUE(finds("I", "i"));
    const LocaleOverride turkish("tr_TR");
    EXPECT_FALSE(finds("I", "i"));
    EXPECT_TRUE(finds("I", "ı"));
    EXPECT_TRUE(finds("İ", "i"));
}

} // namespace
