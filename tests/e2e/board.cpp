// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"

#include "table.h"

namespace quillfen::e2e {
namespace {

constexpr auto volumes = "Volumes";

bool isEntry(const Element &element)
{
    return element.role() == "page tab";
}

} // namespace

std::vector<std::string> volumeNames(const Client &client)
{
    std::vector<std::string> result;
    for (const auto &row : tableRows(client, volumes)) {
        result.push_back(row.front().name());
    }
    return result;
}

std::vector<std::string> volumeRow(const Client &client, const std::string &name)
{
    return tableRow(client, volumes, name);
}

std::string selectedVolume(const Client &client)
{
    for (const auto &row : tableRows(client, volumes)) {
        if (row.front().selected()) {
            return row.front().name();
        }
    }
    return {};
}

std::vector<std::string> columnNames(const Client &client)
{
    return tableColumns(client, volumes);
}

std::vector<std::string> sections(const Client &client)
{
    std::vector<std::string> titles;
    for (const auto &entry : client.all(isEntry)) {
        titles.push_back(entry.name());
    }
    return titles;
}

std::string chosenSection(const Client &client)
{
    return client.find([](const Element &element) { return isEntry(element) && element.selected(); }).name();
}

std::vector<std::string> everydayVolumes()
{
    return {"Documents", "photos-archive", "studio-projects", "vm-store", "accounts-2025"};
}

} // namespace quillfen::e2e
