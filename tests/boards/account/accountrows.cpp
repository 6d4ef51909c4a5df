// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/account/accountrows.h"

#include "accounttest.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using Offer = EngineTexts::Offer;

TEST(TokenLabel, ThisComputersTokensAreShownByWhatUsesThem)
{
    EXPECT_EQ(tokenLabel(u"desktop:mill"_s, u"mill"_s), u"This Mac (app)"_s);
    EXPECT_EQ(tokenLabel(u"cli:mill"_s, u"mill"_s), u"This Mac (quill command)"_s);
    EXPECT_EQ(tokenLabel(u"desktop:Mill.local"_s, u"mill"_s), u"This Mac (app)"_s);
    EXPECT_EQ(tokenLabel(u"cli:mill"_s, u"mill.example.org"_s), u"This Mac (quill command)"_s);
}

TEST(TokenLabel, EveryOtherLabelIsShownAsItIs)
{
    for (const QString &label : {u"desktop:other"_s, u"cli:milla"_s, u"laptop"_s, u"desktop:"_s, u"cli:"_s, u"mill"_s,
                                 u"Desktop:mill"_s, u"my desktop:mill"_s, QString()}) {
        EXPECT_EQ(tokenLabel(label, u"mill"_s), label);
    }
    EXPECT_EQ(tokenLabel(u"desktop:"_s, QString()), u"desktop:"_s) << "a computer without a name";
    EXPECT_EQ(tokenLabel(u"desktop:.local"_s, QString()), u"desktop:.local"_s);
}

TEST(TokenTexts, HaveShortDates)
{
    const TokenTexts texts = tokenTexts(token("t-1", "laptop"), u"mill"_s);
    EXPECT_EQ(texts.id, u"t-1"_s);
    EXPECT_EQ(texts.shown, u"laptop"_s);
    EXPECT_EQ(texts.created, u"Oct 14, 2024"_s);
    EXPECT_EQ(texts.expires, u"Jan 12, 2025"_s);
}

TEST(TokenTexts, WithoutAnEndATokenNeverExpires)
{
    Record forever = token("t-1", "laptop");
    forever.erase("expires_at");
    EXPECT_EQ(tokenTexts(forever, u"mill"_s).expires, u"Never"_s);
    forever["expires_at"] = nullptr;
    EXPECT_EQ(tokenTexts(forever, u"mill"_s).expires, u"Never"_s);
}

TEST(TokenTexts, ANumericIdIsTakenAsItsText)
{
    EXPECT_EQ(tokenTexts(params("token_id", 17), u"mill"_s).id, u"17"_s);
}

TEST(EngineTexts, TellTheStatusAsItStands)
{
    const Activity none;
    for (const char *status : {"Running", "Stopped", "Starting", "Broken"}) {
        const EngineTexts texts = engineTexts(params("status", status), none);
        EXPECT_EQ(texts.status, QString::fromLatin1(status));
        EXPECT_EQ(texts.running, texts.status == u"Running"_s);
        EXPECT_EQ(texts.offer, texts.running ? Offer::Stop : Offer::Start);
    }
}

TEST(EngineTexts, AnEmptyStatusIsAnEngineThatIsNotSetUp)
{
    const Activity none;
    for (const Record &engine : {Record(), params("status", ""), params("exists", false, "status", nullptr)}) {
        const EngineTexts texts = engineTexts(engine, none);
        EXPECT_EQ(texts.status, u"Not set up"_s);
        EXPECT_EQ(texts.offer, Offer::SetUp);
        EXPECT_EQ(texts.engine, u"—"_s);
    }
}

TEST(EngineTexts, NameWhatTheEngineHas)
{
    const Activity none;
    const EngineTexts texts = engineTexts(
        params("status", "Running", "memory", "4 GB", "disk", 80, "docker", "27.3.1", "limactl", "1.0.2"), none);
    EXPECT_EQ(texts.memory, u"4 GB"_s);
    EXPECT_EQ(texts.disk, u"80"_s);
    EXPECT_EQ(texts.docker, u"27.3.1"_s);
    EXPECT_EQ(texts.engine, u"limactl 1.0.2"_s);
}

TEST(EngineTexts, TheButtonOfWhatRunsStaysWhateverTheEngineSays)
{
    const std::vector<std::tuple<std::string, QString, Offer>> cases{{"engine.stop_safely", u"Stopping"_s, Offer::Stop},
                                                                     {"vm.start", u"Running"_s, Offer::Start},
                                                                     {"vm.prepare", u"Starting"_s, Offer::SetUp}};
    for (const auto &[method, status, offer] : cases) {
        Activity activity;
        RunningCall call;
        call.method = method;
        call.title = u"…"_s;
        const auto id = activity.begin(std::move(call));
        EXPECT_EQ(engineTexts(params("status", status), activity).offer, offer) << method;
        activity.end(id, {});
        EXPECT_NE(engineTexts(params("status", status), activity).offer, offer) << method;
    }
}

TEST(Account, IsClosingOnlyWhenItSaysSo)
{
    EXPECT_TRUE(isClosing(params("state", "closing")));
    EXPECT_FALSE(isClosing(params("state", "active")));
    EXPECT_FALSE(isClosing(params("state", "Closing")));
    EXPECT_FALSE(isClosing({}));
}

TEST(Account, TheShareOfThePlanIsUnknownWithoutOne)
{
    const auto state = stateWith({volume(1, u"photos"_s, 100 * gigabyte)});
    EXPECT_EQ(allocatedShare(*state), 0.0);
    state->account = params("purchased_capacity_bytes", 400 * gigabyte);
    EXPECT_DOUBLE_EQ(allocatedShare(*state), 0.25);
}

} // namespace
