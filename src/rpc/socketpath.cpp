// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/rpc.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace quillfen {

namespace {

std::string_view withoutOuterSlashes(std::string_view path)
{
    const auto first = path.find_first_not_of('/');
    if (first == std::string_view::npos) {
        return {};
    }
    return path.substr(first, path.find_last_not_of('/') - first + 1);
}

} // namespace

std::string RPC::socketPath()
{
    if (const char *path = std::getenv("QUILL_AGENT_SOCKET")) {
        return path; // even an empty one: whoever sets it means it
    }
    if (const char *runtime = std::getenv("XDG_RUNTIME_DIR")) {
        return std::string(runtime) + "/quillfen/agent.sock";
    }
    const char *temporary = std::getenv("TMPDIR");
    std::string path = "/";
    path += withoutOuterSlashes(temporary ? temporary : "/tmp");
    return path + "/quillfen-" + std::to_string(::getuid()) + "/quillfen/agent.sock";
}

} // namespace quillfen
