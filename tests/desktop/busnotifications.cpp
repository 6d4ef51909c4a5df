// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/busnotifications.h"

#include "notificationserver.h"
#include "privatebus.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>
#include <vector>

#include <gmock/gmock.h>

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QString &clientName()
{
    static const QString name = u"client"_s;
    return name;
}

NotificationText saying(const QString &body)
{
    return {.summary = u"Quillfen"_s, .body = body};
}

class BusNotificationsTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (bus.address().isEmpty()) {
            GTEST_SKIP() << "no dbus-daemon on this computer";
        }
        server = std::make_unique<NotificationServer>(bus.address());
        client.emplace(QDBusConnection::connectToBus(bus.address(), clientName()));
        QObject::connect(&*client, &DesktopNotifications::clicked, &*client,
                         [this](const QString &token) { tokens << token; });
        QObject::connect(&*client, &DesktopNotifications::gone, &*client,
                         [this](int number) { gone.push_back(number); });
    }

    void TearDown() override
    {
        client.reset();
        server.reset();
        QDBusConnection::disconnectFromBus(clientName());
    }

    /// Waits until all that is under way between the two has arrived: an answer comes behind what was said before.
    void settle()
    {
        const auto connection = QDBusConnection::connectToBus(bus.address(), clientName());
        for (const QString &who : {NotificationServer::interface(), u"org.freedesktop.DBus"_s}) {
            auto echo = QDBusMessage::createMethodCall(who, NotificationServer::path(), who, u"Echo"_s);
            const QDBusPendingCallWatcher answer(connection.asyncCall(echo));
            bool came = false;
            QObject::connect(&answer, &QDBusPendingCallWatcher::finished, &answer, [&came] { came = true; });
            ASSERT_TRUE(QTest::qWaitFor([&came] { return came; }, 20'000));
        }
    }

    /// The question for the server's capabilities makes it three ways to and fro.
    void settleAll()
    {
        for (int round = 0; round < 3; ++round) {
            settle();
        }
    }

    void show(int number, const QString &body)
    {
        client->show(number, saying(body));
        settleAll();
    }

    void restartServer(const QStringList &can = {u"body"_s})
    {
        server.reset();
        server = std::make_unique<NotificationServer>(bus.address(), can);
        settleAll();
    }

    PrivateBus bus;
    std::unique_ptr<NotificationServer> server;
    std::optional<BusNotifications> client;
    QStringList tokens;
    std::vector<int> gone;
};

TEST_F(BusNotificationsTest, SaysWhatTheProtocolAsksFor)
{
    show(1, u"photos is now 200 GB and mounted again."_s);
    EXPECT_THAT(server->calls, ElementsAre(u"GetCapabilities"_s, u"Notify"_s));
    Notified expected;
    expected.summary = u"Quillfen"_s;
    expected.body = u"photos is now 200 GB and mounted again."_s;
    EXPECT_THAT(server->notified, ElementsAre(expected));
}

TEST_F(BusNotificationsTest, AFailureStaysUntilItIsSeen)
{
    client->show(1, {.summary = u"Promoting hub-2"_s, .body = u"no quorum"_s, .failed = true});
    settleAll();
    Notified expected;
    expected.summary = u"Promoting hub-2"_s;
    expected.body = u"no quorum"_s;
    expected.hints[u"urgency"_s] = QVariant::fromValue(uchar(2));
    expected.hints[u"category"_s] = u"transfer.error"_s;
    EXPECT_THAT(server->notified, ElementsAre(expected));
}

TEST_F(BusNotificationsTest, TextIsNoMarkupWhereTheServerReadsMarkup)
{
    show(1, u"<b>bold</b> & <a href=\"file:///\">more</a>"_s);
    ASSERT_EQ(server->notified.size(), 1U);
    EXPECT_EQ(server->notified[0].body,
              u"&lt;b&gt;bold&lt;/b&gt; &amp; &lt;a href=&quot;file:///&quot;&gt;more&lt;/a&gt;"_s);
}

TEST_F(BusNotificationsTest, TextIsLeftAloneWhereTheServerReadsNoMarkup)
{
    server->can = QStringList{u"actions"_s, u"body"_s};
    show(1, u"a < b & \"c\""_s);
    ASSERT_EQ(server->notified.size(), 1U);
    EXPECT_EQ(server->notified[0].body, u"a < b & \"c\""_s);
}

TEST_F(BusNotificationsTest, TheSummaryIsNeverMarkup)
{
    client->show(1, {.summary = u"A & B"_s, .body = u"done"_s});
    settleAll();
    ASSERT_EQ(server->notified.size(), 1U);
    EXPECT_EQ(server->notified[0].summary, u"A & B"_s);
}

TEST_F(BusNotificationsTest, OffersNoActionsToAServerThatHasNone)
{
    server->can = QStringList{u"body"_s};
    show(1, u"done"_s);
    ASSERT_EQ(server->notified.size(), 1U);
    EXPECT_THAT(server->notified[0].actions, IsEmpty());
}

TEST_F(BusNotificationsTest, SaysItAllInTheSummaryWhereTheServerShowsNothingElse)
{
    server->can = QStringList();
    show(1, u"a & b"_s);
    ASSERT_EQ(server->notified.size(), 1U);
    EXPECT_EQ(server->notified[0].summary, u"Quillfen: a & b"_s);
}

TEST_F(BusNotificationsTest, AsksOnceWhatTheServerCanDo)
{
    client->show(1, saying(u"one"_s));
    client->show(2, saying(u"two"_s));
    settleAll();
    show(3, u"three"_s);
    EXPECT_THAT(server->calls, ElementsAre(u"GetCapabilities"_s, u"Notify"_s, u"Notify"_s, u"Notify"_s));
}

TEST_F(BusNotificationsTest, PutsOneInPlaceOfAnother)
{
    show(0, u"1 more"_s);
    show(0, u"2 more"_s);
    ASSERT_EQ(server->notified.size(), 2U);
    EXPECT_EQ(server->notified[1].replaces, 41U);
    EXPECT_EQ(server->notified[1].body, u"2 more"_s);
}

TEST_F(BusNotificationsTest, WaitsForTheIdOfWhatItIsToReplace)
{
    server->holdsAnswers = true;
    show(0, u"1 more"_s);
    show(0, u"2 more"_s);
    show(0, u"3 more"_s);
    ASSERT_EQ(server->notified.size(), 1U);
    server->holdsAnswers = false;
    server->answer();
    settleAll();
    ASSERT_EQ(server->notified.size(), 2U) << "only the last is of interest";
    EXPECT_EQ(server->notified[1].replaces, 41U);
    EXPECT_EQ(server->notified[1].body, u"3 more"_s);
}

TEST_F(BusNotificationsTest, AClickBringsItsToken)
{
    show(1, u"one"_s);
    show(2, u"two"_s);
    server->tell(u"ActivationToken"_s, {41U, u"of-one"_s});
    server->click(42, u"of-two"_s);
    settle();
    EXPECT_THAT(tokens, ElementsAre(u"of-two"_s));
    EXPECT_THAT(gone, ElementsAre(2));
}

TEST_F(BusNotificationsTest, AClickWithoutATokenIsAClick)
{
    show(1, u"one"_s);
    server->click(41);
    settle();
    EXPECT_THAT(tokens, ElementsAre(QString()));
}

TEST_F(BusNotificationsTest, ATokenServesOneClick)
{
    show(1, u"one"_s);
    server->tell(u"ActivationToken"_s, {41U, u"token"_s});
    server->tell(u"ActionInvoked"_s, {41U, u"default"_s});
    server->tell(u"ActionInvoked"_s, {41U, u"default"_s});
    settle();
    EXPECT_THAT(tokens, ElementsAre(u"token"_s, QString()));
}

TEST_F(BusNotificationsTest, HearsOnlyWhatIsSaidOfItsOwn)
{
    show(1, u"one"_s);
    server->click(7, u"another's"_s);
    server->click(0);
    server->tell(u"ActionInvoked"_s, {41U, u"another-action"_s});
    settle();
    EXPECT_THAT(tokens, IsEmpty());
    EXPECT_THAT(gone, IsEmpty());
    server->close(41);
    server->click(41);
    settle();
    EXPECT_THAT(tokens, IsEmpty()) << "it stands no longer";
    EXPECT_THAT(gone, ElementsAre(1));
}

TEST_F(BusNotificationsTest, HearsOnlyTheServer)
{
    show(1, u"one"_s);
    const QString other = u"other"_s;
    {
        auto connection = QDBusConnection::connectToBus(bus.address(), other);
        const QString path = NotificationServer::path();
        const QString interface = NotificationServer::interface();
        const auto send = [&](QDBusMessage signal, const QVariantList &arguments) {
            signal.setArguments(arguments);
            connection.send(signal);
        };
        const auto say = [&](const QString &name, const QVariantList &arguments) {
            send(QDBusMessage::createSignal(path, interface, name), arguments);
            send(QDBusMessage::createTargetedSignal(server->client, path, interface, name), arguments);
        };
        say(u"ActivationToken"_s, {41U, u"forged"_s});
        say(u"ActionInvoked"_s, {41U, u"default"_s});
        say(u"NotificationClosed"_s, {41U, 2U});
        // The bus answers when it has passed on what was said before.
        EXPECT_TRUE(connection.interface()->isServiceRegistered(interface));
    }
    QDBusConnection::disconnectFromBus(other);
    settleAll();
    EXPECT_THAT(tokens, IsEmpty());
    EXPECT_THAT(gone, IsEmpty());
    server->click(41);
    settle();
    EXPECT_THAT(tokens, ElementsAre(QString()));
}

TEST_F(BusNotificationsTest, ClosesWhatStillStands)
{
    for (int number = 1; number <= 3; ++number) {
        show(number, u"done"_s);
    }
    server->close(42);
    settle();
    gone.clear();
    client->closeAll();
    client->closeAll();
    settle();
    EXPECT_THAT(server->closed, ElementsAre(41U, 43U));
    EXPECT_THAT(gone, IsEmpty());
    show(1, u"again"_s);
    EXPECT_EQ(server->notified.back().replaces, 0U);
}

TEST_F(BusNotificationsTest, ClosesWhatHasNoIdYetOnceItHasOne)
{
    server->holdsAnswers = true;
    show(1, u"done"_s);
    client->show(1, saying(u"and more"_s));
    client->closeAll();
    settle();
    EXPECT_THAT(server->closed, IsEmpty());
    server->answer();
    settleAll();
    EXPECT_THAT(server->closed, ElementsAre(41U));
    EXPECT_EQ(server->notified.size(), 1U) << "and the rest need not be said";
}

TEST_F(BusNotificationsTest, SaysNothingThatWasTakenBackBeforeTheServerCouldBeAsked)
{
    client->show(1, saying(u"done"_s));
    client->closeAll();
    settleAll();
    EXPECT_THAT(server->calls, ElementsAre(u"GetCapabilities"_s));
    show(2, u"two"_s);
    EXPECT_EQ(server->notified.size(), 1U);
}

TEST_F(BusNotificationsTest, WhatTheServerRefusesIsGone)
{
    server->refuses = true;
    show(1, u"done"_s);
    EXPECT_THAT(gone, ElementsAre(1));
}

TEST_F(BusNotificationsTest, WhereNobodyShowsNotificationsTheyAreGone)
{
    server.reset();
    show(1, u"one"_s);
    show(2, u"two"_s);
    EXPECT_THAT(gone, ElementsAre(1, 2));
    server = std::make_unique<NotificationServer>(bus.address());
    show(3, u"three"_s);
    ASSERT_EQ(server->notified.size(), 1U) << "a server that comes later has what comes later";
    EXPECT_EQ(server->notified[0].body, u"three"_s);
}

TEST_F(BusNotificationsTest, ANewServerIsAskedAnew)
{
    show(1, u"a & b"_s);
    restartServer();
    EXPECT_THAT(gone, ElementsAre(1)) << "with the server that showed it";
    EXPECT_THAT(server->calls, IsEmpty());
    show(1, u"a & b"_s);
    EXPECT_THAT(server->calls, ElementsAre(u"GetCapabilities"_s, u"Notify"_s));
    ASSERT_EQ(server->notified.size(), 1U);
    EXPECT_EQ(server->notified[0].replaces, 0U);
    EXPECT_EQ(server->notified[0].body, u"a & b"_s);
    EXPECT_THAT(server->notified[0].actions, IsEmpty());
    server->click(41, u"new"_s);
    settle();
    EXPECT_THAT(tokens, ElementsAre(u"new"_s));
}

TEST_F(BusNotificationsTest, AnAnswerThatNeverCameLeavesNothingBehind)
{
    server->holdsAnswers = true;
    show(1, u"one"_s);
    restartServer();
    EXPECT_THAT(gone, ElementsAre(1));
    show(1, u"two"_s);
    EXPECT_THAT(gone, ElementsAre(1));
    ASSERT_EQ(server->notified.size(), 1U);
    EXPECT_EQ(server->notified[0].body, u"two"_s);
}

TEST_F(BusNotificationsTest, TheEndOfAnEarlierServersCallIsNotThatOfALaterOnes)
{
    server->holdsAnswers = true;
    show(1, u"one"_s);
    const auto again = [this] { client->show(1, saying(u"again"_s)); };
    QObject::connect(&*client, &DesktopNotifications::gone, &*client, again,
                     static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::SingleShotConnection));
    restartServer();
    EXPECT_THAT(gone, ElementsAre(1));
    ASSERT_EQ(server->notified.size(), 1U);
    EXPECT_EQ(server->notified[0].body, u"again"_s);
}

TEST_F(BusNotificationsTest, AnEarlierServerIsHeardNoMore)
{
    show(1, u"one"_s);
    server->leave();
    settleAll();
    EXPECT_THAT(gone, ElementsAre(1));
    const std::unique_ptr<NotificationServer> earlier = std::move(server);
    server = std::make_unique<NotificationServer>(bus.address());
    show(1, u"two"_s);
    earlier->click(41, u"late"_s);
    earlier->finish();
    settleAll();
    EXPECT_THAT(tokens, IsEmpty());
}

TEST(DesktopNotifications, AreNoneWithoutABus)
{
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    const QTemporaryDir empty;
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", empty.path().toUtf8());
    EXPECT_EQ(makeDesktopNotifications(), nullptr);
    qputenv("XDG_RUNTIME_DIR", runtime);
    if (!address.isEmpty()) {
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    }
}

TEST(BusNotifications, SayNothingWhereTheBusIsGone)
{
    BusNotifications none(QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, u"nowhere"_s));
    std::vector<int> gone;
    QObject::connect(&none, &DesktopNotifications::gone, &none, [&](int number) { gone.push_back(number); });
    none.show(1, saying(u"one"_s));
    none.show(2, saying(u"two"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return gone.size() == 2; }, 20'000));
    none.closeAll();
    QDBusConnection::disconnectFromBus(u"nowhere"_s);
}

} // namespace
