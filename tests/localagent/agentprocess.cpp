// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "agentprocess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <stdexcept>
#include <thread>

namespace quillfen::localagent::test {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

bool ready(int socket, short events, std::chrono::milliseconds patience)
{
    pollfd source{socket, events, 0};
    return ::poll(&source, 1, static_cast<int>(patience.count())) > 0;
}

pid_t spawn(const std::vector<std::string> &arguments, int output)
{
    std::vector<char *> list = {const_cast<char *>(QUILLFEN_LOCALAGENT)};
    for (const std::string &argument : arguments) {
        list.push_back(const_cast<char *>(argument.c_str()));
    }
    list.push_back(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(output, STDOUT_FILENO);
        ::dup2(output, STDERR_FILENO);
        ::execv(QUILLFEN_LOCALAGENT, list.data());
        ::_exit(127);
    }
    return child;
}

int exitCodeOf(int status)
{
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

} // namespace

Peer::Peer(const std::string &path) : m_socket(::socket(AF_UNIX, SOCK_STREAM, 0))
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
    if (::connect(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) != 0) {
        ::close(m_socket);
        m_socket = -1;
        return;
    }
    ::fcntl(m_socket, F_SETFL, O_NONBLOCK);
}

Peer::~Peer()
{
    if (m_socket >= 0) {
        ::close(m_socket);
    }
}

bool Peer::write(std::string_view bytes, std::chrono::milliseconds patience)
{
    while (!bytes.empty()) {
        if (!ready(m_socket, POLLOUT, patience)) {
            return false;
        }
        const ssize_t count = ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

void Peer::request(std::int64_t id, std::string_view method, const json::object &params)
{
    json::object object{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}};
    if (!params.empty()) {
        object["params"] = params;
    }
    write(json::serialize(object) + "\n");
}

void Peer::finishWriting() const
{
    ::shutdown(m_socket, SHUT_WR);
}

std::optional<std::string> Peer::line(std::chrono::milliseconds patience)
{
    const auto deadline = Clock::now() + patience;
    for (;;) {
        if (const std::size_t feed = m_read.find('\n'); feed != std::string::npos) {
            std::string found = m_read.substr(0, feed);
            m_read.erase(0, feed + 1);
            return found;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (m_ended || left <= 0ms || !ready(m_socket, POLLIN, left)) {
            return std::nullopt;
        }
        char chunk[65536];
        const ssize_t count = ::recv(m_socket, chunk, sizeof(chunk), 0);
        if (count <= 0) {
            m_ended = true;
        } else {
            m_read.append(chunk, static_cast<std::size_t>(count));
        }
    }
}

json::object Peer::call(std::string_view method, const json::object &params)
{
    const std::int64_t id = ++m_lastId;
    request(id, method, params);
    while (const auto found = line()) {
        json::error_code error;
        const json::value value = json::parse(*found, error);
        if (!error && value.is_object() && value.get_object().contains("id") && value.at("id") == json::value(id)) {
            return value.get_object();
        }
    }
    return {};
}

bool Peer::ends(std::chrono::milliseconds patience)
{
    const auto deadline = Clock::now() + patience;
    while (!m_ended && Clock::now() < deadline) {
        line(50ms);
    }
    return m_ended;
}

AgentProcess::AgentProcess(std::vector<std::string> arguments, std::string path)
    : m_socket(path.empty() ? m_folder.path("run/agent.sock") : std::move(path))
{
    const std::vector<std::string> own = {"--socket", socket(), "--home", home()};
    arguments.insert(arguments.begin(), own.begin(), own.end());
    const int nothing = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    m_pid = spawn(arguments, nothing);
    ::close(nothing);
    const auto deadline = Clock::now() + 20s;
    while (running() && !Peer(socket()).connected()) {
        if (Clock::now() > deadline) {
            throw std::runtime_error("the agent does not listen");
        }
        std::this_thread::sleep_for(5ms);
    }
}

AgentProcess::~AgentProcess()
{
    if (running()) {
        end(SIGTERM);
    }
}

bool AgentProcess::running()
{
    int status = 0;
    if (!m_exit && ::waitpid(m_pid, &status, WNOHANG) == m_pid) {
        m_exit = exitCodeOf(status);
    }
    return !m_exit;
}

int AgentProcess::end(int signal)
{
    if (!running()) {
        return *m_exit;
    }
    ::kill(m_pid, signal);
    const auto deadline = Clock::now() + 20s;
    while (running()) {
        if (Clock::now() > deadline) {
            ::kill(m_pid, SIGKILL);
        }
        std::this_thread::sleep_for(2ms);
    }
    return *m_exit;
}

Outcome runAgent(const std::vector<std::string> &arguments)
{
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0) {
        throw std::runtime_error("no pipe");
    }
    ::fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    const pid_t child = spawn(arguments, ends[1]);
    ::close(ends[1]);
    Outcome outcome;
    char chunk[4096];
    for (ssize_t count = 0; (count = ::read(ends[0], chunk, sizeof(chunk))) > 0;) {
        outcome.output.append(chunk, static_cast<std::size_t>(count));
    }
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    outcome.exitCode = exitCodeOf(status);
    return outcome;
}

} // namespace quillfen::localagent::test
