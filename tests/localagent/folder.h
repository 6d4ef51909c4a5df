// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace quillfen::localagent::test {

/// A private folder for one case, gone with it.
class Folder final {
public:
    Folder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "agent-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no folder for the test");
        }
        m_path = pattern;
    }
    ~Folder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    [[nodiscard]] std::string path(const std::string &name = {}) const
    {
        return name.empty() ? m_path : m_path + "/" + name;
    }

private:
    std::string m_path;
};

} // namespace quillfen::localagent::test
