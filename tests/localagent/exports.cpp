// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include "localagent/world/fields.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;
using testing::HasSubstr;

namespace {

constexpr std::int64_t documents = 3121;
constexpr std::int64_t photos = 3122;
constexpr std::int64_t studio = 3130;

json::value copyOf(TestAgent &agent, std::int64_t id)
{
    return agent.result("volumes.export", {{"volume_id", id}});
}

std::string stateOf(TestAgent &agent, std::int64_t id)
{
    const json::value copy = copyOf(agent, id);
    return copy.is_object() ? text(copy.at("state")) : "none";
}

json::object mediaOrder(std::int64_t id, std::string_view medium, std::string_view region = "US")
{
    return {
        {"volume_id", id}, {"delivery", "media"}, {"medium", medium}, {"region", region}, {"address", "Alder St 4"}};
}

json::value offers(TestAgent &agent, std::int64_t id, std::string_view region)
{
    return agent.result("export.media", {{"volume_id", id}, {"region", region}});
}

std::string mediaNames(const json::value &offer)
{
    std::string names;
    for (const json::value &option : offer.at("options").as_array()) {
        names += (names.empty() ? "" : " ") + text(option.at("medium"));
    }
    return names;
}

} // namespace

TEST(Media, HavePricesForTheSizeOfAVolume)
{
    TestAgent agent;
    const json::value offer = offers(agent, documents, "US");
    EXPECT_EQ(json::serialize(offer.at("options").at(0)),
              R"({"name":"BD-R XL 100 GB","medium":"bdxl","units":2,"media_cost":"$34.00","packing":"$6.00",)"
              R"("work":"$18.00","shipping":"$12.50"})");
    EXPECT_EQ(json::serialize(offer.at("options").at(1)),
              R"({"name":"LTO-8 tape","medium":"lto8","units":1,"media_cost":"$78.00","packing":"$6.00",)"
              R"("work":"$25.00","shipping":"$14.00"})");
    EXPECT_EQ(offer.at("options").at(2).at("name"), json::value("SSD 250 GB"));
    EXPECT_EQ(offer.at("options").at(3).at("name"), json::value("Hard disk 1 TB"));
    const json::value larger = offers(agent, photos, "US");
    EXPECT_EQ(larger.at("options").at(0).at("units"), json::value(6));
    EXPECT_EQ(larger.at("options").at(0).at("media_cost"), json::value("$102.00"));
    EXPECT_EQ(larger.at("options").at(2).at("name"), json::value("SSD 1 TB"));
}

TEST(Media, DependOnTheRegion)
{
    TestAgent agent;
    EXPECT_EQ(mediaNames(offers(agent, documents, "US")), "bdxl lto8 ssd hdd");
    EXPECT_EQ(mediaNames(offers(agent, documents, "other")), "bdxl ssd hdd");
    EXPECT_EQ(offers(agent, documents, "EU").at("options").at(0).at("shipping"), json::value("$19.00"));
    EXPECT_THAT(agent.refusal("export.media", {{"volume_id", documents}, {"region", "Mars"}}), HasSubstr("region"));
}

TEST(Media, ADownloadIsFreeUpToAHundredGigabytes)
{
    TestAgent agent;
    EXPECT_EQ(json::serialize(offers(agent, documents, "US").at("retrieval")),
              R"({"total":0E0,"free_bytes":107374182400})");
    EXPECT_EQ(offers(agent, photos, "US").at("retrieval").at("total"), json::value(12.5));
}

TEST(Exports, EverydayHasOneInEveryStateAPersonMeets)
{
    TestAgent agent;
    const json::value ready = copyOf(agent, photos);
    EXPECT_EQ(ready.at("state"), json::value("ready"));
    EXPECT_EQ(ready.at("expires_at"), json::value("2026-11-21T21:00:00.000Z"));
    EXPECT_THAT(text(ready.at("link")), testing::StartsWith("https://"));
    EXPECT_FALSE(ready.as_object().contains("error"));
    const json::value shipped = copyOf(agent, documents);
    EXPECT_EQ(shipped.at("medium"), json::value("LTO-8 tape"));
    EXPECT_EQ(shipped.at("key_note"), json::value("Opens only with quill-Documents.key; the key is not on the tape."));
    EXPECT_EQ(shipped.at("tracking"), json::value("1Z 84W 031 0390 2281"));
    EXPECT_EQ(stateOf(agent, agent.idOf("vm-store")), "failed");
    EXPECT_EQ(stateOf(agent, studio), "none");
}

TEST(Exports, ADownloadIsPackedAndItsLinkRunsOut)
{
    TestAgent agent;
    const json::value placed = agent.result("volumes.export.set", {{"volume_id", studio}, {"delivery", "link"}});
    EXPECT_EQ(placed.at("state"), json::value("packing"));
    EXPECT_EQ(placed.at("retrieval_note"), json::value("Retrieval $12.50 is charged with the next invoice."));
    EXPECT_FALSE(placed.as_object().contains("link"));
    agent.pass(10);
    EXPECT_EQ(stateOf(agent, studio), "packing") << "143.7 GB take longer";
    agent.pass(10);
    const json::value ready = copyOf(agent, studio);
    EXPECT_EQ(ready.at("state"), json::value("ready"));
    EXPECT_FALSE(ready.as_object().contains("key_note")) << "its key is the vault's";
    EXPECT_THAT(text(ready.at("expires_at")), testing::StartsWith("2026-11-22T12:00:"));
    agent.pass(48.0 * 3600);
    EXPECT_EQ(stateOf(agent, studio), "expired");
    EXPECT_FALSE(copyOf(agent, studio).as_object().contains("link"));
}

TEST(Exports, TheCopyOfAnEncryptedVolumeTellsOfItsKey)
{
    TestAgent agent;
    agent.result("volumes.export.set", {{"volume_id", documents}, {"delivery", "link"}});
    agent.pass(60);
    EXPECT_EQ(copyOf(agent, documents).at("key_note"),
              json::value("Opens only with quill-Documents.key; the key is not in the download."));
    EXPECT_FALSE(copyOf(agent, documents).as_object().contains("retrieval_note")) << "free at this size";
}

TEST(Exports, MediaAreOrderedPackedAndShipped)
{
    TestAgent agent;
    const json::value placed = agent.result("volumes.export.set", mediaOrder(studio, "bdxl", "EU"));
    EXPECT_EQ(json::serialize(placed),
              R"({"state":"ordered","delivery":"media","medium":"BD-R XL 100 GB","region":"EU"})");
    agent.pass(6);
    EXPECT_EQ(stateOf(agent, studio), "packing");
    agent.pass(60);
    EXPECT_EQ(stateOf(agent, studio), "shipped");
    EXPECT_THAT(text(copyOf(agent, studio).at("tracking")), testing::MatchesRegex("1Z 84W [0-9]+ [0-9]+ [0-9]+"));
    EXPECT_FALSE(copyOf(agent, studio).as_object().contains("link"));
}

TEST(Exports, AVolumeThatOutgrowsItsMediumFails)
{
    TestAgent agent;
    agent.result("volumes.export.set", mediaOrder(documents, "ssd"));
    agent.finish("volumes.resize", {{"volume_id", documents}, {"size_bytes", 300 * gigabyte}});
    agent.pass(120);
    EXPECT_EQ(stateOf(agent, documents), "failed");
    EXPECT_EQ(copyOf(agent, documents).at("error"),
              json::value("The volume is larger than the medium chosen; pick a larger one."));
}

TEST(Exports, AnOrderNeedsAnAddressAndAMediumThatIsOffered)
{
    TestAgent agent;
    json::object order = mediaOrder(documents, "ssd");
    order["address"] = "  ";
    EXPECT_EQ(agent.refusal("volumes.export.set", order), "Give the postal address that the copy goes to.");
    EXPECT_EQ(agent.refusal("volumes.export.set", mediaOrder(documents, "lto8", "other")),
              "That medium is not shipped there. Choose one of bdxl, ssd, hdd.");
    EXPECT_THAT(agent.refusal("volumes.export.set", {{"volume_id", documents}, {"delivery", "pigeon"}}),
                HasSubstr("delivery"));
    EXPECT_EQ(stateOf(agent, documents), "shipped") << "a refused order changes nothing";
}

TEST(Exports, OneIsPackedAtATimeForAVolume)
{
    TestAgent agent;
    agent.result("volumes.export.set", {{"volume_id", studio}, {"delivery", "link"}});
    EXPECT_EQ(agent.refusal("volumes.export.set", {{"volume_id", studio}, {"delivery", "link"}}),
              "A copy of studio-projects is being packed already. Remove it to order another one.");
    agent.result("volumes.export.set", {{"volume_id", photos}, {"delivery", "link"}});
}

TEST(Exports, ARemovedCopyStaysRemoved)
{
    TestAgent agent;
    agent.result("volumes.export.set", {{"volume_id", studio}, {"delivery", "link"}});
    agent.result("export.remove", {{"volume_id", studio}});
    EXPECT_EQ(json::serialize(copyOf(agent, studio)), R"({"state":"removed"})");
    agent.pass(600);
    EXPECT_EQ(stateOf(agent, studio), "removed") << "its packing has ended";
    EXPECT_EQ(agent.refusal("export.remove", {{"volume_id", studio}}),
              "There is no copy of studio-projects to remove.");
    agent.result("volumes.export.set", {{"volume_id", studio}, {"delivery", "link"}});
    EXPECT_EQ(stateOf(agent, studio), "packing");
}

TEST(Exports, RemovingNothingIsRefused)
{
    TestAgent agent;
    EXPECT_EQ(agent.refusal("export.remove", {{"volume_id", studio}}),
              "There is no copy of studio-projects to remove.");
    EXPECT_EQ(agent.refusal("export.remove", {{"volume_id", 1}}), "There is no volume 1 in this account.");
    EXPECT_EQ(agent.refusal("volumes.export", {{"volume_id", 1}}), "There is no volume 1 in this account.");
}

TEST(Exports, GoWithTheirVolume)
{
    TestAgent agent;
    agent.result("volumes.export.set", {{"volume_id", documents}, {"delivery", "link"}});
    agent.finish("volumes.remove", {{"volume_id", documents}});
    agent.pass(600);
    EXPECT_EQ(agent.refusal("volumes.export", {{"volume_id", documents}}), "There is no volume 3121 in this account.");
}

TEST(Exports, AWorldNamesItsVolumes)
{
    EXPECT_THROW(TestAgent agent(R"({"exports": [{"volume_id": 9}]})"), WorldError);
    TestAgent agent(R"({"account": {"signed_in": true}, "volumes": [{"id": 7, "name": "a", "used_gb": 10}],
                        "exports": [{"volume_id": 7, "state": "packing"}]})");
    EXPECT_EQ(stateOf(agent, 7), "packing");
    agent.pass(7);
    EXPECT_EQ(stateOf(agent, 7), "ready");
}
