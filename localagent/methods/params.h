// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <boost/json.hpp>

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quillfen::localagent {

namespace json = boost::json;

enum class Type { Text, Whole, Number, Flag };

/// A parameter of a method.
struct Parameter {
    std::string_view name;
    Type type = Type::Text;
    bool required = true;
    std::string_view summary = {};
    std::vector<std::string_view> oneOf = {}; ///< the allowed texts; empty: any
};

/// The parameters of a call are not what the method asks for; the text tells what it does ask for.
class ParamsError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The checked parameters of one call. Reading one that the method does not name is a mistake of ours.
class Params final {
public:
    /// Throws ParamsError unless `given` has what `parameters` ask for. Numbers and booleans may come as texts (a form
    /// field knows nothing else); null counts as missing; names that the method does not know are ignored.
    Params(std::string_view method, const std::vector<Parameter> &parameters, const json::object &given);

    [[nodiscard]] std::string text(std::string_view name) const;
    [[nodiscard]] std::int64_t whole(std::string_view name) const;
    [[nodiscard]] std::optional<std::string> optionalText(std::string_view name) const;
    [[nodiscard]] std::optional<std::int64_t> optionalWhole(std::string_view name) const;
    [[nodiscard]] std::optional<double> optionalNumber(std::string_view name) const;
    [[nodiscard]] std::optional<bool> optionalFlag(std::string_view name) const;

private:
    json::object m_values;
};

/// "a text", "a whole number", … , as messages and "methods.list" name a type.
[[nodiscard]] std::string_view typeName(Type type);

} // namespace quillfen::localagent
