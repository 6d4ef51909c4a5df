// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/wire/socketpath.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <string>

using quillfen::localagent::defaultSocketPath;

namespace {

// Sets a variable of the environment for one case, or takes it away.
class Variable final {
public:
    Variable(const char *name, const char *value) : m_name(name)
    {
        if (const char *former = std::getenv(name)) {
            m_former = former;
        }
        if (value) {
            ::setenv(name, value, 1);
        } else {
            ::unsetenv(name);
        }
    }
    ~Variable()
    {
        if (m_former) {
            ::setenv(m_name, m_former->c_str(), 1);
        } else {
            ::unsetenv(m_name);
        }
    }
    Variable(const Variable &) = delete;
    Variable &operator=(const Variable &) = delete;

private:
    const char *m_name;
    std::optional<std::string> m_former;
};

std::string below(const std::string &folder)
{
    return folder + "/quillfen-" + std::to_string(::getuid()) + "/quillfen/agent.sock";
}

} // namespace

TEST(SocketPath, TheFirstVariableThatExistsDecides)
{
    const Variable temporary("TMPDIR", "/var/x");
    const Variable runtime("XDG_RUNTIME_DIR", "/run/user/5");
    {
        const Variable socket("QUILL_AGENT_SOCKET", "/a/b.sock");
        EXPECT_EQ(defaultSocketPath(), "/a/b.sock");
    }
    {
        const Variable socket("QUILL_AGENT_SOCKET", "");
        EXPECT_EQ(defaultSocketPath(), "");
    }
    const Variable socket("QUILL_AGENT_SOCKET", nullptr);
    EXPECT_EQ(defaultSocketPath(), "/run/user/5/quillfen/agent.sock");
}

TEST(SocketPath, TheTemporaryFolderLosesItsOuterSlashes)
{
    const Variable socket("QUILL_AGENT_SOCKET", nullptr);
    const Variable runtime("XDG_RUNTIME_DIR", nullptr);
    {
        const Variable temporary("TMPDIR", "//var/folders/x/T/");
        EXPECT_EQ(defaultSocketPath(), below("/var/folders/x/T"));
    }
    const Variable temporary("TMPDIR", nullptr);
    EXPECT_EQ(defaultSocketPath(), below("/tmp"));
}
