// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "support/fakeagent.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <filesystem>
#include <map>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>

namespace quillfen::test {

namespace {

constexpr std::int64_t unknownMethod = -32601;

std::string makeFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "quillfen-agent-XXXXXX").string();
    if (!::mkdtemp(pattern.data())) { // 0700
        throw std::runtime_error("no temporary folder: " + pattern);
    }
    return pattern;
}

void makePrivateAndNonBlocking(int descriptor)
{
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
}

int listenAt(const std::string &path)
{
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    makePrivateAndNonBlocking(descriptor);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        throw std::runtime_error("too long for a socket: " + path);
    }
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    if (descriptor < 0 || ::bind(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) < 0 ||
        ::listen(descriptor, SOMAXCONN) < 0) {
        throw std::runtime_error("cannot listen at " + path + ": " + std::strerror(errno));
    }
    return descriptor;
}

std::string answerLine(std::int64_t id, const FakeAgent::Answer &answer)
{
    json::object message;
    message["jsonrpc"] = "2.0";
    message["id"] = id;
    if (const auto *const error = std::get_if<FakeAgent::Error>(&answer)) {
        json::object &details = message["error"].emplace_object();
        details["code"] = error->code;
        details["message"] = error->message;
        if (error->status) {
            details["status"] = *error->status;
        }
    } else {
        message["result"] = std::get<json::value>(answer);
    }
    return json::serialize(message) + '\n';
}

std::string withId(std::string line, std::int64_t id)
{
    constexpr std::string_view mark = "$ID";
    for (auto at = line.find(mark); at != std::string::npos; at = line.find(mark)) {
        line.replace(at, mark.size(), std::to_string(id));
    }
    return line + '\n';
}

struct Client {
    int descriptor = -1;
    std::string in;
    std::string out;
    std::size_t sent = 0; ///< of the above
    bool closing = false; ///< once everything is sent
};

using Clients = std::map<int, Client>; ///< by a number of their own, descriptors are used again

/// What the test has said about one method.
struct Script {
    FakeAgent::Handler handler;
    std::deque<std::string> raw;
    bool silent = false;
    bool held = false;
    std::vector<std::pair<int, FakeAgent::Request>> kept; ///< client and request, while held
};

} // namespace

class FakeAgent::Impl {
public:
    Impl();
    ~Impl();

    const std::string folder = makeFolder();
    const std::string path = folder + "/agent.sock";

    mutable std::mutex lock;
    mutable std::condition_variable changed;
    std::map<std::string, Script, std::less<>> scripts;
    std::vector<Request> requests;
    std::vector<std::string> unexpected;
    Clients clients;
    bool reading = true;
    bool mayBeUnexpected = false;

    void wake() const;
    void acceptAll();
    void reply(int client, const Request &request);
    void say(std::string_view bytes);
    void dropAll();
    void startListening();
    void stopListening();

    template <typename Condition>
    bool wait(std::chrono::milliseconds limit, Condition condition) const
    {
        std::unique_lock hold(lock);
        return changed.wait_for(hold, limit, condition);
    }

private:
    void run();
    void turn();
    void readFrom(int number);
    void writeTo(int number);
    void drop(int number);
    void received(int number, std::string line);
    void send(int number, const std::string &line);

    int m_listener = -1;
    std::array<int, 2> m_wake{};
    int m_lastClient = 0;
    bool m_over = false;
    std::thread m_thread;
};

FakeAgent::Impl::Impl()
{
    startListening();
    if (::pipe(m_wake.data()) < 0) {
        throw std::runtime_error("no pipe");
    }
    makePrivateAndNonBlocking(m_wake[0]);
    makePrivateAndNonBlocking(m_wake[1]);
    m_thread = std::thread([this] { run(); });
}

FakeAgent::Impl::~Impl()
{
    {
        const std::scoped_lock hold(lock);
        m_over = true;
    }
    wake();
    m_thread.join();
    dropAll();
    stopListening();
    ::close(m_wake[0]);
    ::close(m_wake[1]);
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

void FakeAgent::Impl::startListening()
{
    if (m_listener < 0) {
        m_listener = listenAt(path);
    }
}

void FakeAgent::Impl::stopListening()
{
    if (m_listener >= 0) {
        ::close(std::exchange(m_listener, -1));
    }
    ::unlink(path.c_str());
}

void FakeAgent::Impl::wake() const
{
    [[maybe_unused]] const ssize_t written = ::write(m_wake[1], "!", 1);
}

void FakeAgent::Impl::say(std::string_view bytes)
{
    acceptAll(); // whoever has connected is a client, also before the thread came to look
    for (auto &[number, client] : clients) {
        client.out += bytes;
    }
}

void FakeAgent::Impl::dropAll()
{
    for (auto &[number, client] : clients) {
        ::close(client.descriptor);
    }
    clients.clear();
    changed.notify_all();
}

void FakeAgent::Impl::run()
{
    for (;;) {
        std::vector<pollfd> wait{{m_wake[0], POLLIN, 0}};
        {
            const std::scoped_lock hold(lock);
            if (m_over) {
                return;
            }
            if (m_listener >= 0) {
                wait.push_back({m_listener, POLLIN, 0});
            }
            for (const auto &[number, client] : clients) {
                const int events = (reading ? POLLIN : 0) | (client.out.empty() ? 0 : POLLOUT);
                // Without anything to wait for not even a hang-up is to wake us, for nobody would look at it.
                wait.push_back({events == 0 ? -1 : client.descriptor, static_cast<short>(events), 0});
            }
        }
        ::poll(wait.data(), wait.size(), -1);
        turn();
    }
}

/// Everything is non-blocking, so that one turn simply tries everything.
void FakeAgent::Impl::turn()
{
    std::array<char, 256> bytes{};
    while (::read(m_wake[0], bytes.data(), bytes.size()) > 0) {
    }
    std::vector<int> numbers;
    {
        const std::scoped_lock hold(lock);
        acceptAll();
        for (const auto &[number, client] : clients) {
            numbers.push_back(number);
        }
    }
    for (const int number : numbers) {
        readFrom(number);
        writeTo(number);
    }
}

void FakeAgent::Impl::acceptAll()
{
    while (m_listener >= 0) {
        const int descriptor = ::accept(m_listener, nullptr, nullptr);
        if (descriptor < 0) {
            return;
        }
        makePrivateAndNonBlocking(descriptor);
        clients[++m_lastClient].descriptor = descriptor;
        changed.notify_all();
    }
}

void FakeAgent::Impl::readFrom(int number)
{
    std::vector<std::string> lines;
    {
        const std::scoped_lock hold(lock);
        const auto client = clients.find(number);
        if (client == clients.end() || !reading) {
            return;
        }
        std::array<char, 65'536> bytes{};
        ssize_t count = 0;
        while ((count = ::recv(client->second.descriptor, bytes.data(), bytes.size(), 0)) > 0) {
            client->second.in.append(bytes.data(), static_cast<std::size_t>(count));
        }
        const bool gone = count == 0 || (errno != EAGAIN && errno != EINTR);
        std::string &in = client->second.in;
        std::size_t begin = 0;
        for (auto end = in.find('\n'); end != std::string::npos; end = in.find('\n', begin)) {
            lines.push_back(in.substr(begin, end - begin));
            begin = end + 1;
        }
        in.erase(0, begin);
        if (gone) {
            drop(number);
        }
    }
    for (std::string &line : lines) {
        received(number, std::move(line));
    }
}

void FakeAgent::Impl::drop(int number)
{
    const auto client = clients.find(number);
    ::close(client->second.descriptor);
    clients.erase(client);
    changed.notify_all();
}

void FakeAgent::Impl::writeTo(int number)
{
    const std::scoped_lock hold(lock);
    const auto found = clients.find(number);
    if (found == clients.end()) {
        return;
    }
    Client &client = found->second;
    while (client.sent < client.out.size()) {
        const ssize_t count =
            ::send(client.descriptor, client.out.data() + client.sent, client.out.size() - client.sent, MSG_NOSIGNAL);
        if (count < 0 && errno == EAGAIN) {
            return;
        }
        if (count < 0) {
            break; // gone, and what it was to get with it
        }
        client.sent += static_cast<std::size_t>(count);
    }
    client.out.clear();
    client.sent = 0;
    if (client.closing) {
        drop(number);
    }
}

void FakeAgent::Impl::received(int number, std::string line)
{
    Request request;
    request.line = std::move(line);
    json::error_code error;
    const json::value message = json::parse(request.line, error);
    if (error || !message.is_object() || !message.get_object().contains("method")) {
        const std::scoped_lock hold(lock);
        unexpected.push_back(request.line);
        return;
    }
    const json::object &object = message.get_object();
    request.method = std::string(object.at("method").as_string());
    request.id = object.at("id").as_int64();
    if (const json::value *const params = object.if_contains("params")) {
        request.params = params->as_object();
    }
    {
        const std::scoped_lock hold(lock);
        requests.push_back(request);
        const auto script = scripts.find(request.method);
        if (script != scripts.end() && script->second.held) {
            script->second.kept.emplace_back(number, request);
        }
        changed.notify_all();
        if (script != scripts.end() && script->second.held) {
            return;
        }
    }
    reply(number, request);
}

void FakeAgent::Impl::reply(int number, const Request &request)
{
    Handler handler;
    {
        const std::scoped_lock hold(lock);
        const auto script = scripts.find(request.method);
        if (script != scripts.end() && !script->second.raw.empty()) {
            send(number, withId(script->second.raw.front(), request.id));
            script->second.raw.pop_front();
            return;
        }
        if (script != scripts.end() && script->second.silent) {
            return;
        }
        if (script != scripts.end()) {
            handler = script->second.handler;
        }
        if (!handler) {
            unexpected.push_back(request.method);
        }
    }
    // Outside the lock: a handler may well tell the agent what to do next.
    const Answer answer = handler ? handler(request.params) : Error{unknownMethod, "unknown method " + request.method};
    const std::scoped_lock hold(lock);
    send(number, answerLine(request.id, answer));
}

void FakeAgent::Impl::send(int number, const std::string &line)
{
    const auto client = clients.find(number);
    if (client != clients.end()) {
        client->second.out += line;
    }
}

FakeAgent::FakeAgent() : m_impl(std::make_unique<Impl>()) {}

FakeAgent::~FakeAgent()
{
    if (m_impl->mayBeUnexpected) {
        return;
    }
    for (const std::string &request : unexpected()) {
        ADD_FAILURE() << "unexpected request: " << request;
    }
}

const std::string &FakeAgent::path() const
{
    return m_impl->path;
}

const std::string &FakeAgent::folder() const
{
    return m_impl->folder;
}

void FakeAgent::on(std::string_view method, Handler handler)
{
    const std::scoped_lock hold(m_impl->lock);
    Script &script = m_impl->scripts[std::string(method)];
    script.handler = std::move(handler);
    script.silent = false;
}

void FakeAgent::answer(std::string_view method, json::value result)
{
    on(method, [result = std::move(result)](const json::object &) -> Answer { return result; });
}

void FakeAgent::fail(std::string_view method, Error error)
{
    on(method, [error = std::move(error)](const json::object &) -> Answer { return error; });
}

void FakeAgent::silent(std::string_view method)
{
    const std::scoped_lock hold(m_impl->lock);
    m_impl->scripts[std::string(method)].silent = true;
}

void FakeAgent::queueRaw(std::string_view method, std::string line)
{
    const std::scoped_lock hold(m_impl->lock);
    m_impl->scripts[std::string(method)].raw.push_back(std::move(line));
}

void FakeAgent::hold(std::string_view method)
{
    const std::scoped_lock hold(m_impl->lock);
    m_impl->scripts[std::string(method)].held = true;
}

void FakeAgent::release(std::string_view method)
{
    std::vector<std::pair<int, Request>> kept;
    {
        const std::scoped_lock hold(m_impl->lock);
        Script &script = m_impl->scripts[std::string(method)];
        script.held = false;
        kept.swap(script.kept);
    }
    for (const auto &[client, request] : kept) {
        m_impl->reply(client, request);
    }
    m_impl->wake();
}

void FakeAgent::allowUnexpected()
{
    const std::scoped_lock hold(m_impl->lock);
    m_impl->mayBeUnexpected = true;
}

void FakeAgent::push(std::string_view event, std::optional<json::value> data)
{
    json::object message;
    message["event"] = event;
    if (data) {
        message["result"] = *std::move(data);
    }
    sendRaw(json::serialize(message) + '\n');
}

void FakeAgent::sendRaw(std::string_view bytes)
{
    const std::scoped_lock hold(m_impl->lock);
    m_impl->say(bytes);
    m_impl->wake();
}

void FakeAgent::stopReading()
{
    const std::scoped_lock hold(m_impl->lock);
    m_impl->reading = false;
    m_impl->wake();
}

void FakeAgent::resumeReading()
{
    const std::scoped_lock hold(m_impl->lock);
    m_impl->reading = true;
    m_impl->wake();
}

void FakeAgent::hangUp()
{
    const std::scoped_lock hold(m_impl->lock);
    m_impl->acceptAll();
    for (auto &[number, client] : m_impl->clients) {
        client.closing = true;
    }
    m_impl->wake();
}

void FakeAgent::stop()
{
    const std::scoped_lock hold(m_impl->lock);
    m_impl->acceptAll();
    m_impl->dropAll();
    m_impl->stopListening();
    m_impl->wake();
}

void FakeAgent::restart()
{
    const std::scoped_lock hold(m_impl->lock);
    m_impl->startListening();
    m_impl->wake();
}

std::vector<FakeAgent::Request> FakeAgent::requests() const
{
    const std::scoped_lock hold(m_impl->lock);
    return m_impl->requests;
}

std::vector<FakeAgent::Request> FakeAgent::requests(std::string_view method) const
{
    std::vector<Request> result = requests();
    std::erase_if(result, [&](const Request &request) { return request.method != method; });
    return result;
}

std::vector<std::string> FakeAgent::log() const
{
    std::vector<std::string> methods;
    for (Request &request : requests()) {
        methods.push_back(std::move(request.method));
    }
    return methods;
}

std::size_t FakeAgent::count(std::string_view method) const
{
    const std::scoped_lock hold(m_impl->lock);
    const auto isIt = [&](const Request &request) { return request.method == method; };
    return static_cast<std::size_t>(std::ranges::count_if(m_impl->requests, isIt));
}

std::vector<std::string> FakeAgent::unexpected() const
{
    const std::scoped_lock hold(m_impl->lock);
    return m_impl->unexpected;
}

std::size_t FakeAgent::clients() const
{
    const std::scoped_lock hold(m_impl->lock);
    return m_impl->clients.size();
}

void FakeAgent::clearLog()
{
    const std::scoped_lock hold(m_impl->lock);
    m_impl->requests.clear();
}

bool FakeAgent::waitFor(std::string_view method, std::size_t count, std::chrono::milliseconds limit) const
{
    return m_impl->wait(limit, [&] {
        const auto isIt = [&](const Request &request) { return request.method == method; };
        return static_cast<std::size_t>(std::ranges::count_if(m_impl->requests, isIt)) >= count;
    });
}

bool FakeAgent::waitForClients(std::size_t count, std::chrono::milliseconds limit) const
{
    return m_impl->wait(limit, [&] { return m_impl->clients.size() == count; });
}

} // namespace quillfen::test
