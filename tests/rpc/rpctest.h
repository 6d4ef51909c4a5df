// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/rpc.h"
#include "support/await.h"
#include "support/fakeagent.h"

#include <QCoroTask>
#include <QTest>

#include <gmock/gmock.h>

#include <atomic>
#include <filesystem>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace quillfen::test {

using namespace std::chrono_literals;

/// A client connected to a scripted agent.
struct RPCTest : testing::Test {
    FakeAgent agent;
    RPC rpc;

    void SetUp() override { rpc.connect(agent.path()); }

    json::value ask(std::string method, json::object params = {}, RPC::Seconds timeout = 10s)
    {
        return await(rpc.call(std::move(method), std::move(params), timeout));
    }
};

/// The failure of a call that must fail.
inline RPCError failureOf(QCoro::Task<json::value> call)
{
    try {
        const json::value answer = await(std::move(call));
        ADD_FAILURE() << "no failure but the answer " << json::serialize(answer);
    } catch (const RPCError &error) {
        return error;
    }
    return {0, QStringLiteral("none")};
}

/// What happened, in order; to be written from any thread.
class Log {
public:
    void add(std::string entry)
    {
        const std::scoped_lock hold(m_lock);
        m_entries.push_back(std::move(entry));
    }
    [[nodiscard]] std::vector<std::string> entries() const
    {
        const std::scoped_lock hold(m_lock);
        return m_entries;
    }
    [[nodiscard]] std::size_t size() const { return entries().size(); }

private:
    mutable std::mutex m_lock;
    std::vector<std::string> m_entries;
};

/// Waits for a call in a coroutine of its own and writes its outcome down.
inline QCoro::Task<> note(RPC &rpc, std::string method, Log &log, RPC::Seconds timeout = 60s)
{
    std::string outcome = method + ": ";
    try {
        const json::object none;
        const json::value answer = co_await rpc.call(method, none, timeout);
        outcome += json::serialize(answer);
    } catch (const RPCError &error) {
        outcome += error.what();
    }
    log.add(std::move(outcome));
}

inline std::size_t entriesOf(const char *folder)
{
    const std::filesystem::directory_iterator all(folder);
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

} // namespace quillfen::test
