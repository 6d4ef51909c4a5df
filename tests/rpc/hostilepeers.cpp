// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpctest.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <cstring>

namespace quillfen::test {

namespace {

using HostilePeers = RPCTest;
using Clock = std::chrono::steady_clock;

constexpr std::size_t megabyte = 1'000'000;

TEST_F(HostilePeers, ALineNestedAHundredThousandDeepIsDroppedAndLaterAnswersArrive)
{
    agent.answer("m", "still here");
    for (const auto &[open, close] : {std::pair{"[", "]"}, std::pair{"{\"a\":", "}"}}) {
        std::string line = R"({"event":"e","result":)";
        for (int level = 0; level < 100'000; ++level) {
            line += open;
        }
        line += "1";
        for (int level = 0; level < 100'000; ++level) {
            line += close;
        }
        agent.sendRaw(line + "}\n");
        EXPECT_EQ(ask("m"), "still here");
    }
}

TEST_F(HostilePeers, AnAnswerNestedAThousandDeepArrivesAndIsFreed)
{
    agent.queueRaw("m", R"({"id":$ID,"result":)" + std::string(1'000, '[') + std::string(1'000, ']') + "}");
    EXPECT_TRUE(ask("m").is_array());
}

TEST_F(HostilePeers, ALineOfAHundredMegabytesArrivesWhole)
{
    agent.queueRaw("m", R"({"id":$ID,"result":")" + std::string(100 * megabyte, 'x') + "\"}");
    const json::value answer = ask("m", {}, 100s);
    EXPECT_EQ(answer.as_string().size(), 100 * megabyte);
}

TEST_F(HostilePeers, AHundredMegabytesOfGarbageInOneLineAreSkipped)
{
    agent.sendRaw(std::string(100 * megabyte, 'x') + "\n");
    agent.answer("m", "still here");
    EXPECT_EQ(ask("m", {}, 100s), "still here");
}

TEST_F(HostilePeers, AMillionEmptyLinesInOneBurstAreSkipped)
{
    agent.sendRaw(std::string(megabyte, '\n'));
    agent.answer("m", "still here");
    EXPECT_EQ(ask("m", {}, 100s), "still here");
}

TEST_F(HostilePeers, AnAgentThatStopsReadingDoesNotStopTheMainThread)
{
    agent.answer("m", "after all");
    agent.stopReading();
    const std::string large(5 * megabyte, 'x');
    std::vector<QCoro::Task<json::value>> calls;
    for (int count = 0; count < 4; ++count) { // returns at all, with nobody reading
        calls.push_back(rpc.call("m", params("n", count, "large", large), 100s));
    }
    agent.resumeReading();
    for (QCoro::Task<json::value> &call : calls) {
        EXPECT_EQ(await(std::move(call)), "after all");
    }
    const auto requests = agent.requests("m");
    ASSERT_EQ(requests.size(), 4U);
    for (std::size_t count = 0; count < requests.size(); ++count) {
        EXPECT_EQ(requests[count].params.at("n"), count) << "in order";
        EXPECT_TRUE(requests[count].params.at("large") == json::string(large)) << "and whole";
    }
}

TEST_F(HostilePeers, AnswersAreReadWhileARequestWaitsToBeWritten)
{
    agent.silent("large");
    agent.stopReading();
    QCoro::Task<json::value> call = rpc.call("large", params("x", std::string(5 * megabyte, 'x')), 100s);
    agent.sendRaw("{\"id\":1,\"result\":\"unread but answered\"}\n");
    EXPECT_EQ(await(std::move(call)), "unread but answered");
}

TEST_F(HostilePeers, AnAgentThatStopsReadingAndHangsUpFailsTheCall)
{
    agent.stopReading();
    QCoro::Task<json::value> call = rpc.call("large", params("x", std::string(5 * megabyte, 'x')), 100s);
    agent.stop();
    EXPECT_EQ(failureOf(std::move(call)).code, RPCError::connectionClosed);
}

TEST(HostilePeersOfTheirOwn, OneThatTakesNothingMoreEndsTheConnection)
{
    std::array<int, 1> served{};
    const FakeAgent folder;
    const std::string path = folder.folder() + "/deaf";
    const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(listener, 1), 0);
    RPC rpc;
    rpc.connect(path);
    served[0] = ::accept(listener, nullptr, nullptr);
    ASSERT_EQ(::shutdown(served[0], SHUT_RD), 0); // its own end stays open: reading from it would wait for ever
    const RPCError error = failureOf(rpc.call("m", {}, 3'600s));
    EXPECT_EQ(error.code, RPCError::connectionClosed);
    ::close(served[0]);
    ::close(listener);
}

std::atomic<int> brokenPipes = 0;

TEST_F(HostilePeers, WritingToOneThatIsGoneRaisesNoSignal)
{
    const auto before = std::signal(SIGPIPE, [](int) { ++brokenPipes; });
    for (int round = 0; round < 200; ++round) {
        ASSERT_TRUE(agent.waitForClients(1));
        agent.stop();
        // Within the moment before the reading thread has noticed, the write meets a closed socket.
        EXPECT_EQ(failureOf(rpc.call("m", {}, 100s)).code, RPCError::connectionClosed);
        agent.restart();
        rpc.connect(agent.path());
    }
    std::signal(SIGPIPE, before);
    EXPECT_EQ(brokenPipes, 0);
}

TEST_F(HostilePeers, LargeEventsDoNotPileUpWhileTheMainThreadIsAway)
{
    std::atomic<std::size_t> waiting = 0;
    std::atomic<std::size_t> most = 0;
    std::size_t ran = 0;
    rpc.onEvent = [&](const std::string &, std::optional<json::value> data) {
        most = std::max(most.load(), ++waiting);
        const auto kept = std::make_shared<json::value>(*std::move(data));
        rpc.mainQueue().post([&, kept] {
            --waiting;
            ++ran;
        });
    };
    rpc.connect(agent.path());
    ASSERT_TRUE(agent.waitForClients(1));
    const std::string line = R"({"event":"e","result":")" + std::string(megabyte, 'x') + "\"}\n";
    std::string flood;
    for (int count = 0; count < 150; ++count) {
        flood += line;
    }
    agent.sendRaw(flood);
    std::this_thread::sleep_for(500ms); // the main thread is away
    EXPECT_LE(most, 40U);
    EXPECT_TRUE(eventually([&] { return ran == 150; }, 100s));
    EXPECT_LE(most, 60U);
}

} // namespace

} // namespace quillfen::test
