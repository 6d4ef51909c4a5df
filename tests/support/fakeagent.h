// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <boost/json.hpp>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quillfen::test {

namespace json = boost::json;

/// A scripted agent on a real Unix-domain socket in a private folder of its own, for tests of everything that calls.
///
/// It listens from its construction on, does its work on its own thread and records every request in order. A method
/// that nothing was said about is answered with -32601 and fails the test when the agent goes. Every function may be
/// called from any thread. The waiting functions do not turn the Qt event loop: where the client has to work meanwhile,
/// use `eventually([&] { return agent.count("volumes.list") == 2; })` of support/await.h.
class FakeAgent {
public:
    struct Request {
        std::string method;
        json::object params; ///< empty when the request had none
        std::int64_t id = 0;
        std::string line; ///< as it came, without the line feed
    };
    struct Error {
        std::int64_t code = -1;
        std::string message;
        std::optional<std::int64_t> status = std::nullopt;
    };
    using Answer = std::variant<json::value, Error>;
    using Handler = std::function<Answer(const json::object &params)>; ///< runs on the agent's thread, or in `release`

    FakeAgent();
    ~FakeAgent();
    FakeAgent(const FakeAgent &) = delete;
    FakeAgent &operator=(const FakeAgent &) = delete;

    [[nodiscard]] const std::string &path() const;
    [[nodiscard]] const std::string &folder() const; ///< the private one around the socket, removed at the end

    /// What a method answers; the last word counts, and ends an earlier `silent`.
    void on(std::string_view method, Handler handler);
    void answer(std::string_view method, json::value result);
    void fail(std::string_view method, Error error);
    /// Requests of this method are recorded and never answered.
    void silent(std::string_view method);
    /// The next request of this method is answered by exactly these bytes plus a line feed; "$ID" stands for its id.
    /// Several wait in a row, before everything else said about the method.
    void queueRaw(std::string_view method, std::string line);
    /// From now on answers of this method are kept back; `release` sends them and ends the holding.
    void hold(std::string_view method);
    void release(std::string_view method);
    /// Unknown methods no longer fail the test.
    void allowUnexpected();

    /// Sends an event to every client.
    void push(std::string_view event, std::optional<json::value> data = std::nullopt);
    /// Sends these bytes as they are to every client.
    void sendRaw(std::string_view bytes);
    void stopReading();
    void resumeReading();
    /// Closes every client's connection once everything said so far is sent; goes on listening.
    void hangUp();
    /// Hangs up at once and leaves no socket behind, as an agent that was ended.
    void stop();
    /// Listens again on the same path.
    void restart();

    [[nodiscard]] std::vector<Request> requests() const;
    [[nodiscard]] std::vector<Request> requests(std::string_view method) const;
    /// The methods in the order of their requests, to compare with an expected list.
    [[nodiscard]] std::vector<std::string> log() const;
    [[nodiscard]] std::size_t count(std::string_view method) const;
    [[nodiscard]] std::vector<std::string> unexpected() const;
    [[nodiscard]] std::size_t clients() const;
    void clearLog();

    static constexpr std::chrono::milliseconds patience{10'000};
    /// Waits until this method was requested `count` times in all; false when `limit` has passed.
    bool waitFor(std::string_view method, std::size_t count = 1, std::chrono::milliseconds limit = patience) const;
    /// Waits until so many clients are connected.
    bool waitForClients(std::size_t count, std::chrono::milliseconds limit = patience) const;

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace quillfen::test
