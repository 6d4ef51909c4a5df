// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/process/socketdoor.h"

#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QThread>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

using namespace std::chrono_literals;

namespace quillfen {

namespace {

constexpr auto taken = "ok\n";
/// How long a second start waits for the first: milliseconds.
constexpr int patience = 2000;
constexpr auto pollInterval = 10ms;
/// No wish comes near it.
constexpr qsizetype longestLine = qsizetype{64} * 1024;

struct Address {
    explicit Address(const std::string &path)
    {
        value.sun_family = AF_UNIX;
        fits = path.size() < sizeof value.sun_path;
        std::memcpy(value.sun_path, path.data(), std::min(path.size(), sizeof value.sun_path - 1));
    }

    [[nodiscard]] const sockaddr *get() const { return reinterpret_cast<const sockaddr *>(&value); }

    sockaddr_un value = {};
    bool fits = false;
};

int newSocket()
{
    return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

/// Waits for something to read.
bool readable(int descriptor)
{
    pollfd entry = {.fd = descriptor, .events = POLLIN, .revents = 0};
    return ::poll(&entry, 1, patience) > 0;
}

/// Appends what is there to read; false at the end of the connection.
bool appendFrom(int descriptor, QByteArray &line)
{
    std::array<char, 4096> chunk = {};
    const ssize_t count = ::recv(descriptor, chunk.data(), chunk.size(), 0);
    line.append(chunk.data(), std::max<ssize_t>(count, 0));
    return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
}

/// Reads the answer to a wish; what has come of it when it does not end.
QByteArray readLine(int descriptor)
{
    QByteArray line;
    while (!line.contains('\n') && readable(descriptor) && appendFrom(descriptor, line)) {
    }
    return line;
}

bool sendAll(int descriptor, const QByteArray &bytes)
{
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count =
            ::send(descriptor, bytes.constData() + sent, static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (count <= 0) {
            return false;
        }
        sent += static_cast<qsizetype>(count);
    }
    return true;
}

/// A connection to the first process; -1 while it does not listen.
int connectTo(const std::string &path)
{
    const Address address(path);
    const int descriptor = newSocket();
    if (descriptor >= 0 && (!address.fits || ::connect(descriptor, address.get(), sizeof address.value) != 0)) {
        ::close(descriptor);
        return -1;
    }
    return descriptor;
}

} // namespace

SocketDoor::SocketDoor(std::string folder, QObject *parent) : Door(parent), m_folder(std::move(folder)) {}

SocketDoor::~SocketDoor()
{
    for (const auto &[visitor, line] : m_lines) {
        ::close(visitor);
    }
    if (m_listening >= 0) {
        ::unlink((m_folder + "/client.sock").c_str());
        ::close(m_listening);
    }
    if (m_lock >= 0) {
        ::close(m_lock);
    }
}

std::string SocketDoor::defaultFolder()
{
    if (const char *runtime = std::getenv("XDG_RUNTIME_DIR"); runtime != nullptr && *runtime != '\0') {
        return std::string(runtime) + "/quillfen";
    }
    const char *temporary = std::getenv("TMPDIR");
    return std::string(temporary != nullptr && *temporary != '\0' ? temporary : "/tmp") + "/quillfen-client-" +
           std::to_string(::getuid());
}

Claim SocketDoor::claim(const Wish &wish)
{
    if (!makeFolder()) {
        return Claim::First;
    }
    if (!lock()) {
        return handOver(wish);
    }
    listen();
    return Claim::First;
}

bool SocketDoor::makeFolder() const
{
    ::mkdir(m_folder.c_str(), S_IRWXU);
    struct stat found = {};
    return ::lstat(m_folder.c_str(), &found) == 0 && S_ISDIR(found.st_mode) && found.st_uid == ::getuid() &&
           (found.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

/// False when another process holds the lock. It ends with the process, however that ends.
bool SocketDoor::lock()
{
    m_lock = ::open((m_folder + "/client.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    return m_lock < 0 || ::flock(m_lock, LOCK_EX | LOCK_NB) == 0;
}

void SocketDoor::listen()
{
    const std::string path = m_folder + "/client.sock";
    const Address address(path);
    ::unlink(path.c_str()); // of a process that has ended without tidying up: the lock is ours
    m_listening = newSocket();
    if (!address.fits || m_listening < 0 || ::bind(m_listening, address.get(), sizeof address.value) != 0 ||
        ::listen(m_listening, SOMAXCONN) != 0) {
        return;
    }
    // The notifier needs the application's event dispatcher, which comes after the claim.
    QMetaObject::invokeMethod(
        this,
        [this] {
            auto *notifier = new QSocketNotifier(m_listening, QSocketNotifier::Read, this);
            connect(notifier, &QSocketNotifier::activated, this, &SocketDoor::accept);
        },
        Qt::QueuedConnection);
}

void SocketDoor::accept()
{
    const int visitor = ::accept4(m_listening, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (visitor < 0) {
        return;
    }
    m_lines[visitor].clear();
    // Its line is there as a rule; one that is not must not keep the window waiting.
    auto *notifier = new QSocketNotifier(visitor, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, visitor, notifier] {
        if (!receive(visitor)) {
            notifier->setEnabled(false);
            notifier->deleteLater();
            ::close(visitor);
            m_lines.erase(visitor);
        }
    });
}

/// False when nothing more is to come from this visitor.
bool SocketDoor::receive(int visitor)
{
    QByteArray &line = m_lines[visitor];
    const bool open = appendFrom(visitor, line);
    if (open && !line.contains('\n') && line.size() < longestLine) {
        return true;
    }
    if (const std::optional<Wish> wish = wishFromLine(line)) {
        sendAll(visitor, taken);
        // Later, as granting may open a dialog, beneath which this visitor must not be heard again.
        QMetaObject::invokeMethod(
            this, [this, wish] { Q_EMIT wished(*wish); }, Qt::QueuedConnection);
    }
    return false;
}

Claim SocketDoor::handOver(const Wish &wish) const
{
    QElapsedTimer waited;
    waited.start();
    int descriptor = connectTo(m_folder + "/client.sock");
    while (descriptor < 0 && waited.elapsed() < patience) {
        QThread::msleep(pollInterval.count());
        descriptor = connectTo(m_folder + "/client.sock");
    }
    if (descriptor < 0) {
        return Claim::Unanswered;
    }
    const bool sent = sendAll(descriptor, lineOf(wish));
    const bool answered = sent && readLine(descriptor) == taken;
    ::close(descriptor);
    return answered ? Claim::HandedOver : Claim::Unanswered;
}

} // namespace quillfen
