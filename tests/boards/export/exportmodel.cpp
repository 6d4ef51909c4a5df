// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/export/exportmodel.h"

#include "boardtest.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

json::object option(const char *medium)
{
    return params("name", medium, "medium", medium, "units", 1);
}

json::value offer(std::initializer_list<const char *> media, double total = 0)
{
    json::array options;
    for (const char *medium : media) {
        options.push_back(option(medium));
    }
    return params("options", options, "retrieval", params("total", total, "free_bytes", 100 * gigabyte));
}

class ExportModelTest : public BoardTest {
protected:
    void SetUp() override
    {
        BoardTest::SetUp();
        give({volume(1, u"photos"_s), volume(2, u"music"_s)});
        agent.answer("export.media", offer({"ssd", "hdd"}));
        agent.answer("volumes.export", nullptr);
        agent.answer("volumes.export.set", json::object());
        agent.answer("export.remove", json::object());
    }

    /// The board is shown and has what it asked for.
    void shown()
    {
        model->follow();
        ASSERT_TRUE(eventually([&] { return agent.count("volumes.export") == 2 && !model->retrieval().isEmpty(); }));
        await(model->load());
        agent.clearLog();
    }

    [[nodiscard]] QStringList media() const
    {
        QStringList found;
        for (const Record &each : model->options()) {
            found << str(each, "medium");
        }
        return found;
    }

    std::shared_ptr<ExportModel> model = std::make_shared<ExportModel>(state);
};

TEST_F(ExportModelTest, BeginsWithTheFirstVolumeThenPricesThenCopies)
{
    model->follow();
    EXPECT_EQ(model->selected(), 1);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.export") == 2; }));
    EXPECT_THAT(agent.log(), ElementsAre("export.media", "volumes.export", "volumes.export"));
    EXPECT_EQ(sent("export.media"), params("volume_id", 1, "region", "US"));
    EXPECT_EQ(agent.requests("volumes.export").front().params, params("volume_id", 1));
    EXPECT_EQ(agent.requests("volumes.export").back().params, params("volume_id", 2));
    EXPECT_EQ(model->medium(), u"ssd"_s);
    EXPECT_EQ(model->retrieval(),
              u"Ready within the hour for most volumes; the link works for 48 hours. Free at this size."_s);
}

TEST_F(ExportModelTest, AnotherSetOfVolumesIsLoadedAndTheSameOneIsNot)
{
    shown();
    give({volume(2, u"music"_s), volume(1, u"photos"_s)});
    model->follow();
    give({volume(1, u"photos"_s), volume(3, u"films"_s)});
    agent.clearLog();
    model->follow();
    EXPECT_TRUE(eventually([&] { return agent.count("volumes.export") == 2; }));
    EXPECT_THAT(agent.log(), ElementsAre("export.media", "volumes.export", "volumes.export"));
}

TEST_F(ExportModelTest, AVolumeThatGoesTakesItsChoiceAndItsCopyAlong)
{
    agent.answer("volumes.export", params("state", "ready", "link", "https://a"));
    shown();
    EXPECT_EQ(model->exports().size(), 2U);
    give({volume(2, u"music"_s)});
    model->follow();
    EXPECT_EQ(model->selected(), 2);
    EXPECT_EQ(model->retrieval(), QString()) << "the price was the other volume's";
    EXPECT_TRUE(eventually([&] { return model->exports().size() == 1; }));
    give({});
    model->follow();
    EXPECT_EQ(model->selected(), std::nullopt);
    EXPECT_FALSE(model->canRequest());
}

TEST_F(ExportModelTest, CopiesThatFailOrAreNoneAreLeftOut)
{
    give({volume(1, u"a"_s), volume(2, u"b"_s), volume(3, u"c"_s), volume(4, u"d"_s)});
    agent.on("volumes.export", [](const json::object &asked) -> FakeAgent::Answer {
        switch (asked.at("volume_id").as_int64()) {
        case 1:
            return FakeAgent::Error{.message = "vault away"};
        case 2:
            return json::value(json::array());
        case 3:
            return json::value(nullptr);
        default:
            return json::value(params("state", "ready"));
        }
    });
    await(model->load());
    EXPECT_THAT(model->exports(), ElementsAre(Pair(4, params("state", "ready"))));
    EXPECT_EQ(toast(), QString());
}

TEST_F(ExportModelTest, ACopyThatCannotBeLearntAnyMoreGoes)
{
    agent.answer("volumes.export", params("state", "ready", "link", "https://a"));
    shown();
    agent.fail("volumes.export", {.message = "vault away"});
    await(model->load());
    EXPECT_THAT(model->exports(), IsEmpty());
}

TEST_F(ExportModelTest, ChoosingAVolumePricesItAtOnce)
{
    shown();
    agent.answer("export.media", offer({"ssd", "hdd"}, 12.5));
    agent.hold("export.media");
    model->chooseVolume(2);
    EXPECT_THAT(media(), IsEmpty());
    EXPECT_EQ(model->retrieval(), QString());
    ASSERT_TRUE(eventually([&] { return agent.count("export.media") == 1; }));
    EXPECT_EQ(sent("export.media"), params("volume_id", 2, "region", "US"));
    agent.release("export.media");
    EXPECT_TRUE(eventually([&] { return model->retrieval().endsWith(u"Retrieval $12.50 (free up to 100 GB)."_s); }));
}

TEST_F(ExportModelTest, PricesOfAnEarlierChoiceAreDropped)
{
    shown();
    agent.on("export.media", [](const json::object &asked) -> FakeAgent::Answer {
        const bool european = asked.at("region") == json::value("EU");
        return asked.at("volume_id") == json::value(2) && european ? offer({"right"}) : offer({"late"});
    });
    agent.hold("export.media");
    model->chooseRegion(u"other"_s);
    model->chooseVolume(2);
    model->chooseRegion(u"EU"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("export.media") == 3; }));
    QStringList seen;
    const Observer watch(
        {&model->options}, [&] { seen << media(); }, std::chrono::milliseconds(0));
    agent.release("export.media");
    ASSERT_TRUE(eventually([&] { return !media().isEmpty(); }));
    QTest::qWait(10);
    EXPECT_THAT(media(), ElementsAre(u"right"_s));
    EXPECT_FALSE(seen.contains(u"late"_s));
}

TEST_F(ExportModelTest, ARegionKeepsTheMediumThatItOffers)
{
    shown();
    model->medium = u"hdd"_s;
    agent.answer("export.media", offer({"bd", "hdd"}));
    model->chooseRegion(u"EU"_s);
    ASSERT_TRUE(eventually([&] { return media() == QStringList{u"bd"_s, u"hdd"_s}; }));
    EXPECT_EQ(sent("export.media"), params("volume_id", 1, "region", "EU"));
    EXPECT_EQ(model->medium(), u"hdd"_s);
}

TEST_F(ExportModelTest, ARegionWithoutTheMediumTakesItsFirst)
{
    shown();
    model->medium = u"hdd"_s;
    agent.answer("export.media", offer({"bd", "ssd"}));
    model->chooseRegion(u"other"_s);
    EXPECT_TRUE(eventually([&] { return model->medium() == u"bd"_s; }));
}

TEST_F(ExportModelTest, FailedPricesLeaveNoneAndSayFree)
{
    shown();
    agent.fail("export.media", {.message = "vault away"});
    model->chooseDelivery(Delivery::Media);
    EXPECT_TRUE(eventually([&] { return media().isEmpty(); }));
    EXPECT_TRUE(eventually([&] { return model->retrieval().endsWith(u"Free at this size."_s); }));
    EXPECT_EQ(model->medium(), QString());
    EXPECT_FALSE(model->canRequest()) << "what has no price is not ordered";
    EXPECT_EQ(toast(), QString());
}

TEST_F(ExportModelTest, AnAnswerThatIsNoneLeavesNoPrices)
{
    shown();
    for (const char *answer : {"[]", "null", R"({"options": 5})", R"({"options": [1, null]})"}) {
        agent.answer("export.media", json::parse(answer));
        await(model->loadOptions());
        EXPECT_THAT(media(), IsEmpty()) << answer;
        EXPECT_TRUE(model->retrieval().endsWith(u"Free at this size."_s)) << answer;
    }
}

TEST_F(ExportModelTest, ChoosingMediaPricesThem)
{
    shown();
    model->chooseDelivery(Delivery::Media);
    EXPECT_TRUE(eventually([&] { return agent.count("export.media") == 1; }));
    model->chooseDelivery(Delivery::Link);
    QTest::qWait(5);
    EXPECT_EQ(agent.count("export.media"), 1U);
}

TEST_F(ExportModelTest, RequestsADownload)
{
    shown();
    agent.answer("volumes.export", params("state", "packing", "delivery", "link"));
    await(model->request());
    EXPECT_EQ(sent("volumes.export.set"), params("volume_id", 1, "delivery", "link"));
    EXPECT_EQ(toast(),
              u"Copy requested. The vault is packing it; the download link appears under Recent copies and you "
              u"are e-mailed when it is ready."_s);
    EXPECT_EQ(agent.count("volumes.export"), 2U);
    EXPECT_EQ(model->exports().size(), 2U);
    EXPECT_EQ(agent.count("volumes.list"), 0U);
}

TEST_F(ExportModelTest, OrdersMediaWithTheAddressAlsoWhenItIsEmpty)
{
    shown();
    model->chooseDelivery(Delivery::Media);
    await(model->request());
    EXPECT_EQ(sent("volumes.export.set"),
              params("volume_id", 1, "delivery", "media", "medium", "ssd", "region", "US", "address", ""));
    EXPECT_EQ(toast(), u"Order placed. Quillfen confirms the price by e-mail before anything ships."_s);
    model->address = u"418 Alder Street"_s;
    model->medium = u"hdd"_s;
    await(model->request());
    EXPECT_EQ(sent("volumes.export.set"), params("volume_id", 1, "delivery", "media", "medium", "hdd", "region", "US",
                                                 "address", "418 Alder Street"));
}

TEST_F(ExportModelTest, NothingIsOrderedWithoutAPriceInSight)
{
    shown();
    agent.hold("export.media");
    model->chooseDelivery(Delivery::Media);
    model->chooseRegion(u"EU"_s);
    await(model->request());
    EXPECT_EQ(agent.count("volumes.export.set"), 0U);
    agent.release("export.media");
    EXPECT_TRUE(eventually([&] { return model->canRequest(); }));
}

TEST_F(ExportModelTest, WithoutAVolumeNothingIsRequested)
{
    give({});
    model->follow();
    await(model->request());
    await(model->loadOptions());
    EXPECT_THAT(agent.log(), IsEmpty());
}

TEST_F(ExportModelTest, AFailedRequestIsToldAndTheCopiesAreReadAgain)
{
    shown();
    agent.fail("volumes.export.set", {.message = "A copy of photos is being packed already."});
    await(model->request());
    EXPECT_EQ(toast(), u"A copy of photos is being packed already."_s);
    EXPECT_EQ(agent.count("volumes.export"), 2U);
    EXPECT_THAT(model->requesting(), IsEmpty());
}

TEST_F(ExportModelTest, OneRequestAtATime)
{
    shown();
    agent.hold("volumes.export.set");
    const QCoro::Task<> first = model->request();
    EXPECT_EQ(model->requesting(), QSet<std::int64_t>{1});
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.export.set") == 1; }));
    await(model->request());
    agent.release("volumes.export.set");
    await(first);
    EXPECT_EQ(agent.count("volumes.export.set"), 1U);
    EXPECT_THAT(model->requesting(), IsEmpty());
}

TEST_F(ExportModelTest, RemovesACopy)
{
    agent.answer("volumes.export", params("state", "ready"));
    shown();
    agent.answer("volumes.export", params("state", "removed"));
    await(model->remove(2));
    EXPECT_EQ(sent("export.remove"), params("volume_id", 2));
    EXPECT_EQ(toast(), u"copy removed"_s);
    EXPECT_EQ(model->exports().at(2), params("state", "removed"));
    EXPECT_THAT(model->removing(), IsEmpty());
}

TEST_F(ExportModelTest, AFailedRemovalIsToldAndTheCopiesAreReadAgain)
{
    shown();
    agent.fail("export.remove", {.message = "There is no copy of music to remove."});
    await(model->remove(2));
    EXPECT_EQ(toast(), u"There is no copy of music to remove."_s);
    EXPECT_EQ(agent.count("volumes.export"), 2U);
}

TEST_F(ExportModelTest, ACopyUnderwayIsAskedAboutWithEachRefresh)
{
    agent.on("volumes.export", [](const json::object &asked) -> FakeAgent::Answer {
        return params("state", asked.at("volume_id") == json::value(2) ? "packing" : "failed");
    });
    shown();
    agent.answer("volumes.export", params("state", "ready", "link", "https://a"));
    await(state->refresh());
    model->follow();
    ASSERT_TRUE(eventually([&] { return str(model->exports().at(2), "state") == u"ready"_s; }));
    EXPECT_EQ(agent.count("volumes.export"), 1U) << "the settled one is left alone";
    await(state->refresh());
    model->follow();
    QTest::qWait(5);
    EXPECT_EQ(agent.count("volumes.export"), 1U) << "and so is this one, now that it is ready";
    EXPECT_EQ(agent.count("export.media"), 0U);
}

TEST_F(ExportModelTest, ALaterRoundOfCopiesReplacesTheEarlier)
{
    shown();
    agent.hold("volumes.export");
    const QCoro::Task<> first = model->load();
    const QCoro::Task<> second = model->load();
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.export") == 2; }));
    agent.answer("volumes.export", params("state", "ready"));
    agent.release("volumes.export");
    ASSERT_TRUE(eventually([&] { return first.isReady() && second.isReady(); }));
    EXPECT_EQ(agent.count("volumes.export"), 3U) << "the first round ends at once";
}

enum class Act { RequestLink, OrderMedia, Remove };

void PrintTo(Act act, std::ostream *out)
{
    *out << (act == Act::RequestLink ? "RequestLink" : act == Act::OrderMedia ? "OrderMedia" : "Remove");
}

class AgentGone : public ExportModelTest, public testing::WithParamInterface<Act> {
protected:
    QCoro::Task<> act() { return GetParam() == Act::Remove ? model->remove(1) : model->request(); }
};

TEST_P(AgentGone, DuringAnActionLeavesOneMessageAndABoardThatWorksAgain)
{
    shown();
    if (GetParam() == Act::OrderMedia) {
        model->chooseDelivery(Delivery::Media);
        ASSERT_TRUE(eventually([&] { return agent.count("export.media") == 1 && model->canRequest(); }));
    }
    const char *const method = GetParam() == Act::Remove ? "export.remove" : "volumes.export.set";
    agent.silent(method);
    int messages = 0;
    const Observer watch(
        {&state->toast}, [&] { ++messages; }, std::chrono::milliseconds(0));
    const QCoro::Task<> action = act();
    ASSERT_TRUE(eventually([&] { return agent.count(method) == 1; }));
    agent.hangUp();
    await(action);
    EXPECT_TRUE(eventually([&] { return !state->connected() && messages == 1; }));
    EXPECT_NE(toast(), QString());
    QTest::qWait(5);
    EXPECT_EQ(messages, 1);

    agent.answer(method, json::object());
    state->connect();
    ASSERT_TRUE(eventually([&] { return state->connected(); }));
    await(model->reload());
    EXPECT_TRUE(model->canRequest());
    await(act());
    EXPECT_TRUE(toast() == u"copy removed"_s || toast().startsWith(u"Copy requested."_s) ||
                toast().startsWith(u"Order placed."_s))
        << toast().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Actions, AgentGone, testing::Values(Act::RequestLink, Act::OrderMedia, Act::Remove));

} // namespace
