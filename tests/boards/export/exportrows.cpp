// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/export/exportrows.h"

#include "builders.h"

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

Record option(std::int64_t units)
{
    return params("name", "LTO-8 tape", "medium", "lto8", "units", units, "media_cost", "$78.00", "packing", "$6.00",
                  "work", "$25.00", "shipping", "$14.00");
}

TEST(MediaRow, SaysWhatEachPartCosts)
{
    const MediaRow row = mediaRow(option(1));
    EXPECT_EQ(row.medium, u"lto8"_s);
    EXPECT_EQ(row.title, u"LTO-8 tape"_s);
    EXPECT_EQ(row.caption, u"media $78.00 · packing $6.00 · work $25.00 · shipping $14.00"_s);
}

TEST(MediaRow, CountsFromTwoUnitsOn)
{
    EXPECT_EQ(mediaRow(option(0)).title, u"LTO-8 tape"_s);
    EXPECT_EQ(mediaRow(option(2)).title, u"LTO-8 tape × 2"_s);
    EXPECT_EQ(mediaRow(option(3)).title, u"LTO-8 tape × 3"_s);
    EXPECT_EQ(mediaRow(with(option(1), "units", "3")).title, u"LTO-8 tape × 3"_s) << "a number sent as text";
}

TEST(MediaRow, PricesAreTakenAsTheyAre)
{
    EXPECT_EQ(mediaRow(with(option(1), "media_cost", "%2", "packing", 6)).caption,
              u"media %2 · packing 6 · work $25.00 · shipping $14.00"_s);
    EXPECT_EQ(mediaRow(Record()).title, QString());
}

TEST(DownloadText, IsFreeWithoutAPrice)
{
    const QString freeText =
        u"Ready within the hour for most volumes; the link works for 48 hours. Free at this size."_s;
    EXPECT_EQ(downloadText(params("total", 0, "free_bytes", 100 * gigabyte)), freeText);
    EXPECT_EQ(downloadText(params("total", -1.5)), freeText);
    EXPECT_EQ(downloadText(params("total", "soon")), freeText);
    EXPECT_EQ(downloadText(params("total", "inf")), freeText);
    EXPECT_EQ(downloadText(Record()), freeText);
}

TEST(DownloadText, TellsPriceAndFreeSize)
{
    EXPECT_EQ(downloadText(params("total", 12.5, "free_bytes", 107374182400)),
              u"Ready within the hour for most volumes; the link works for 48 hours. "
              u"Retrieval $12.50 (free up to 100 GB)."_s);
    EXPECT_TRUE(downloadText(params("total", "12.504")).endsWith(u"Retrieval $12.50 (free up to 0 GB)."_s));
}

TEST(DownloadText, CutsTheFreeSizeToWholeGigabytes)
{
    EXPECT_TRUE(downloadText(params("total", 1, "free_bytes", gigabyte * 3 / 2)).endsWith(u"(free up to 1 GB)."_s));
}

TEST(EncryptionNote, NamesTheKeyFile)
{
    const Record mine = with(volume(1, u"Documents"_s), "encryption", "customer");
    EXPECT_EQ(encryptionNote(mine), u"Documents is encrypted. Its copy opens only with its key file, "
                                    u"quill-Documents.key. Without it nobody can read it, Quillfen included."_s);
    EXPECT_TRUE(encryptionNote(with(mine, "key_volume", "Papers")).contains(u"key file, quill-Papers.key."_s));
    EXPECT_EQ(encryptionNote(volume(1, u"Documents"_s)), QString());
}

TEST(ExportRow, OfADownload)
{
    const ExportRow row = exportRow(u"photos"_s, params("state", "ready", "delivery", "link", "link", "https://a/b",
                                                        "expires_at", "2026-11-21T09:12:00Z"));
    EXPECT_EQ(row.name, u"photos"_s);
    EXPECT_EQ(row.state, u"ready"_s);
    EXPECT_EQ(row.tone, ExportRow::Tone::Good);
    EXPECT_EQ(row.delivery, u"available until Sat, Nov 21 · 09:12:00"_s);
    EXPECT_EQ(row.link, u"https://a/b"_s);
    EXPECT_THAT(row.notes, IsEmpty());
}

TEST(ExportRow, OfShippedMedia)
{
    const ExportRow row =
        exportRow(u"Documents"_s, params("state", "shipped", "delivery", "media", "medium", "LTO-8 tape", "region",
                                         "US", "retrieval_note", "one", "key_note", "two", "tracking", "1Z 84W"));
    EXPECT_EQ(row.delivery, u"LTO-8 tape to US"_s);
    EXPECT_EQ(row.tone, ExportRow::Tone::Neutral);
    EXPECT_THAT(row.notes, ElementsAre(u"one"_s, u"two"_s, u"tracking 1Z 84W"_s));
    EXPECT_EQ(row.link, QString());
}

TEST(ExportRow, OfMediaWithALinkSaysBoth)
{
    EXPECT_EQ(exportRow(u"a"_s, params("delivery", "media", "medium", "SSD", "region", "EU", "expires_at",
                                       "2026-11-21T09:12:00Z"))
                  .delivery,
              u"SSD to EU · available until Sat, Nov 21 · 09:12:00"_s);
    EXPECT_EQ(exportRow(u"a"_s, params("delivery", "link", "medium", "SSD", "region", "EU")).delivery, QString());
}

TEST(ExportRow, OfAFailure)
{
    const ExportRow row = exportRow(u"vm-store"_s, params("state", "failed", "error", "too large"));
    EXPECT_EQ(row.tone, ExportRow::Tone::Bad);
    EXPECT_EQ(row.error, u"too large"_s);
    EXPECT_EQ(exportRow(u"x"_s, params("state", "ready", "error", "too large")).tone, ExportRow::Tone::Bad);
}

TEST(ExportRow, NotesThatSayNothingTakeNoRoom)
{
    EXPECT_THAT(exportRow(u"x"_s, params("retrieval_note", "", "key_note", nullptr, "tracking", "7")).notes,
                ElementsAre(u"tracking 7"_s));
}

TEST(Copies, AreRemovedUnderwayOrNeither)
{
    EXPECT_TRUE(isRemoved(params("state", "removed")));
    EXPECT_FALSE(isRemoved(params("state", "ready")));
    EXPECT_TRUE(isUnderway(params("state", "packing")));
    EXPECT_TRUE(isUnderway(params("state", "ordered", "delivery", "media")));
    for (const Record &settled :
         {params("state", "removed"), params("state", "failed"), params("state", "expired"),
          params("state", "ready", "link", "https://a"), params("state", "shipped", "tracking", "1Z"),
          params("state", "packing", "error", "no room")}) {
        EXPECT_FALSE(isUnderway(settled)) << json::serialize(settled);
    }
}

} // namespace
} // namespace quillfen
