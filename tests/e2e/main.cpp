// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

// Started with the first test and not when tests are merely listed.
class DesktopForAll final : public testing::Environment {
public:
    void SetUp() override { m_desktop.emplace(); }
    void TearDown() override { m_desktop.reset(); }

private:
    std::optional<quillfen::e2e::Desktop> m_desktop;
};

} // namespace

// The accessibility library keeps its connection and its caches to the end of the process.
extern "C" const char *__lsan_default_suppressions(); // NOLINT(bugprone-reserved-identifier)
extern "C" const char *__lsan_default_suppressions()  // NOLINT(bugprone-reserved-identifier)
{
    return "leak:libatspi\nleak:libdbus\nleak:libglib\nleak:libgobject\nleak:libX11\n";
}

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new DesktopForAll); // GoogleTest owns it
    return RUN_ALL_TESTS();
}
