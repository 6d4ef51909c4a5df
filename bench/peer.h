// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "figures.h"

#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <thread>

namespace quillfen::bench {

inline sockaddr_un addressOf(const std::string &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

/// A plain blocking socket to whoever listens there.
inline int connectedTo(const std::string &path)
{
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const sockaddr_un address = addressOf(path);
    require(::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0, "no connection");
    return socket;
}

inline void sendAll(int socket, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t sent = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) {
            return; // the client has gone
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
}

/// The digits of a request's id.
inline std::string_view idOf(std::string_view request)
{
    const std::size_t begin = request.find(R"("id":)") + 5;
    return request.substr(begin, request.find_first_not_of("0123456789", begin) - begin);
}

/// Calls `use` with each request of a client that sends short ones and waits for their answers.
template <typename Use>
void eachRequest(int socket, Use use)
{
    std::array<char, 4'096> bytes{};
    for (ssize_t count = 0; (count = ::recv(socket, bytes.data(), bytes.size(), 0)) > 0;) {
        use(std::string_view(bytes.data(), static_cast<std::size_t>(count)));
    }
}

/// The other end of a connection: serves one client after the other on a thread of its own.
class Peer final {
public:
    using Serve = std::function<void(int socket)>; ///< returns when the client has gone

    explicit Peer(Serve serve) : m_path(m_folder.filePath(QStringLiteral("s")).toStdString())
    {
        m_listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
        const sockaddr_un address = addressOf(m_path);
        require(::bind(m_listener, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0, "no socket");
        require(::listen(m_listener, 4) == 0, "nobody can connect");
        m_thread = std::thread([this, serve = std::move(serve)] {
            for (int socket = 0; (socket = ::accept(m_listener, nullptr, nullptr)) >= 0; ::close(socket)) {
                serve(socket);
            }
        });
    }
    ~Peer()
    {
        ::shutdown(m_listener, SHUT_RDWR);
        m_thread.join();
        ::close(m_listener);
    }
    Peer(const Peer &) = delete;
    Peer &operator=(const Peer &) = delete;

    [[nodiscard]] const std::string &path() const { return m_path; }

private:
    QTemporaryDir m_folder;
    std::string m_path;
    int m_listener = -1;
    std::thread m_thread;
};

} // namespace quillfen::bench
