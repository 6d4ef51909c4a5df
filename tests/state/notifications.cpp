// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/notifications.h"

#include <gmock/gmock.h>

#include <optional>

using namespace quillfen;
using testing::ElementsAre;

namespace {

class NotificationCentre : public testing::Test {
protected:
    Notifications::Listener noting(std::string who)
    {
        return [this, who = std::move(who)](const json::object &) { m_log.push_back(who); };
    }

    std::optional<Notifications> m_centre{std::in_place};
    std::vector<std::string> m_log;
};

TEST_F(NotificationCentre, TellsWhoListensToTheNameInOrder)
{
    const auto first = m_centre->listen("a", noting("first"));
    const auto second = m_centre->listen("a", noting("second"));
    const auto other = m_centre->listen("b", noting("other"));
    m_centre->post("a", {});
    EXPECT_THAT(m_log, ElementsAre("first", "second"));
}

TEST_F(NotificationCentre, CarriesTheValues)
{
    std::string section;
    const auto subscription = m_centre->listen(
        Notifications::navigate, [&](const json::object &values) { section = values.at("section").as_string(); });
    m_centre->post(Notifications::navigate, params("section", "Time travel", "volume", 7));
    EXPECT_EQ(section, "Time travel");
}

TEST_F(NotificationCentre, ASubscriptionEndsWithItsObject)
{
    {
        const auto subscription = m_centre->listen("a", noting("gone"));
    }
    auto kept = m_centre->listen("a", noting("kept"));
    m_centre->post("a", {});
    kept = Notifications::Subscription();
    m_centre->post("a", {});
    EXPECT_THAT(m_log, ElementsAre("kept"));
}

TEST_F(NotificationCentre, AListenerMayEndItselfAndOthers)
{
    Notifications::Subscription second;
    Notifications::Subscription first = m_centre->listen("a", [&](const json::object &) {
        m_log.emplace_back("first");
        first = Notifications::Subscription();
        second = Notifications::Subscription();
        m_log.emplace_back("still here");
    });
    second = m_centre->listen("a", noting("second"));
    m_centre->post("a", {});
    m_centre->post("a", {});
    EXPECT_THAT(m_log, ElementsAre("first", "still here"));
}

TEST_F(NotificationCentre, WhoComesInDuringAPostIsToldFromTheNextOn)
{
    std::vector<Notifications::Subscription> late;
    const auto first = m_centre->listen("a", [&](const json::object &) {
        m_log.emplace_back("first");
        late.push_back(m_centre->listen("a", noting("late")));
    });
    m_centre->post("a", {});
    EXPECT_THAT(m_log, ElementsAre("first"));
    m_centre->post("a", {});
    EXPECT_THAT(m_log, ElementsAre("first", "first", "late"));
}

TEST_F(NotificationCentre, SubscriptionsOutliveIt)
{
    const auto ending = m_centre->listen("a", [this](const json::object &) {
        m_centre.reset();
        m_log.emplace_back("ended");
    });
    const auto after = m_centre->listen("a", noting("after"));
    m_centre->post("a", {});
    EXPECT_THAT(m_log, ElementsAre("ended", "after"));
}

} // namespace
