// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "agentmethods.h"

#include "jsontext.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace quillfen {

namespace {

/// An entry is a parameter's name, or a record that has it.
MethodParameter parameterOf(const json::value &entry)
{
    if (!entry.is_object()) {
        return {str(&entry), {}, {}};
    }
    const Record &record = entry.get_object();
    return {str(record, "name"), str(record, "type"), str(record, "summary")};
}

std::vector<MethodParameter> parametersOf(const Record &record)
{
    std::vector<MethodParameter> parameters;
    const json::value *const entries = record.if_contains("params");
    if (entries == nullptr || !entries->is_array()) {
        return parameters;
    }
    for (const json::value &entry : entries->get_array()) {
        MethodParameter parameter = parameterOf(entry);
        const bool known = std::ranges::find(parameters, parameter.name, &MethodParameter::name) != parameters.end();
        if (!parameter.name.isEmpty() && !known) {
            parameters.push_back(std::move(parameter));
        }
    }
    return parameters;
}

json::string utf8(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    return json::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

} // namespace

std::vector<AgentMethod> agentMethods(const json::value &answer)
{
    std::vector<AgentMethod> methods;
    const Records list = records(&answer);
    for (const Record &record : list) {
        if (!isTrue(record, "local")) {
            methods.push_back({str(record, "name"), str(record, "http"), str(record, "path"), parametersOf(record),
                               isTrue(record, "admin")});
        }
    }
    std::ranges::stable_sort(methods, {}, &AgentMethod::name);
    return methods;
}

std::vector<AgentMethod> methodsFor(const std::vector<AgentMethod> &all, bool isOperator)
{
    std::vector<AgentMethod> methods;
    std::ranges::copy_if(all, std::back_inserter(methods),
                         [isOperator](const AgentMethod &method) { return isOperator || !method.admin; });
    return methods;
}

QString requestLine(const AgentMethod &method)
{
    return method.http.isEmpty() || method.path.isEmpty() ? method.http + method.path
                                                          : method.http + u' ' + method.path;
}

QString parametersLine(const AgentMethod &method)
{
    QString line;
    for (const MethodParameter &parameter : method.parameters) {
        line += (line.isEmpty() ? QString() : u", "_s) + parameter.name;
    }
    return line;
}

bool isDestructive(const AgentMethod &method)
{
    return method.http == "DELETE"_L1 || method.name.contains("delete"_L1) || method.name.contains("purge"_L1) ||
           method.name.contains("retire"_L1);
}

json::object requestOf(const AgentMethod &method, const MethodInputs &inputs)
{
    json::object request = objectIn(inputs.json);
    for (const MethodParameter &parameter : method.parameters) {
        const auto typed = inputs.fields.find(parameter.name);
        if (typed != inputs.fields.end()) {
            request[utf8(parameter.name)] = utf8(*typed);
        }
    }
    return request;
}

} // namespace quillfen
