// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/clock.h"

#include <cstdint>
#include <string>
#include <unordered_map>

namespace quillfen::localagent {

/// The latest full copy of a volume that leaves the vault.
struct Export {
    std::string state;    ///< "ordered", "packing", "ready", "shipped", "failed", "removed"
    std::string delivery; ///< "link" or "media"
    std::string medium;   ///< in words
    std::string carrier;  ///< what the key is not on: "tape", "discs", "drive"
    std::string region;
    std::string address;
    std::int64_t room = 0; ///< bytes that the ordered media hold
    std::string link;
    Time expires = {}; ///< of the link
    std::string error;
    std::string retrievalNote;
    std::string keyNote;
    std::string tracking;
    std::uint64_t life = 0; ///< grows with every order and removal, so that a late timer knows it is late
};

/// By volume.
using Exports = std::unordered_map<std::int64_t, Export>;

} // namespace quillfen::localagent
