// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/text/label.h"
#include "ui/text/tooltip.h"

#include <gtest/gtest.h>

using namespace quillfen;
using namespace Qt::StringLiterals;

TEST(MadeVisible, OrdinaryTextIsSharedAsItIs)
{
    const QString text = u"Größe · 512 GB — 写真 👩\u200D👧 …"_s;
    const QString shown = madeVisible(text);
    EXPECT_EQ(shown, text);
    EXPECT_EQ(shown.constData(), text.constData()) << "copied for nothing";
}

TEST(MadeVisible, LineEndsTabsAndControlsBecomeSigns)
{
    EXPECT_EQ(madeVisible(u"a\nb\tc\rd"_s), u"a␊b␉c␍d"_s);
    EXPECT_EQ(madeVisible(QString(QChar(u'\0')) + QChar(0x1B) + QChar(0x7F)), u"␀␛␡"_s);
    EXPECT_EQ(madeVisible(QString(QChar(0x85))), u"⟨U+0085⟩"_s);
}

TEST(MadeVisible, BidirectionalMarksLoseTheirPower)
{
    for (const char16_t mark : {u'\x061C', u'\x200E', u'\x200F', u'\x202A', u'\x202B', u'\x202C', u'\x202D', u'\x202E',
                                u'\x2066', u'\x2067', u'\x2068', u'\x2069'}) {
        const QString shown = madeVisible(u"gnp."_s + QChar(mark) + u"exe"_s);
        EXPECT_FALSE(shown.contains(QChar(mark)));
        EXPECT_TRUE(shown.contains(QString::number(mark, 16).toUpper().rightJustified(4, u'0'))) << shown.toStdString();
    }
    EXPECT_EQ(madeVisible(QStringLiteral("a\u202Eb")), u"a⟨U+202E⟩b"_s);
}

TEST(MadeVisible, SeparatorsAndInvisibleCharactersAreShown)
{
    EXPECT_EQ(madeVisible(QStringLiteral("\u2028\u2029")), u"⟨U+2028⟩⟨U+2029⟩"_s);
    EXPECT_EQ(madeVisible(QStringLiteral("a\u200Bb\uFEFFc\u00ADd\u2060")), u"a⟨U+200B⟩b⟨U+FEFF⟩c⟨U+00AD⟩d⟨U+2060⟩"_s);
    EXPECT_EQ(madeVisible(QStringLiteral("\U000E0041")), u"⟨U+E0041⟩"_s);
}

TEST(MadeVisible, JoinersStayWhereTheyShapeAndShowWhereTheyDeceive)
{
    const QString persian = QStringLiteral("\u0645\u06CC\u200C\u062E");
    EXPECT_EQ(madeVisible(persian), persian);
    EXPECT_EQ(madeVisible(QStringLiteral("pay\u200Cpal")), u"pay⟨U+200C⟩pal"_s);
}

TEST(MadeVisible, HalvesOfPairsAreShown)
{
    EXPECT_EQ(madeVisible(QString(QChar(0xD83D)) + u"x"_s), u"⟨U+D83D⟩x"_s);
    EXPECT_EQ(madeVisible(QString(QChar(0xDC00))), u"⟨U+DC00⟩"_s);
}

TEST(PlainToolTip, IsNeverTakenForMarkup)
{
    EXPECT_EQ(plainToolTip(u"a name"_s), u"a name"_s);
    const QString tip = plainToolTip(u"<b>bold</b> & <img src=x>"_s);
    EXPECT_TRUE(tip.contains(u"&lt;b&gt;bold&lt;/b&gt; &amp; &lt;img"_s)) << tip.toStdString();
    EXPECT_FALSE(tip.contains(u"<img"_s));
    const QString entity = plainToolTip(u"1 &lt; 2"_s);
    EXPECT_TRUE(!Qt::mightBeRichText(entity) || entity.contains(u"&amp;lt;"_s)) << entity.toStdString();
}

TEST(PlainToolTip, LongTextsAreBrokenAndCut)
{
    const QString tip = plainToolTip(QString(1 << 20, u'm'));
    EXPECT_LT(tip.size(), 6000);
    EXPECT_LE(tip.count(u'\n'), 24);
    EXPECT_GT(tip.count(u'\n'), 2);
    EXPECT_TRUE(tip.endsWith(u'…'));
}
