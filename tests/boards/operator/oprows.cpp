// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/oprows.h"

#include "operatortest.h"

#include "ui/theme.h"

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;

TEST(OperatorTabs, AnyUnknownNameShowsTheHubs)
{
    EXPECT_EQ(operatorTab(u"users"_s), OperatorTab::Users);
    EXPECT_EQ(operatorTab(u"tokens"_s), OperatorTab::Tokens);
    EXPECT_EQ(operatorTab(u"exports"_s), OperatorTab::Exports);
    for (const char *name : {"hubs", "", "Users", "nonsense"}) {
        EXPECT_EQ(operatorTab(QString::fromLatin1(name)), OperatorTab::Hubs) << name;
    }
}

TEST(HubRows, OnlyThePrimaryIsPrimary)
{
    EXPECT_TRUE(hubRow(hub(1, "a", "primary")).primary);
    EXPECT_FALSE(hubRow(hub(1, "a", "replica")).primary);
    EXPECT_FALSE(hubRow(hub(1, "a", "Primary")).primary);
    Record without = hub(1, "a", "primary");
    without.erase("role");
    EXPECT_FALSE(hubRow(without).primary);
    EXPECT_EQ(hubRow(without).role, QString());
}

TEST(HubRows, SoldShowsOnlyWhereTheAgentTells)
{
    EXPECT_EQ(hubRow(hub(7, "a", "replica")).sold, u"70% sold"_s);
    EXPECT_EQ(hubRow(params("sold_pct", 0)).sold, u"0% sold"_s);
    EXPECT_EQ(hubRow(params("sold_pct", 12.5)).sold, u"12.5% sold"_s);
    EXPECT_EQ(hubRow(params("name", "a")).sold, QString());
    EXPECT_EQ(hubRow(params("sold_pct", nullptr)).sold, QString());
}

TEST(HubRows, ALagIsShownAsItComes)
{
    EXPECT_EQ(replicaRow(params("lag", "41 s")).lag, u"lag 41 s"_s);
    EXPECT_EQ(replicaRow(params("lag", 3)).lag, u"lag 3"_s);
    EXPECT_EQ(replicaRow(params("lag", 0.5)).lag, u"lag 0.5"_s);
    EXPECT_EQ(replicaRow(params("name", "hub-b")).lag, QString());
}

TEST(PromotionTitle, ThereIsNoneWhileNothingIsPromoted)
{
    EXPECT_EQ(promotionTitle({}), QString());
    EXPECT_EQ(promotionTitle(params("state", "")), QString());
    EXPECT_EQ(promotionTitle(params("state", "idle")), QString());
    EXPECT_EQ(promotionTitle(params("state", nullptr)), QString());
    EXPECT_EQ(promotionTitle(params("state", "catching up")), u"Promotion: catching up"_s);
}

TEST(UserRows, WithoutAStateTheStatusCounts)
{
    Record older = user(1, u"a@b.example"_s);
    older.erase("state");
    older["status"] = "pending";
    EXPECT_EQ(userRow(older).state, u"pending"_s);
    EXPECT_TRUE(userRow(older).pending);
    EXPECT_FALSE(userRow(user(1, u"a@b.example"_s)).pending);
    older["state"] = "active";
    EXPECT_EQ(userRow(older).state, u"active"_s);
}

TEST(UserRows, SayWhoAndSinceWhen)
{
    const UserRow row = userRow(user(7, u"a@b.example"_s));
    EXPECT_EQ(row.id, 7);
    EXPECT_EQ(row.email, u"a@b.example"_s);
    EXPECT_EQ(row.tenant, u"Northmere"_s);
    EXPECT_EQ(row.created, u"Sep 2, 2024"_s);
}

TEST(TenantRows, SayWhatIsBoughtAndInUse)
{
    const TenantRow row = tenantRow(params("name", "Northmere", "purchased_capacity_bytes", std::int64_t{2048} << 30,
                                           "allocated_bytes", std::int64_t{384} << 30, "state", "closing"));
    EXPECT_EQ(row.name, u"Northmere"_s);
    EXPECT_EQ(row.line, u"2.0 TB purchased · 384 GB allocated · closing"_s);
}

TEST(TokenRows, EitherSignOfRevocationCounts)
{
    EXPECT_FALSE(isRevoked(token(1, u"x"_s)));
    EXPECT_TRUE(isRevoked(params("revoked", true)));
    EXPECT_TRUE(isRevoked(params("revoked_at", "2026-01-01T00:00:00Z")));
    EXPECT_FALSE(isRevoked(params("revoked", false, "revoked_at", "")));
    EXPECT_FALSE(isRevoked(params("revoked", false, "revoked_at", nullptr)));
    EXPECT_FALSE(isRevoked(params("revoked", "true"))) << "a text is no truth";
}

TEST(TokenRows, SayWhenTheyEnd)
{
    EXPECT_EQ(tokenRow(token(1, u"laptop"_s)).end, u"expires Mar 1, 2031"_s);
    EXPECT_EQ(tokenRow(revokedToken(1, u"laptop"_s)).end, u"revoked"_s);
    EXPECT_EQ(tokenRow(token(1, QString())).label, u"(no label)"_s);
}

TEST(JobRows, OnlyMediaThatIsReadyCanBeShipped)
{
    EXPECT_TRUE(jobRow(job(1, "v", "media", "ready")).shippable);
    EXPECT_FALSE(jobRow(job(1, "v", "media", "packing")).shippable);
    EXPECT_FALSE(jobRow(job(1, "v", "download", "ready")).shippable);
    EXPECT_FALSE(jobRow(job(1, "v", "link", "ready")).shippable);
    EXPECT_FALSE(jobRow(job(1, "v", "media", "shipped")).shippable);
}

TEST(JobRows, TheVolumeHasTwoNames)
{
    EXPECT_EQ(jobRow(params("volume", "older")).volume, u"older"_s);
    EXPECT_EQ(jobRow(params("volume", "older", "volume_name", "newer")).volume, u"newer"_s);
    EXPECT_EQ(jobRow(params("id", 1182)).number, u"#1182"_s);
}

TEST(Looks, SoundGoodBusyBadOrNeither)
{
    EXPECT_EQ(pillLook(u"primary"_s), (PillLook{Theme::okBg, Theme::okText, false}));
    EXPECT_EQ(pillLook(u"pending"_s), (PillLook{Theme::panel2, Theme::warn, true}));
    EXPECT_EQ(pillLook(u"closing"_s), (PillLook{Theme::dangerBg, Theme::dangerText, false}));
    EXPECT_EQ(pillLook(u"replica"_s), (PillLook{Theme::panel, Theme::heading, false}));
    EXPECT_EQ(stateColour(u"serving"_s), Theme::ok);
    EXPECT_EQ(stateColour(u"catching up"_s), Theme::warn);
    EXPECT_EQ(stateColour(u"building"_s), Theme::muted);
    EXPECT_EQ(stateColour(u"failed"_s), Theme::danger);
}

} // namespace
