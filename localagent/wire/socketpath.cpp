// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/wire/socketpath.h"

#include <unistd.h>

#include <cstdlib>

namespace quillfen::localagent {

namespace {

std::string withoutOuterSlashes(const std::string &path)
{
    const std::size_t first = path.find_first_not_of('/');
    if (first == std::string::npos) {
        return {};
    }
    return path.substr(first, path.find_last_not_of('/') - first + 1);
}

} // namespace

std::string defaultSocketPath()
{
    if (const char *path = std::getenv("QUILL_AGENT_SOCKET")) {
        return path;
    }
    if (const char *runtime = std::getenv("XDG_RUNTIME_DIR")) {
        return std::string(runtime) + "/quillfen/agent.sock";
    }
    const char *temporary = std::getenv("TMPDIR");
    std::string folder(1, '/');
    folder += withoutOuterSlashes(temporary ? temporary : "/tmp");
    return folder + "/quillfen-" + std::to_string(::getuid()) + "/quillfen/agent.sock";
}

} // namespace quillfen::localagent
