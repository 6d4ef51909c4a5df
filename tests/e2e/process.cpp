// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "process.h"

#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillfen::e2e {
namespace {

std::vector<char *> pointers(std::vector<std::string> &texts)
{
    std::vector<char *> result;
    std::transform(texts.begin(), texts.end(), std::back_inserter(result),
                   [](std::string &text) { return text.data(); });
    result.push_back(nullptr);
    return result;
}

std::vector<std::string> assignments(const Environment &environment)
{
    std::vector<std::string> result;
    for (const auto &[name, value] : environment) {
        result.push_back(std::string(name).append("=").append(value));
    }
    return result;
}

// Runs in the child between fork and exec, where only calls that are safe in a signal handler are allowed.
[[noreturn]] void become(char *const *command, char *const *environment, int log)
{
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(log, STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    execvpe(command[0], command, environment);
    const char message[] = "cannot be started\n";
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, message, sizeof message - 1);
    _exit(127);
}

} // namespace

Process::Process(const std::vector<std::string> &command, const Environment &environment, std::filesystem::path log)
    : m_log(std::move(log))
{
    auto words = command;
    auto settings = assignments(environment);
    const auto arguments = pointers(words);
    const auto variables = pointers(settings);
    const int file = open(m_log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (file < 0) {
        throw std::system_error(errno, std::generic_category(), m_log);
    }
    m_id = fork();
    if (m_id == 0) {
        become(arguments.data(), variables.data(), file);
    }
    const int error = errno;
    close(file);
    if (m_id < 0) {
        throw std::system_error(error, std::generic_category(), command.front());
    }
    setpgid(m_id, m_id); // here too: whichever of us comes first, a signal to the group finds it
}

Process::~Process()
{
    signal(SIGTERM);
    if (!finish(std::chrono::seconds(5))) {
        signal(SIGKILL);
    }
    kill(-m_id, SIGKILL); // whoever it started and left behind
    static_cast<void>(finish());
}

bool Process::running()
{
    int status = 0;
    if (!m_status && waitpid(m_id, &status, WNOHANG) == m_id) {
        m_status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    return !m_status;
}

std::string Process::output() const
{
    std::ifstream file(m_log);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Process::signal(int number) const
{
    if (!m_status) {
        kill(m_id, number);
    }
}

std::optional<int> Process::finish(std::chrono::milliseconds bound)
{
    static_cast<void>(waitFor([this] { return !running(); }, bound));
    return m_status;
}

bool listensAt(const std::filesystem::path &socket)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, socket.c_str(), sizeof address.sun_path - 1);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool result = connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    close(descriptor);
    return result;
}

std::string displayIn(const std::string &output)
{
    std::istringstream lines(output);
    const auto isDigit = [](unsigned char character) { return std::isdigit(character) != 0; };
    for (std::string line; std::getline(lines, line) && !lines.eof();) {
        if (!line.empty() && std::all_of(line.begin(), line.end(), isDigit)) {
            return line;
        }
    }
    return {};
}

} // namespace quillfen::e2e
