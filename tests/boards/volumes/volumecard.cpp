// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/volumecard.h"

#include "boardtest.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;

class VolumeCardTest : public testing::Test {
protected:
    VolumeCardTest()
    {
        m_before = qgetenv("HOME");
        qputenv("HOME", home.path().toUtf8());
    }
    ~VolumeCardTest() override { qputenv("HOME", m_before); }

    [[nodiscard]] VolumeCard card(const Record &record) const { return volumeCard(*state, record); }

    void makeKey(const QString &name) const
    {
        QDir().mkpath(home.path() + u"/.quill"_s);
        QFile file(home.path() + u"/.quill/quill-"_s + name + u".key"_s);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    QTemporaryDir home;
    std::shared_ptr<AppState> state = stateWith({});

private:
    QByteArray m_before;
};

TEST_F(VolumeCardTest, OneHundredPercentIsProtectedAnythingElseSaysItself)
{
    setStatus(*state, 1, syncedStatus());
    EXPECT_EQ(card(volume(1, u"a"_s)).protection, VolumeCard::Protection::Protected);
    EXPECT_EQ(card(volume(1, u"a"_s)).protectionText, u"Protected"_s);
    setStatus(*state, 1, uploadingStatus(97));
    EXPECT_EQ(card(volume(1, u"a"_s)).protection, VolumeCard::Protection::Pending);
    EXPECT_EQ(card(volume(1, u"a"_s)).protectionText, u"97% · uploading"_s);
}

TEST_F(VolumeCardTest, TellsTheApplianceState)
{
    state->vm = params("status", "Running");
    state->localAppliances = QMap<QString, QString>{{u"quill-vol-1"_s, u"Up 3 hours"_s}};
    EXPECT_EQ(card(volume(1, u"a"_s)).applianceText, u"appliance running here · connecting"_s);
}

TEST_F(VolumeCardTest, StartIsOfferedWithoutARunningApplianceMountWithOne)
{
    EXPECT_TRUE(card(volume(1, u"a"_s)).offersStart);
    EXPECT_FALSE(card(volume(1, u"a"_s)).offersMount);
    state->localAppliances = QMap<QString, QString>{{u"quill-vol-1"_s, u"Exited (0)"_s}};
    EXPECT_TRUE(card(volume(1, u"a"_s)).offersStart);
    state->localAppliances = QMap<QString, QString>{{u"quill-vol-1"_s, u"Up 3 hours"_s}};
    EXPECT_FALSE(card(volume(1, u"a"_s)).offersStart);
    EXPECT_TRUE(card(volume(1, u"a"_s)).offersMount);
    state->mounts = Records{params("name", "a", "mountpoint", "/home/u/Quillfen/a")};
    EXPECT_FALSE(card(volume(1, u"a"_s)).offersMount);
    EXPECT_TRUE(card(volume(1, u"a"_s)).isMounted);
}

TEST_F(VolumeCardTest, AnApplianceElsewhereCanBeMountedHere)
{
    setStatus(*state, 1, syncedStatus());
    EXPECT_FALSE(card(volume(1, u"a"_s)).offersStart);
    EXPECT_TRUE(card(volume(1, u"a"_s)).offersMount);
}

TEST_F(VolumeCardTest, IscsiIsNeverMountedHere)
{
    setStatus(*state, 1, syncedStatus());
    const VolumeCard shown = card(with(volume(1, u"a"_s), "presentation_type", "iscsi"));
    EXPECT_TRUE(shown.isIscsi);
    EXPECT_FALSE(shown.offersMount);
    EXPECT_FALSE(card(with(volume(1, u"a"_s), "presentation_type", "nfs")).isIscsi);
}

TEST_F(VolumeCardTest, TheMountLineSaysWhereOrWhereItWouldBe)
{
    VolumeCard shown = card(volume(1, u"photos"_s));
    EXPECT_EQ(shown.mountLine, u"~/Quillfen/photos (when mounted)"_s);
    EXPECT_EQ(shown.mountPath, u"~/Quillfen/photos"_s);
    state->mounts = Records{params("name", "photos", "mountpoint", "/mnt/p")};
    shown = card(volume(1, u"photos"_s));
    EXPECT_EQ(shown.mountLine, u"/mnt/p"_s);
    EXPECT_EQ(shown.mountPath, u"/mnt/p"_s);
    EXPECT_EQ(shown.folder, u"/mnt/p"_s);
}

TEST_F(VolumeCardTest, AMountThatDoesNotSayWhereIsInTheUsualFolder)
{
    state->mounts = Records{params("name", "photos")};
    const VolumeCard shown = card(volume(1, u"photos"_s));
    EXPECT_TRUE(shown.isMounted);
    EXPECT_EQ(shown.mountLine, u"~/Quillfen/photos"_s);
    EXPECT_EQ(shown.folder, home.path() + u"/Quillfen/photos"_s);
}

TEST_F(VolumeCardTest, NamesAreTakenForWhatTheyAre)
{
    EXPECT_EQ(card(volume(1, u"100 %1 %2"_s)).mountLine, u"~/Quillfen/100 %1 %2 (when mounted)"_s);
}

TEST_F(VolumeCardTest, StatisticsAreOfTheSyncStatus)
{
    EXPECT_EQ(card(volume(1, u"a"_s)).cache, u"0 GB"_s);
    setStatus(*state, 1, params("sync", params("cache_bytes", gigabyte * 3 / 2, "pending_bytes", 2 * gigabyte)));
    EXPECT_EQ(card(volume(1, u"a"_s)).cache, u"1.5 GB"_s);
    EXPECT_EQ(card(volume(1, u"a"_s)).waiting, u"2 GB"_s);
}

TEST_F(VolumeCardTest, OnlyACustomersKeyHasALine)
{
    EXPECT_FALSE(card(volume(1, u"a"_s)).hasOwnKey);
    EXPECT_FALSE(card(with(volume(1, u"a"_s), "encryption", "vault")).hasOwnKey);
    const VolumeCard shown = card(with(volume(1, u"a"_s), "encryption", "customer"));
    EXPECT_TRUE(shown.hasOwnKey);
    EXPECT_FALSE(shown.keyHere);
    EXPECT_EQ(shown.keyTitle, u"Encrypted with a key only you hold · key is NOT on this Mac"_s);
    EXPECT_EQ(shown.keyFile, u"~/.quill/quill-a.key"_s);
    EXPECT_EQ(shown.keyNote, u" · back it up somewhere that is not this Mac; without it nobody can read this volume, "
                             "Quillfen included."_s);
}

TEST_F(VolumeCardTest, AKeyOnThisComputerSaysSo)
{
    makeKey(u"a"_s);
    const VolumeCard shown = card(with(volume(1, u"a"_s), "encryption", "customer"));
    EXPECT_TRUE(shown.keyHere);
    EXPECT_EQ(shown.keyTitle, u"Encrypted with a key only you hold · key on this Mac"_s);
    EXPECT_EQ(shown.keyPath, home.path() + u"/.quill/quill-a.key"_s);
}

TEST_F(VolumeCardTest, AFolderIsNoKey)
{
    ASSERT_TRUE(QDir().mkpath(home.path() + u"/.quill/quill-a.key"_s));
    EXPECT_FALSE(card(with(volume(1, u"a"_s), "encryption", "customer")).keyHere) << "as the table says it";
}

TEST_F(VolumeCardTest, TheKeyOfAnotherVolumeIsNamed)
{
    const Record copy = with(volume(1, u"accounts-2025"_s), "encryption", "customer", "key_volume", "accounts");
    EXPECT_EQ(card(copy).keyFile, u"~/.quill/quill-accounts.key"_s);
    EXPECT_TRUE(card(copy).keyNote.startsWith(u" (the key of accounts, which this copy was made from) · back it up"_s));
    const Record own = with(volume(1, u"accounts"_s), "encryption", "customer", "key_volume", "accounts");
    EXPECT_TRUE(card(own).keyNote.startsWith(u" · back it up"_s));
}

TEST_F(VolumeCardTest, ARecordWithoutFieldsIsShownAllTheSame)
{
    const VolumeCard shown = card(Record());
    EXPECT_EQ(shown.name, QString());
    EXPECT_EQ(shown.cache, u"0 GB"_s);
}

TEST(TypedSize, TakesWholeNumbersFromOneUp)
{
    EXPECT_EQ(typedSize(u"3"_s, 2), 3);
    EXPECT_EQ(typedSize(u" 3 "_s, 2), 3);
    EXPECT_EQ(typedSize(u"+3"_s, 2), 3);
    EXPECT_EQ(typedSize(u"1"_s, 2), 1);
    for (const QString &text : {u"0"_s, u"-5"_s, u"ten"_s, u""_s, u"2.5"_s, u"3 GB"_s, u"1e3"_s, u"0x10"_s,
                                u"9223372036854775808"_s, u"8589934592"_s, u"٣"_s}) {
        EXPECT_EQ(typedSize(text, 2), std::nullopt) << text.toStdString();
    }
}

TEST(TypedSize, TheCurrentSizeIsNoChange)
{
    EXPECT_EQ(typedSize(u"2"_s, 2), std::nullopt);
}

TEST(WholeGB, IsTheWholePartInUnitsOfTwoToTheThirty)
{
    EXPECT_EQ(wholeGB(params("size_bytes", std::int64_t{1} << 31)), 2);
    EXPECT_EQ(wholeGB(params("size_bytes", (std::int64_t{1} << 31) - 1)), 1);
    EXPECT_EQ(wholeGB(Record()), 0);
}

TEST_F(VolumeCardTest, TheFirstOfTwoVolumesWithOneIdCounts)
{
    state->volumes = Records{volume(1, u"a"_s), volume(1, u"b"_s)};
    ASSERT_NE(volumeWithId(*state, 1), nullptr);
    EXPECT_EQ(str(*volumeWithId(*state, 1), "name"), u"a"_s);
    EXPECT_EQ(volumeWithId(*state, 2), nullptr);
}

} // namespace
