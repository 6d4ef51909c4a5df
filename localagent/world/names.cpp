// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/names.h"

#include "localagent/world/refusal.h"

#include <algorithm>
#include <array>
#include <string>

namespace quillfen::localagent {

namespace {

constexpr std::size_t longestName = 64;

[[noreturn]] void refuse(const std::string &message)
{
    throw Refusal(Refusal::Kind::Bad, message);
}

char folded(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isControl(char letter)
{
    const auto byte = static_cast<unsigned char>(letter);
    return byte < 0x20 || byte == 0x7f;
}

// In UTF-8: the second set of control characters, line and paragraph separators, and the marks that turn the direction
// of the text around them, with which one name can be made to look like another.
bool holdsHiddenCharacter(std::string_view name)
{
    static constexpr std::array<std::string_view, 12> hidden = {
        "\u200e", "\u200f", "\u2028", "\u2029", "\u202a", "\u202b",
        "\u202c", "\u202d", "\u202e", "\u2066", "\u2067", "\u2068",
    };
    const auto found = [name](std::string_view mark) { return name.find(mark) != std::string_view::npos; };
    if (std::any_of(hidden.begin(), hidden.end(), found) || found("\u2069")) {
        return true;
    }
    for (std::size_t at = name.find('\xc2'); at != std::string_view::npos; at = name.find('\xc2', at + 1)) {
        if (at + 1 < name.size() && static_cast<unsigned char>(name[at + 1]) < 0xa0) {
            return true;
        }
    }
    return false;
}

} // namespace

void checkVolumeName(std::string_view name)
{
    checkFolderName(name, "volume");
}

void checkFolderName(std::string_view name, std::string_view what)
{
    if (name.find_first_not_of(' ') == std::string_view::npos) {
        refuse("Give the " + std::string(what) + " a name.");
    }
    if (name.size() > longestName) {
        refuse("The name is too long: at most 64 bytes, this one has " + std::to_string(name.size()) + ".");
    }
    if (name.starts_with('.')) {
        refuse("The name cannot begin with a point: its folder would be hidden.");
    }
    if (name.starts_with(' ') || name.ends_with(' ')) {
        refuse("The name cannot begin or end with a space.");
    }
    if (const std::size_t at = name.find_first_of("/\\:"); at != std::string_view::npos) {
        refuse("The name cannot hold \"" + std::string(1, name[at]) + "\": it is the name of a folder too.");
    }
    if (std::any_of(name.begin(), name.end(), isControl) || holdsHiddenCharacter(name)) {
        refuse("The name cannot hold control characters.");
    }
}

bool sameFolder(std::string_view left, std::string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char one, char other) { return folded(one) == folded(other); });
}

} // namespace quillfen::localagent
