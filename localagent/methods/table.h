// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/methods/method.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillfen::localagent {

/// Every method of the agent, found by name in constant time.
class Table final {
public:
    Table();

    [[nodiscard]] const Method *find(std::string_view name) const;
    /// The records of "methods.list", in the table's order.
    [[nodiscard]] json::array records() const;

private:
    void add(std::vector<Method> methods);

    std::vector<Method> m_methods;
    std::unordered_map<std::string_view, std::size_t> m_byName;
};

} // namespace quillfen::localagent
