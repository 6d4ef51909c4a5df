// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/rpc.h"

#include <gmock/gmock.h>

#include <unistd.h>

#include <cstdlib>
#include <map>
#include <optional>

namespace quillfen::test {

namespace {

/// Starts from an environment in which nothing is said, and restores what was.
struct SocketPath : testing::Test {
    SocketPath()
    {
        for (const char *name : {"QUILL_AGENT_SOCKET", "XDG_RUNTIME_DIR", "TMPDIR"}) {
            const char *const value = std::getenv(name);
            m_before[name] = value ? std::optional<std::string>(value) : std::nullopt;
            ::unsetenv(name);
        }
    }
    ~SocketPath() override
    {
        for (const auto &[name, value] : m_before) {
            if (value) {
                set(name.c_str(), value->c_str());
            } else {
                ::unsetenv(name.c_str());
            }
        }
    }
    static void set(const char *name, const char *value) { ::setenv(name, value, 1); }
    static std::string user() { return std::to_string(::getuid()); }

private:
    std::map<std::string, std::optional<std::string>> m_before;
};

TEST_F(SocketPath, AnExplicitPathGoesBeforeEverythingAndIsUsedAsItStands)
{
    set("QUILL_AGENT_SOCKET", "relative//agent/");
    set("XDG_RUNTIME_DIR", "/run/user/7");
    set("TMPDIR", "/var/tmp");
    EXPECT_EQ(RPC::socketPath(), "relative//agent/");
}

TEST_F(SocketPath, AnEmptyExplicitPathIsAPathToo)
{
    set("QUILL_AGENT_SOCKET", "");
    set("XDG_RUNTIME_DIR", "/run/user/7");
    EXPECT_EQ(RPC::socketPath(), "");
}

TEST_F(SocketPath, TheRuntimeFolderComesBeforeTheTemporaryOne)
{
    set("XDG_RUNTIME_DIR", "/run/user/7");
    set("TMPDIR", "/var/tmp");
    EXPECT_EQ(RPC::socketPath(), "/run/user/7/quillfen/agent.sock");
}

TEST_F(SocketPath, ASlashAtTheEndOfTheRuntimeFolderIsKept)
{
    set("XDG_RUNTIME_DIR", "/run/user/7/");
    EXPECT_EQ(RPC::socketPath(), "/run/user/7//quillfen/agent.sock");
}

TEST_F(SocketPath, AnEmptyRuntimeFolderIsSetToo)
{
    set("XDG_RUNTIME_DIR", "");
    EXPECT_EQ(RPC::socketPath(), "/quillfen/agent.sock");
}

TEST_F(SocketPath, WithNothingSetItLiesUnderTmpInAFolderOfTheUser)
{
    EXPECT_EQ(RPC::socketPath(), "/tmp/quillfen-" + user() + "/quillfen/agent.sock");
}

TEST_F(SocketPath, TheTemporaryFolderLosesItsOuterSlashesAndGetsOneInFront)
{
    set("TMPDIR", "/var/folders/x/T/");
    EXPECT_EQ(RPC::socketPath(), "/var/folders/x/T/quillfen-" + user() + "/quillfen/agent.sock");
    set("TMPDIR", "//a//b///");
    EXPECT_EQ(RPC::socketPath(), "/a//b/quillfen-" + user() + "/quillfen/agent.sock");
    set("TMPDIR", "c");
    EXPECT_EQ(RPC::socketPath(), "/c/quillfen-" + user() + "/quillfen/agent.sock");
}

TEST_F(SocketPath, ATemporaryFolderOfNothingButSlashesLeavesTheOneInFront)
{
    set("TMPDIR", "///");
    EXPECT_EQ(RPC::socketPath(), "//quillfen-" + user() + "/quillfen/agent.sock");
}

} // namespace

} // namespace quillfen::test
