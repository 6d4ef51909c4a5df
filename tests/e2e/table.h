// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client.h"

#include <string>
#include <vector>

namespace quillfen::e2e {

/// The titles of a table's columns; nothing while there is no table of that name.
[[nodiscard]] std::vector<std::string> tableColumns(const Client &client, const std::string &table);

/// The cells of a table's rows that show, row by row; rows are whole also while rows come and go.
[[nodiscard]] std::vector<std::vector<Element>> tableRows(const Client &client, const std::string &table);

/// The texts of the first row whose first cell says `name`; nothing while there is none.
[[nodiscard]] std::vector<std::string> tableRow(const Client &client, const std::string &table,
                                                const std::string &name);

/// The cell in the row of `name` below the column `title`; nothing while there is none.
[[nodiscard]] Element tableCell(const Client &client, const std::string &table, const std::string &name,
                                const std::string &title);

} // namespace quillfen::e2e
