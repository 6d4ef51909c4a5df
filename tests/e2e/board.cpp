// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "board.h"

#include <algorithm>
#include <iterator>

namespace quillfen::e2e {
namespace {

constexpr std::size_t columns = 7;

std::vector<Element> cells(const Client &client)
{
    const Element table = client.find("table", "Volumes");
    auto result = table ? table.all("table cell") : std::vector<Element>();
    // A row that comes or goes while the tree is read: the next reading has all of it.
    result.resize(result.size() / columns * columns);
    return result;
}

std::vector<std::string> names(const std::vector<Element> &elements)
{
    std::vector<std::string> result;
    std::transform(elements.begin(), elements.end(), std::back_inserter(result),
                   [](const Element &element) { return element.name(); });
    return result;
}

bool isEntry(const Element &element)
{
    return element.role() == "page tab";
}

} // namespace

std::vector<std::string> volumeNames(const Client &client)
{
    const auto all = cells(client);
    std::vector<std::string> result;
    for (std::size_t first = 0; first < all.size(); first += columns) {
        result.push_back(all[first].name());
    }
    return result;
}

std::vector<std::string> volumeRow(const Client &client, const std::string &name)
{
    const auto all = names(cells(client));
    for (std::size_t first = 0; first < all.size(); first += columns) {
        const auto begin = all.begin() + static_cast<std::ptrdiff_t>(first);
        if (*begin == name) {
            return {begin, begin + columns};
        }
    }
    return {};
}

std::string selectedVolume(const Client &client)
{
    const auto all = cells(client);
    for (std::size_t first = 0; first < all.size(); first += columns) {
        if (all[first].selected()) {
            return all[first].name();
        }
    }
    return {};
}

std::vector<std::string> columnNames(const Client &client)
{
    const Element table = client.find("table", "Volumes");
    return table ? names(table.all("table column header")) : std::vector<std::string>();
}

std::vector<std::string> sections(const Client &client)
{
    return names(client.all(isEntry));
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
