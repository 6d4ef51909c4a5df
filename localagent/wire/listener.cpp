// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/wire/listener.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace quillfen::localagent {

namespace {

// The client refuses longer paths, so the agent does not offer them.
constexpr std::size_t longestPath = 103;

[[noreturn]] void fail(const std::string &what, int error)
{
    throw ListenError(what + ": " + std::strerror(error));
}

std::string folderOf(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// Whoever owns or can write into a folder above can put another one in the place of ours; with the sticky bit, as
/// /tmp has it, only in the place of their own.
void requireSafeParent(const std::string &folder)
{
    struct stat info = {};
    if (::stat(folder.c_str(), &info) != 0) {
        fail("the folder " + folder + " cannot be looked at", errno);
    }
    if (info.st_uid != 0 && info.st_uid != ::getuid()) {
        throw ListenError("the folder " + folder + " on the way to the socket belongs to another user; " +
                          "name a socket in a folder of your own");
    }
    if ((info.st_mode & (S_IWGRP | S_IWOTH)) != 0 && (info.st_mode & S_ISVTX) == 0) {
        throw ListenError("other users can write into the folder " + folder + " on the way to the socket; " +
                          "take that right away (chmod go-w) or name a socket in another folder");
    }
}

void requireSafeParents(const std::string &folder)
{
    if (folder.front() == '/') {
        requireSafeParent("/");
    }
    for (std::size_t slash = folder.find('/', 1); slash != std::string::npos; slash = folder.find('/', slash + 1)) {
        requireSafeParent(folder.substr(0, slash));
    }
}

/// The path may lead through links, so that the folders which really lie above are others.
void requireSafeWayTo(const std::string &folder)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(folder.c_str(), nullptr), &std::free);
    if (real == nullptr) {
        fail("the folder " + folder + " cannot be opened", errno);
    }
    requireSafeParents(real.get());
}

void makeFolders(const std::string &folder)
{
    for (std::size_t slash = folder.find('/', 1);; slash = folder.find('/', slash + 1)) {
        const std::string part = folder.substr(0, slash);
        if (::mkdir(part.c_str(), S_IRWXU) != 0 && errno != EEXIST && errno != EISDIR && errno != EROFS) {
            fail("the folder " + part + " cannot be made", errno);
        }
        if (slash == std::string::npos) {
            return;
        }
        requireSafeParent(part); // before anything is made in it
    }
}

// Whoever can write into the folder can put another agent in this one's place. An existing folder is never changed:
// it may be the user's home.
Descriptor openPrivateFolder(const std::string &folder)
{
    Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat info = {};
    if (!opened.valid() || ::fstat(opened.get(), &info) != 0) {
        fail("the folder " + folder + " cannot be opened", errno);
    }
    if (info.st_uid != ::getuid()) {
        throw ListenError("the folder " + folder + " belongs to another user; name a socket in a folder of your own");
    }
    if ((info.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        throw ListenError("the folder " + folder + " is open to other users; make it private (chmod 700) or name a " +
                          "socket in another folder");
    }
    return opened;
}

sockaddr_un addressOf(const std::string &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    return address;
}

Descriptor newSocket()
{
    Descriptor made(::socket(AF_UNIX, SOCK_STREAM, 0));
    if (!made.valid()) {
        fail("no socket", errno);
    }
    ::fcntl(made.get(), F_SETFD, FD_CLOEXEC);
    ::fcntl(made.get(), F_SETFL, O_NONBLOCK);
    return made;
}

void removeLeftover(const std::string &path)
{
    struct stat info = {};
    if (::lstat(path.c_str(), &info) != 0) {
        return;
    }
    if (!S_ISSOCK(info.st_mode)) {
        throw ListenError(path + " exists and is not a socket; it is left alone");
    }
    const Descriptor probe = newSocket();
    const sockaddr_un address = addressOf(path);
    // A full queue of a busy agent (EAGAIN) is an answer too.
    if (::connect(probe.get(), reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0 ||
        (errno != ECONNREFUSED && errno != ENOENT)) {
        throw ListenError("an agent answers already on " + path);
    }
    ::unlink(path.c_str());
}

} // namespace

Listener::Listener(std::string path) : m_path(std::move(path))
{
    if (m_path.empty() || m_path.size() > longestPath) {
        throw ListenError(m_path.empty() ? "the socket path is empty"
                                         : "the socket path is longer than 103 bytes: " + m_path);
    }
    const std::string folder = folderOf(m_path);
    makeFolders(folder);
    requireSafeWayTo(folder);
    const Descriptor opened = openPrivateFolder(folder);
    // Two agents that start at once look and replace one after the other; the lock ends with the descriptor.
    ::flock(opened.get(), LOCK_EX);
    removeLeftover(m_path);

    m_socket = newSocket();
    const sockaddr_un address = addressOf(m_path);
    if (::bind(m_socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof(address)) != 0) {
        fail("the socket " + m_path + " cannot be made", errno);
    }
    ::chmod(m_path.c_str(), S_IRUSR | S_IWUSR);
    struct stat info = {};
    if (::lstat(m_path.c_str(), &info) == 0) {
        m_device = info.st_dev;
        m_inode = info.st_ino;
    }
    if (::listen(m_socket.get(), SOMAXCONN) != 0) {
        fail("no listening on " + m_path, errno);
    }
}

Listener::~Listener()
{
    struct stat info = {};
    if (::lstat(m_path.c_str(), &info) == 0 && info.st_dev == m_device && info.st_ino == m_inode) {
        ::unlink(m_path.c_str());
    }
}

Descriptor Listener::accept() const
{
    Descriptor client(::accept(m_socket.get(), nullptr, nullptr));
    if (client.valid()) {
        ::fcntl(client.get(), F_SETFD, FD_CLOEXEC);
        ::fcntl(client.get(), F_SETFL, O_NONBLOCK);
#ifdef SO_NOSIGPIPE
        const int on = 1;
        ::setsockopt(client.get(), SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof(on));
#endif
    }
    return client;
}

} // namespace quillfen::localagent
