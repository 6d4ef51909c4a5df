// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/connection.h"

#include "rpc/platform.h"
#include "rpc/rpc.h"

#include <QSocketNotifier>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

namespace quillfen {

namespace {

// What sun_path holds on every platform we run on, the terminating zero included (unix(7); macOS has the 104).
constexpr std::size_t maxPath = 104;

// Parsing and freeing recurse; some platforms give a thread no more than half a megabyte unless asked.
constexpr std::size_t threadStack = 8U * 1'024 * 1'024;

class Descriptor final {
public:
    explicit Descriptor(int descriptor) noexcept : m_descriptor(descriptor) {}
    ~Descriptor()
    {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    [[nodiscard]] int get() const noexcept { return m_descriptor; }
    [[nodiscard]] int release() noexcept { return std::exchange(m_descriptor, -1); }

private:
    int m_descriptor;
};

RPCError systemFailure(int error)
{
    const std::string text = std::generic_category().message(error);
    return {RPCError::notConnected, RPC::tr("socket: %1").arg(QString::fromLocal8Bit(text.c_str()))};
}

int openConnection(const std::string &path)
{
    Descriptor socket(platform::openLocalSocket());
    if (socket.get() < 0) {
        throw systemFailure(errno);
    }
    if (path.size() + 1 > maxPath) {
        throw RPCError(RPCError::notConnected, RPC::tr("socket path too long"));
    }
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    // Without blocking: an agent whose backlog is full must not stop the main thread. Reading does block.
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + path.size());
    if (::connect(socket.get(), reinterpret_cast<const sockaddr *>(&address), length) < 0) {
        const QString text = RPC::tr("the Quillfen agent is not running (%1)");
        throw RPCError(RPCError::notConnected, text.arg(QString::fromStdString(path)));
    }
    platform::setBlocking(socket.get());
    return socket.release();
}

} // namespace

Connection::Connection(const std::string &path, MainQueue &queue, Handlers handlers)
    : m_queue(queue), m_handlers(std::move(handlers)), m_descriptor(openConnection(path))
{
    start();
}

Connection::~Connection()
{
    m_stopping = true;
    ::shutdown(m_descriptor, SHUT_RDWR); // wakes the thread
    ::pthread_join(m_thread, nullptr);
    m_room.reset();
    ::close(m_descriptor);
}

void Connection::start()
{
    pthread_attr_t attributes;
    ::pthread_attr_init(&attributes);
    ::pthread_attr_setstacksize(&attributes, threadStack);
    const auto body = [](void *self) -> void * {
        static_cast<Connection *>(self)->run();
        return nullptr;
    };
    const int error = ::pthread_create(&m_thread, &attributes, body, this);
    ::pthread_attr_destroy(&attributes);
    if (error != 0) {
        ::close(m_descriptor);
        throw systemFailure(error);
    }
}

bool Connection::send(std::int64_t id, PendingCall &call, std::string line)
{
    const std::scoped_lock hold(m_lock);
    if (m_ended) {
        return false;
    }
    m_waiting.emplace_hint(m_waiting.end(), id, &call);
    const bool mustQueue = hasUnwritten(); // overtaking would break a line in two
    enqueue(std::move(line));
    if (!mustQueue) {
        write();
    }
    return true;
}

PendingCall *Connection::take(std::int64_t id)
{
    const std::scoped_lock hold(m_lock);
    const auto entry = m_waiting.find(id);
    if (entry == m_waiting.end()) {
        return nullptr;
    }
    PendingCall *const call = entry->second;
    m_waiting.erase(entry);
    return call;
}

bool Connection::isWaiting(std::int64_t id) const
{
    const std::scoped_lock hold(m_lock);
    return m_waiting.contains(id);
}

/// Under the lock.
void Connection::enqueue(std::string line)
{
    if (!hasUnwritten()) {
        m_unwritten = std::move(line);
        m_written = 0;
        return;
    }
    if (m_written > m_unwritten.size() / 2) {
        m_unwritten.erase(0, m_written);
        m_written = 0;
    }
    m_unwritten += line;
}

/// Writes what the socket takes, and waits in the event loop for room when something is left. Under the lock.
void Connection::write()
{
    while (hasUnwritten()) {
        const ssize_t sent =
            platform::sendSome(m_descriptor, m_unwritten.data() + m_written, m_unwritten.size() - m_written);
        if (sent > 0) {
            m_written += static_cast<std::size_t>(sent);
        } else if (sent < 0 && errno == EINTR) {
            continue;
        } else if (sent < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
            break;
        } else {
            // The agent takes nothing any more, so the connection ends: only this wakes the reading thread. Linux still
            // lets it read what has come already; macOS throws that away, and the calls fail as unanswered ones.
            ::shutdown(m_descriptor, SHUT_RDWR);
            m_written = m_unwritten.size();
        }
    }
    if (!hasUnwritten()) {
        m_unwritten = {};
    }
    if (!m_room && hasUnwritten()) {
        m_room = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Write);
        QObject::connect(m_room.get(), &QSocketNotifier::activated, m_room.get(), [this] { writeMore(); });
    }
    if (m_room) {
        m_room->setEnabled(hasUnwritten());
    }
}

void Connection::writeMore()
{
    const std::scoped_lock hold(m_lock);
    write();
}

void Connection::run()
{
    platform::nameReadingThread();
    readLoop();
    Waiting left;
    {
        const std::scoped_lock hold(m_lock);
        m_ended = true;
        left.swap(m_waiting);
    }
    m_handlers.ended(left);
}

void Connection::readLoop()
{
    LineReader reader;
    const LineReader::Sink sink = [this](LineReader::Message &message, std::size_t bytes) {
        if (!m_stopping) {
            m_handlers.received(*this, message, bytes);
        }
    };
    while (!m_stopping) {
        const std::span<char> room = reader.room();
        const ssize_t count = ::recv(m_descriptor, room.data(), room.size(), 0);
        if (count > 0) {
            const MainQueue::Batch batch(m_queue);
            reader.received(static_cast<std::size_t>(count), sink);
        } else if (count == 0 || errno != EINTR) {
            return;
        }
    }
}

} // namespace quillfen
