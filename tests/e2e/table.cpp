// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "table.h"

#include <algorithm>
#include <iterator>

namespace quillfen::e2e {
namespace {

std::vector<std::string> names(const std::vector<Element> &elements)
{
    std::vector<std::string> result;
    std::transform(elements.begin(), elements.end(), std::back_inserter(result),
                   [](const Element &element) { return element.name(); });
    return result;
}

} // namespace

std::vector<std::string> tableColumns(const Client &client, const std::string &table)
{
    const Element found = client.find("table", table);
    return found ? names(found.all("table column header")) : std::vector<std::string>();
}

std::vector<std::vector<Element>> tableRows(const Client &client, const std::string &table)
{
    std::vector<std::vector<Element>> rows;
    const Element found = client.find("table", table);
    const std::size_t columns = found ? found.all("table column header").size() : 0;
    if (columns == 0) {
        return rows;
    }
    const auto cells = found.all("table cell");
    // A row that comes or goes while the tree is read: the next reading has all of it.
    for (std::size_t first = 0; first + columns <= cells.size(); first += columns) {
        const auto begin = cells.begin() + static_cast<std::ptrdiff_t>(first);
        rows.emplace_back(begin, begin + static_cast<std::ptrdiff_t>(columns));
    }
    return rows;
}

std::vector<std::string> tableRow(const Client &client, const std::string &table, const std::string &name)
{
    for (const auto &row : tableRows(client, table)) {
        if (row.front().name() == name) {
            return names(row);
        }
    }
    return {};
}

Element tableCell(const Client &client, const std::string &table, const std::string &name, const std::string &title)
{
    const auto columns = tableColumns(client, table);
    const auto place = static_cast<std::size_t>(std::find(columns.begin(), columns.end(), title) - columns.begin());
    for (const auto &row : tableRows(client, table)) {
        if (row.front().name() == name && place < row.size()) {
            return row[place];
        }
    }
    return {};
}

} // namespace quillfen::e2e
