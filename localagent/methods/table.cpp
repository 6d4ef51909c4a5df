// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/table.h"

#include "localagent/methods/subjects.h"

namespace quillfen::localagent {

namespace {

json::object recordOf(const Parameter &parameter)
{
    json::object record = {{"name", parameter.name},
                           {"type", typeName(parameter.type)},
                           {"required", parameter.required},
                           {"summary", parameter.summary}};
    if (!parameter.oneOf.empty()) {
        record["one_of"] = json::array(parameter.oneOf.begin(), parameter.oneOf.end());
    }
    return record;
}

json::object recordOf(const Method &method)
{
    json::array parameters;
    for (const Parameter &parameter : method.parameters) {
        parameters.push_back(recordOf(parameter));
    }
    return {{"name", method.name},      {"http", method.http},
            {"path", method.path},      {"params", std::move(parameters)},
            {"local", method.local},    {"admin", method.access == Access::Operator},
            {"summary", method.summary}};
}

} // namespace

Table::Table()
{
    add(serviceMethods());
    add(accountMethods());
    add(engineMethods());
    add(volumeMethods());
    add(mountMethods());
    add(historyMethods());
    add(iscsiMethods());
    add(operatorMethods());
    add(tokenMethods());
    add(exportMethods());
    add(policyMethods());
    add(viewMethods());
}

const Method *Table::find(std::string_view name) const
{
    const auto found = m_byName.find(name);
    return found == m_byName.end() ? nullptr : &m_methods[found->second];
}

json::array Table::records() const
{
    json::array records;
    for (const Method &method : m_methods) {
        records.push_back(recordOf(method));
    }
    return records;
}

void Table::add(std::vector<Method> methods)
{
    for (Method &method : methods) {
        m_byName.emplace(method.name, m_methods.size());
        m_methods.push_back(std::move(method));
    }
}

} // namespace quillfen::localagent
