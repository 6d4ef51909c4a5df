// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/home.h"

#include "localagent/world/refusal.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace quillfen::localagent {

namespace {

void makeFolder(const std::string &folder, mode_t mode)
{
    if (::mkdir(folder.c_str(), mode) != 0 && errno != EEXIST) {
        throw Refusal(Refusal::Kind::Conflict,
                      "The folder " + folder + " cannot be made: " + std::strerror(errno) + ".");
    }
}

} // namespace

std::string Home::mountFolder(std::string_view name) const
{
    return m_folder + "/Quillfen/" + std::string(name);
}

std::string Home::keyFile(std::string_view name) const
{
    return m_folder + "/.quill/quill-" + std::string(name) + ".key";
}

bool Home::hasKey(std::string_view name) const
{
    return ::access(keyFile(name).c_str(), F_OK) == 0;
}

std::string Home::makeMountFolder(std::string_view name) const
{
    std::string folder = mountFolder(name);
    makeFolder(m_folder + "/Quillfen", 0755);
    makeFolder(folder, 0755);
    struct stat info = {};
    if (::lstat(folder.c_str(), &info) != 0 || !S_ISDIR(info.st_mode)) {
        throw Refusal(Refusal::Kind::Conflict, folder + " is in the way: it is not a folder.");
    }
    return folder;
}

std::string Home::makeViewFolder(std::string_view name) const
{
    std::string folder = mountFolder(name);
    makeFolder(m_folder + "/Quillfen", 0755);
    ::rmdir(folder.c_str()); // left behind, perhaps with other rights
    if (::mkdir(folder.c_str(), 0555) != 0) {
        throw Refusal(Refusal::Kind::Conflict,
                      errno == EEXIST ? folder + " is in the way: move it somewhere else first."
                                      : "The folder " + folder + " cannot be made: " + std::strerror(errno) + ".");
    }
    return folder;
}

void Home::removeMountFolder(std::string_view name) const
{
    ::rmdir(mountFolder(name).c_str());
}

void Home::makeKey(std::string_view name, std::string_view key) const
{
    makeFolder(m_folder + "/.quill", 0700);
    const std::string path = keyFile(name);
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (file < 0) {
        if (errno == EEXIST) {
            return;
        }
        throw Refusal(Refusal::Kind::Conflict,
                      "The key file " + path + " cannot be made: " + std::strerror(errno) + ".");
    }
    const ssize_t written = ::write(file, key.data(), key.size());
    ::close(file);
    if (written != static_cast<ssize_t>(key.size())) {
        ::unlink(path.c_str()); // half a key would pass for one
        throw Refusal(Refusal::Kind::Full, "The key file " + path + " cannot be written.");
    }
}

} // namespace quillfen::localagent
