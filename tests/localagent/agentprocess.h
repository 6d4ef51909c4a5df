// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "folder.h"

#include <boost/json.hpp>

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillfen::localagent::test {

namespace json = boost::json;

/// A blocking connection to an agent. Whatever takes longer than five seconds counts as not coming.
class Peer final {
public:
    explicit Peer(const std::string &socket);
    ~Peer();
    Peer(const Peer &) = delete;
    Peer &operator=(const Peer &) = delete;

    [[nodiscard]] bool connected() const { return m_socket >= 0; }
    /// Writes bytes as they are; false when the agent takes none for that long.
    bool write(std::string_view bytes, std::chrono::milliseconds patience = std::chrono::seconds(5));
    void request(std::int64_t id, std::string_view method, const json::object &params = {});
    /// Ends the writing; answers can still be read.
    void finishWriting() const;
    /// The next line; nothing when the connection ended or nothing came in time.
    std::optional<std::string> line(std::chrono::milliseconds patience = std::chrono::seconds(5));
    /// Calls and reads up to its answer. Other lines are passed over.
    json::object call(std::string_view method, const json::object &params = {});
    /// Whether the agent ends the connection within the time.
    bool ends(std::chrono::milliseconds patience = std::chrono::seconds(5));

private:
    int m_socket = -1;
    std::int64_t m_lastId = 1000;
    std::string m_read;
    bool m_ended = false;
};

/// The real program with a home and a socket in a private folder.
class AgentProcess final {
public:
    /// Starts it and waits until it answers, or until it has ended (see `exitCode`).
    explicit AgentProcess(std::vector<std::string> arguments = {}, std::string socket = {});
    ~AgentProcess();
    AgentProcess(const AgentProcess &) = delete;
    AgentProcess &operator=(const AgentProcess &) = delete;

    [[nodiscard]] const std::string &socket() const { return m_socket; }
    [[nodiscard]] std::string home() const { return m_folder.path("home"); }
    [[nodiscard]] pid_t pid() const { return m_pid; }
    [[nodiscard]] bool running();
    /// Sends the signal and waits for the end.
    int end(int signal);

private:
    Folder m_folder;
    std::string m_socket;
    pid_t m_pid = -1;
    std::optional<int> m_exit;
};

struct Outcome {
    int exitCode = -1;
    std::string output; ///< both streams
};

/// Runs the program to its end.
[[nodiscard]] Outcome runAgent(const std::vector<std::string> &arguments);

} // namespace quillfen::localagent::test
