// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpctest.h"

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <fstream>

namespace quillfen::test {

namespace {

/// A socket at a path of our choice, to which nobody attends.
class Listener {
public:
    explicit Listener(const std::string &path, int backlog = 8) : m_descriptor(::socket(AF_UNIX, SOCK_STREAM, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
        EXPECT_EQ(::bind(m_descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address), 0) << path;
        EXPECT_EQ(::listen(m_descriptor, backlog), 0);
    }
    ~Listener() { ::close(m_descriptor); }
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

private:
    int m_descriptor;
};

struct Connecting : testing::Test {
    FakeAgent agent; // for its folder
    RPC rpc;

    [[nodiscard]] std::string pathOfLength(std::size_t length) const
    {
        const std::string begin = agent.folder() + "/";
        return begin + std::string(length - begin.size(), 's');
    }
    RPCError failureAt(const std::string &path)
    {
        try {
            rpc.connect(path);
        } catch (const RPCError &error) {
            return error;
        }
        ADD_FAILURE() << "connected to " << path;
        return {0, QStringLiteral("none")};
    }
};

TEST_F(Connecting, AMissingAgentIsNamedWithItsPathAlone)
{
    const RPCError error = failureAt("/nowhere/agent.sock");
    EXPECT_EQ(error.code, -1);
    EXPECT_EQ(error.message, QStringLiteral("the Quillfen agent is not running (/nowhere/agent.sock)"));
    EXPECT_EQ(error.status, std::nullopt);
}

TEST_F(Connecting, ASocketWithoutAnAgentBehindItCountsAsMissing)
{
    const std::string path = agent.folder() + "/stale";
    {
        const Listener gone(path);
    }
    EXPECT_EQ(failureAt(path).message,
              QStringLiteral("the Quillfen agent is not running (%1)").arg(QString::fromStdString(path)));
}

TEST_F(Connecting, AnEmptyPathIsAMissingAgent)
{
    EXPECT_EQ(failureAt("").message, QStringLiteral("the Quillfen agent is not running ()"));
}

TEST_F(Connecting, APathOf103BytesConnects)
{
    const std::string path = pathOfLength(103);
    const Listener listener(path);
    EXPECT_NO_THROW(rpc.connect(path));
}

TEST_F(Connecting, APathOf104BytesIsTooLong)
{
    const RPCError error = failureAt(pathOfLength(104));
    EXPECT_EQ(error.code, -1);
    EXPECT_EQ(error.message, QStringLiteral("socket path too long"));
    EXPECT_EQ(error.status, std::nullopt);
}

TEST_F(Connecting, ThePathIsMeasuredInBytesNotInCharacters)
{
    std::string path = agent.folder() + "/";
    while (path.size() < 103) {
        path += "€";
    }
    ASSERT_LT(QString::fromStdString(path).size(), 103);
    EXPECT_EQ(failureAt(path + "€").message, QStringLiteral("socket path too long"));
}

TEST_F(Connecting, FailedAttemptsKeepNoDescriptors)
{
#ifndef Q_OS_LINUX
    GTEST_SKIP() << "counts in /proc";
#endif
    const std::size_t before = entriesOf("/proc/self/fd");
    for (int attempt = 0; attempt < 50; ++attempt) {
        failureAt(pathOfLength(104));
        failureAt("/nowhere/agent.sock");
    }
    EXPECT_EQ(entriesOf("/proc/self/fd"), before);
}

TEST_F(Connecting, WithoutADescriptorLeftTheSystemSaysWhy)
{
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{3, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const RPCError error = failureAt(agent.path());
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(error.code, -1);
    EXPECT_EQ(error.message, QStringLiteral("socket: Too many open files"));
    EXPECT_NO_THROW(rpc.connect(agent.path()));
}

TEST_F(Connecting, AnAgentThatAcceptsNobodyDoesNotStopTheMainThread)
{
    const std::string path = agent.folder() + "/full";
    const Listener listener(path, 0);
    std::vector<std::unique_ptr<RPC>> clients;
    const auto begin = std::chrono::steady_clock::now();
    std::string refusal;
    for (int attempt = 0; attempt < 1'000 && refusal.empty(); ++attempt) {
        clients.push_back(std::make_unique<RPC>());
        try {
            clients.back()->connect(path);
        } catch (const RPCError &error) {
            refusal = error.what();
        }
    }
    EXPECT_EQ(refusal, "the Quillfen agent is not running (" + path + ")");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
}

TEST_F(Connecting, TheReadingThreadBearsItsName)
{
#ifndef Q_OS_LINUX
    GTEST_SKIP() << "reads /proc";
#endif
    rpc.connect(agent.path());
    const auto isNamed = [] {
        for (const auto &task : std::filesystem::directory_iterator("/proc/self/task")) {
            std::string name;
            std::ifstream(task.path() / "comm") >> name;
            if (name == "io.quillfen.rpc") {
                return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(eventually(isNamed));
}

TEST_F(Connecting, TheSocketIsNotInheritedByChildren)
{
#ifndef Q_OS_LINUX
    GTEST_SKIP() << "counts in /proc";
#endif
    // The child closes nothing by itself; what it still has open, it was left. (Our own output may be a socket.)
    const auto socketsOfAChild = [] {
        std::FILE *const child = ::popen("ls -l /proc/self/fd | grep -c socket", "r");
        int sockets = -1;
        EXPECT_EQ(std::fscanf(child, "%d", &sockets), 1);
        ::pclose(child);
        return sockets;
    };
    const std::size_t descriptors = entriesOf("/proc/self/fd");
    const int sockets = socketsOfAChild();
    rpc.connect(agent.path());
    ASSERT_TRUE(agent.waitForClients(1));
    ASSERT_GT(entriesOf("/proc/self/fd"), descriptors);
    EXPECT_EQ(socketsOfAChild(), sockets);
}

} // namespace

} // namespace quillfen::test
