// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace quillfen::localagent {

/// What of the world is real on this computer: mount folders under ~/Quillfen and key files under ~/.quill.
/// Nothing of the user's is ever overwritten or deleted.
class Home final {
public:
    explicit Home(std::string folder) : m_folder(std::move(folder)) {}

    [[nodiscard]] std::string mountFolder(std::string_view name) const;
    [[nodiscard]] std::string keyFile(std::string_view name) const;
    [[nodiscard]] bool hasKey(std::string_view name) const;

    /// Makes the folder of a mount and answers its path. A file or a link in its place is a Refusal.
    std::string makeMountFolder(std::string_view name) const;
    /// Makes the folder of a view, which nobody can write into, and answers its path. Whatever is in its place already
    /// is a Refusal, but for an empty folder.
    std::string makeViewFolder(std::string_view name) const;
    /// Takes an empty mount folder away; one with files in it stays.
    void removeMountFolder(std::string_view name) const;
    /// Writes a key file with mode 0600. An existing key is kept.
    void makeKey(std::string_view name, std::string_view key) const;

private:
    std::string m_folder;
};

} // namespace quillfen::localagent
