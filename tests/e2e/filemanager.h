// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace quillfen::e2e {

/// The desktop's file manager as programs know it (org.freedesktop.FileManager1), for as long as this object lives:
/// it opens nothing and remembers what it was asked for.
class FileManager final {
public:
    FileManager();
    ~FileManager();
    FileManager(const FileManager &) = delete;
    FileManager &operator=(const FileManager &) = delete;

    /// The folders that were to be shown, as paths.
    [[nodiscard]] const std::vector<std::string> &folders() const noexcept;
    /// The files that were to be shown in their folders.
    [[nodiscard]] const std::vector<std::string> &items() const noexcept;

private:
    class Service;

    std::unique_ptr<Service> m_service;
};

} // namespace quillfen::e2e
