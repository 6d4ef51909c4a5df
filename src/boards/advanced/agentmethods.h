// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/values.h"

#include <QMap>
#include <QString>

#include <string>
#include <vector>

namespace quillfen {

/// A parameter that a method names. Beyond its name an agent may tell what kind of value it is and what it is for.
struct MethodParameter {
    QString name;
    QString kind;
    QString summary;

    bool operator==(const MethodParameter &) const = default;
};

/// One operation, as the agent lists it.
struct AgentMethod {
    QString name; ///< what is called
    QString http;
    QString path;
    std::vector<MethodParameter> parameters;
    bool admin = false; ///< for operators only

    bool operator==(const AgentMethod &) const = default;
};

/// What was typed for one method.
struct MethodInputs {
    QMap<QString, QString> fields; ///< by parameter; an empty field has no entry
    QString json;                  ///< the other parameters

    bool operator==(const MethodInputs &) const = default;
};

/// The methods that an answer lists, by name and without those for the agent's own computer.
[[nodiscard]] std::vector<AgentMethod> agentMethods(const json::value &answer);

/// Those among `all` that somebody of this standing may see, in the same order.
[[nodiscard]] std::vector<AgentMethod> methodsFor(const std::vector<AgentMethod> &all, bool isOperator);

/// The line under a method's name: verb and path of the same request on the web.
[[nodiscard]] QString requestLine(const AgentMethod &method);

/// The names of a method's parameters in one line.
[[nodiscard]] QString parametersLine(const AgentMethod &method);

/// Whether running it removes something, as far as verb and name tell.
[[nodiscard]] bool isDestructive(const AgentMethod &method);

/// The parameters of a call: the object that the JSON text holds, if it holds one, and over it what the fields hold.
[[nodiscard]] json::object requestOf(const AgentMethod &method, const MethodInputs &inputs);

} // namespace quillfen
