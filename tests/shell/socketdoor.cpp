// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/process/socketdoor.h"

#include "states.h"

#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstring>
#include <future>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;

struct Session {
    QTemporaryDir folder;
    std::string path = folder.filePath(u"quillfen"_s).toStdString();

    /// Somebody who connects to the first client by hand.
    [[nodiscard]] int visit() const
    {
        const int visitor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, (path + "/client.sock").c_str(), sizeof address.sun_path - 1);
        EXPECT_EQ(::connect(visitor, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
        return visitor;
    }
};

/// What the first client hears.
struct FirstClient {
    explicit FirstClient(const Session &session) : door(session.path)
    {
        EXPECT_EQ(door.claim({}), Claim::First);
        QObject::connect(&door, &Door::wished, &door, [this](const Wish &wish) { wishes.append(wish); });
    }

    SocketDoor door;
    QList<Wish> wishes;
};

/// A second start, on a thread of its own as it would be in a process of its own.
std::future<Claim> secondStart(const Session &session, const Wish &wish)
{
    return std::async(std::launch::async, [path = session.path, wish] { return SocketDoor(path).claim(wish); });
}

bool ready(const std::future<Claim> &claim)
{
    return claim.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

TEST(SocketDoor, BringsTheWishOfASecondStartToTheFirst)
{
    const Session session;
    FirstClient first(session);
    Wish wish;
    wish.links = {u"quillfen:enroll/quill-7FQ2"_s};
    wish.activationToken = u"token"_s;
    std::future<Claim> second = secondStart(session, wish);
    ASSERT_TRUE(waitFor([&] { return ready(second) && first.wishes.size() == 1; }));
    EXPECT_EQ(second.get(), Claim::HandedOver);
    EXPECT_EQ(first.wishes.first(), wish);
}

TEST(SocketDoor, KeepsItsFolderToItsUser)
{
    const Session session;
    const FirstClient first(session);
    struct stat folder = {};
    ASSERT_EQ(::stat(session.path.c_str(), &folder), 0);
    EXPECT_EQ(folder.st_mode & 0777U, 0700U);
}

TEST(SocketDoor, DoesNotTrustAFolderThatOthersCanEnter)
{
    const Session session;
    ASSERT_EQ(::mkdir(session.path.c_str(), 0755), 0);
    SocketDoor one(session.path);
    SocketDoor other(session.path);
    EXPECT_EQ(one.claim({}), Claim::First);
    EXPECT_EQ(other.claim({}), Claim::First);
    EXPECT_NE(::access((session.path + "/client.sock").c_str(), F_OK), 0);
}

TEST(SocketDoor, TakesOverFromAClientThatHasEnded)
{
    const Session session;
    {
        const FirstClient first(session);
    }
    const FirstClient next(session);
    // And from one that could not tidy up: only the lock counts.
    std::future<Claim> crashed = std::async(std::launch::async, [&] {
        Session gone;
        ::mkdir(gone.path.c_str(), 0700);
        const int leftover = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, (gone.path + "/client.sock").c_str(), sizeof address.sun_path - 1);
        EXPECT_EQ(::bind(leftover, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
        ::close(leftover);
        return SocketDoor(gone.path).claim({});
    });
    EXPECT_EQ(crashed.get(), Claim::First);
}

TEST(SocketDoor, IsNotHeldUpByVisitorsWhoSayNothingOrRubbish)
{
    const Session session;
    FirstClient first(session);
    const int silent = session.visit();
    const int babbler = session.visit();
    ASSERT_EQ(::send(babbler, "rubbish\n", 8, MSG_NOSIGNAL), 8);
    Wish wish;
    wish.action = u"new-volume"_s;
    std::future<Claim> second = secondStart(session, wish);
    ASSERT_TRUE(waitFor([&] { return ready(second) && first.wishes.size() == 1; }));
    EXPECT_EQ(second.get(), Claim::HandedOver);
    char answer = 0;
    EXPECT_EQ(::recv(babbler, &answer, 1, 0), 0) << "it is shown out";
    ::close(silent);
    ::close(babbler);
}

} // namespace
} // namespace quillfen
