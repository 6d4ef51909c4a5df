// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/volumerows.h"

#include "builders.h"

#include "boards/volumes/keyfiles.h"
#include "ui/theme.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace {

using namespace quillfen;
using namespace Qt::StringLiterals;

class VolumeRows : public testing::Test {
protected:
    VolumeRows() { qputenv("HOME", home.path().toUtf8()); }
    ~VolumeRows() override { qputenv("HOME", before); }

    [[nodiscard]] VolumeRow row(const Record &volume) { return volumeRow(*state, volume, keyFiles); }

    void addKey(const QString &name) const
    {
        QDir(home.path()).mkpath(u".quill"_s);
        QFile file(home.filePath(u".quill/quill-%1.key"_s.arg(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    QByteArray before = qgetenv("HOME");
    QTemporaryDir home;
    std::shared_ptr<AppState> state = stateWith({});
    KeyFiles keyFiles;
};

TEST_F(VolumeRows, NameAndSizeAreTheRecordsOwn)
{
    const VolumeRow shown = row(volume(1, u"Documents"_s, 100 * gigabyte));
    EXPECT_EQ(shown.name, u"Documents"_s);
    EXPECT_EQ(shown.size, u"100 GB"_s);
    EXPECT_EQ(row(volume(1, u"x"_s, 1536 * gigabyte)).size, u"1.5 TB"_s);
}

TEST_F(VolumeRows, SizesSentAsTextAreRead)
{
    EXPECT_EQ(row(with(volume(1, u"x"_s), "size_bytes", "21474836480")).size, u"20 GB"_s);
}

TEST_F(VolumeRows, UsedShowsADashBelowOneByte)
{
    EXPECT_EQ(usedText({}), u"—"_s);
    EXPECT_EQ(usedText(params("sync", nullptr)), u"—"_s);
    EXPECT_EQ(usedText(params("sync", params("local", "unknown"))), u"—"_s);
    EXPECT_EQ(usedText(params("sync", params("local", params("OTHER", 1)))), u"—"_s);
    EXPECT_EQ(usedText(usedStatus(0)), u"—"_s);
    EXPECT_EQ(usedText(usedStatus(-5)), u"—"_s);
    EXPECT_EQ(usedText(usedStatus(1)), u"0.0 GB"_s);
    EXPECT_EQ(usedText(usedStatus(2 * gigabyte)), u"2 GB"_s);
}

TEST_F(VolumeRows, UsedComesFromTheStatusOfThatVolume)
{
    setStatus(*state, 1, usedStatus(3 * gigabyte / 2));
    EXPECT_EQ(row(volume(1, u"a"_s)).used, u"1.5 GB"_s);
    EXPECT_EQ(row(volume(2, u"b"_s)).used, u"—"_s);
}

TEST_F(VolumeRows, ShareIsInUpperCaseAndSaysWhetherItIsMounted)
{
    state->mounts = Records{params("name", "Documents", "mountpoint", "/home/mara/Quillfen/Documents")};
    EXPECT_EQ(row(volume(1, u"Documents"_s)).share, u"SMB · mounted"_s);
    EXPECT_EQ(row(volume(2, u"documents"_s)).share, u"SMB · not mounted"_s);
    EXPECT_EQ(row(with(volume(3, u"x"_s), "presentation_type", "iscsi")).share, u"ISCSI · not mounted"_s);
}

TEST_F(VolumeRows, AMountWithoutAPathIsAMount)
{
    state->mounts = Records{params("name", "Documents")};
    EXPECT_EQ(row(volume(1, u"Documents"_s)).share, u"SMB · mounted"_s);
}

TEST_F(VolumeRows, AnyOtherEncryptionIsOff)
{
    addKey(u"x"_s);
    for (const char *value : {"", "none", "Customer", "provider", "customer "}) {
        EXPECT_EQ(row(with(volume(1, u"x"_s), "encryption", value)).encryption, Encryption::Off) << value;
    }
    EXPECT_EQ(row(with(volume(1, u"x"_s), "encryption", nullptr)).encryption, Encryption::Off);
    EXPECT_EQ(row({}).encryption, Encryption::Off);
}

TEST_F(VolumeRows, TheKeyIsHereWhenItsFileIs)
{
    addKey(u"photos"_s);
    EXPECT_EQ(row(with(volume(1, u"photos"_s), "encryption", "customer")).encryption, Encryption::KeyHere);
    EXPECT_EQ(row(with(volume(2, u"other"_s), "encryption", "customer")).encryption, Encryption::KeyElsewhere);
}

TEST_F(VolumeRows, TheKeyOfACopyIsItsOriginals)
{
    addKey(u"photos"_s);
    const Record copy = with(volume(2, u"photos-copy"_s), "encryption", "customer", "key_volume", "photos");
    EXPECT_EQ(row(copy).encryption, Encryption::KeyHere);
}

TEST_F(VolumeRows, EncryptionInWords)
{
    EXPECT_EQ(encryptionText(Encryption::KeyHere), u"On · key here"_s);
    EXPECT_EQ(encryptionText(Encryption::KeyElsewhere), u"On · key elsewhere"_s);
    EXPECT_EQ(encryptionText(Encryption::Off), u"Off"_s);
}

TEST_F(VolumeRows, OffsiteIsTheStatesWord)
{
    setStatus(*state, 1, syncedStatus());
    setStatus(*state, 2, uploadingStatus(87));
    EXPECT_EQ(row(volume(1, u"a"_s)).offsite, u"100% · synced"_s);
    EXPECT_EQ(row(volume(1, u"a"_s)).offsiteColour, Theme::ok);
    EXPECT_EQ(row(volume(2, u"b"_s)).offsite, u"87% · uploading"_s);
    EXPECT_EQ(row(volume(2, u"b"_s)).offsiteColour, Theme::warn);
    EXPECT_EQ(row(volume(3, u"c"_s)).offsite, u"…"_s);
    EXPECT_EQ(row(volume(3, u"c"_s)).offsiteColour, Theme::muted);
}

TEST_F(VolumeRows, OnlyAnApplianceThatWantsAttentionIsColoured)
{
    state->localAppliances = QMap<QString, QString>{
        {u"quill-vol-1"_s, u"Up 3 hours"_s}, {u"quill-vol-2"_s, u"Exited (0)"_s}, {u"quill-vol-3"_s, u"Up 1 minute"_s}};
    setStatus(*state, 1, syncedStatus());
    EXPECT_EQ(row(volume(1, u"a"_s)).appliance, u"running here"_s);
    EXPECT_EQ(row(volume(1, u"a"_s)).applianceColour, Theme::text);
    EXPECT_EQ(row(volume(2, u"b"_s)).appliance, u"stopped here"_s);
    EXPECT_EQ(row(volume(2, u"b"_s)).applianceColour, Theme::warn);
    EXPECT_EQ(row(volume(3, u"c"_s)).appliance, u"running here · connecting"_s);
    EXPECT_EQ(row(volume(3, u"c"_s)).applianceColour, Theme::warn);
    EXPECT_EQ(row(volume(4, u"d"_s)).appliance, u"engine stopped"_s);
    EXPECT_EQ(row(volume(4, u"d"_s)).applianceColour, Theme::text);
}

TEST_F(VolumeRows, ARecordWithoutFieldsIsARowOfZeros)
{
    const VolumeRow shown = row({});
    EXPECT_EQ(shown.name, QString());
    EXPECT_EQ(shown.size, u"0 GB"_s);
    EXPECT_EQ(shown.used, u"—"_s);
    EXPECT_EQ(shown.share, u" · not mounted"_s);
    EXPECT_EQ(shown.offsite, u"…"_s);
}

TEST_F(VolumeRows, WhatANameHidesIsShown)
{
    const VolumeRow shown = row(with(volume(1, u"safe\u202Efdp.exe\nsecond"_s), "presentation_type", "s\u202Emb"));
    EXPECT_FALSE(shown.name.contains(QChar(0x202E)));
    EXPECT_FALSE(shown.name.contains(u'\n'));
    EXPECT_FALSE(shown.share.contains(QChar(0x202E)));
    EXPECT_TRUE(shown.name.startsWith(u"safe"_s));
}

TEST_F(VolumeRows, TheCellsStandUnderTheirCaptions)
{
    setStatus(*state, 1, uploadingStatus(87));
    const VolumeRow shown = row(volume(1, u"Documents"_s));
    QStringList cells;
    QStringList captions;
    for (int column = 0; column < volumeColumns; ++column) {
        captions << columnTitle(static_cast<VolumeColumn>(column));
        cells << cellText(shown, static_cast<VolumeColumn>(column));
    }
    EXPECT_EQ(captions.join(u'|'), u"Name|Size|Used|Share|Appliance|Encryption|Offsite"_s);
    EXPECT_EQ(cells.join(u'|'),
              u"Documents|100 GB|—|SMB · not mounted|running on another computer|Off|87% · uploading"_s);
    EXPECT_EQ(rowDescription(shown), u"Size 100 GB, Used —, Share SMB · not mounted, Appliance running on another "
                                     u"computer, Encryption Off, Offsite 87% · uploading"_s);
}

TEST(VolumesLine, CountsInTheSingularAndThePlural)
{
    EXPECT_EQ(volumesLine(1, true), u"1 volume · all protected"_s);
    EXPECT_EQ(volumesLine(2, true), u"2 volumes · all protected"_s);
    EXPECT_EQ(volumesLine(1, false), u"1 volume · uploading"_s);
    EXPECT_EQ(volumesLine(5, false), u"5 volumes · uploading"_s);
    EXPECT_EQ(volumesLine(10'000, true), u"10000 volumes · all protected"_s);
}

TEST(VolumesLine, SaysWhenThereIsNone)
{
    EXPECT_EQ(volumesLine(0, true), u"No volumes yet"_s);
    EXPECT_EQ(volumesLine(0, false), u"No volumes yet"_s);
}

} // namespace
