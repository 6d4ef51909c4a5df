// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/operator.h"

#include "localagent/methods/subjects.h"

#include <iterator>

namespace quillfen::localagent {

std::vector<Method> operatorMethods()
{
    std::vector<Method> all = hubMethods();
    for (std::vector<Method> methods : {userMethods(), serviceTokenMethods(), orderMethods()}) {
        std::move(methods.begin(), methods.end(), std::back_inserter(all));
    }
    for (Method &method : all) {
        method.access = Access::Operator;
    }
    return all;
}

} // namespace quillfen::localagent
