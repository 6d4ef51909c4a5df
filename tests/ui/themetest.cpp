// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/theme.h"

#include <gtest/gtest.h>

using namespace quillfen;

namespace {

struct Entry {
    const char *hex;
    QColor colour;
};

} // namespace

TEST(Theme, EveryEntryHasItsFixedValue)
{
    const Entry entries[] = {{"#fdf6e3", Theme::bg},       {"#eee8d5", Theme::panel},      {"#f5efdc", Theme::panel2},
                             {"#ddd6c1", Theme::line},     {"#586e75", Theme::text},       {"#073642", Theme::heading},
                             {"#839496", Theme::muted},    {"#2aa198", Theme::accent},     {"#002b36", Theme::onAccent},
                             {"#1c7a73", Theme::ok},       {"#d9eee9", Theme::okBg},       {"#0f5a55", Theme::okText},
                             {"#9a5b00", Theme::warn},     {"#e3a33b", Theme::warnBright}, {"#a33a0f", Theme::danger},
                             {"#f8e9dd", Theme::dangerBg}, {"#7a2e0c", Theme::dangerText}, {"#002b36", Theme::dBg},
                             {"#073642", Theme::dPanel},   {"#01323d", Theme::dPanel2},    {"#0d4552", Theme::dLine},
                             {"#93a1a1", Theme::dText},    {"#eee8d5", Theme::dBright},    {"#657b83", Theme::dMuted}};
    for (const Entry &entry : entries) {
        EXPECT_EQ(entry.colour.name().toStdString(), entry.hex);
        EXPECT_EQ(entry.colour.alpha(), 255) << entry.hex;
    }
}

TEST(Theme, TierColoursStandInTierOrder)
{
    const char *const wanted[] = {"#cb4b16", "#e3a33b", "#2aa198", "#268bd2", "#6c71c4", "#586e75"};
    ASSERT_EQ(Theme::tierColors.size(), std::size(wanted));
    for (std::size_t tier = 0; tier < std::size(wanted); ++tier) {
        EXPECT_EQ(Theme::tierColors.at(tier).name().toStdString(), wanted[tier]);
    }
}

TEST(Theme, FadedKeepsTheColourAndSharesTheOpacity)
{
    const QColor half = Theme::faded(Theme::dBg, 0.42F);
    EXPECT_EQ(half.rgb(), Theme::dBg.rgb());
    EXPECT_EQ(half.alpha(), 107);
    EXPECT_EQ(Theme::faded(Theme::dBg, 1.0F), Theme::dBg);
}
