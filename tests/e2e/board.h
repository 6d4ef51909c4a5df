// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client.h"

#include <string>
#include <vector>

namespace quillfen::e2e {

/// What the Volumes board shows, read from its table.
[[nodiscard]] std::vector<std::string> volumeNames(const Client &client);
/// The texts of one volume's row, in the order of the columns; nothing while it is not listed.
[[nodiscard]] std::vector<std::string> volumeRow(const Client &client, const std::string &name);
/// The name of the row that is selected; empty when none is.
[[nodiscard]] std::string selectedVolume(const Client &client);
[[nodiscard]] std::vector<std::string> columnNames(const Client &client);

/// The titles of the sidebar's entries, and the one that is chosen.
[[nodiscard]] std::vector<std::string> sections(const Client &client);
[[nodiscard]] std::string chosenSection(const Client &client);

/// The volumes of the everyday world, in the agent's order.
[[nodiscard]] std::vector<std::string> everydayVolumes();

} // namespace quillfen::e2e
