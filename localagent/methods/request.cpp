// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/request.h"

namespace quillfen::localagent {

namespace {

// No request of ours is deeper than three; parsing and freeing take stack for every level.
constexpr std::size_t deepest = 64;

BadRequest bad(json::value id, std::int64_t code, std::string message)
{
    return {std::move(id), {code, std::move(message), std::nullopt}};
}

std::string parseMessage(const json::error_code &error)
{
    if (error == json::error::too_deep) {
        return "Parse error: nested deeper than " + std::to_string(deepest) + " levels";
    }
    return "Parse error: the line is not JSON (" + error.message() + ")";
}

bool usableId(const json::value *id)
{
    return id == nullptr || id->is_number() || id->is_string() || id->is_null();
}

std::variant<Request, BadRequest> readRequest(json::object &fields)
{
    const json::value *id = fields.if_contains("id");
    if (!usableId(id)) {
        return bad(nullptr, code::invalidRequest, "Invalid request: \"id\" is a number, a text or null");
    }
    Request request;
    request.wantsAnswer = id != nullptr;
    request.id = id ? *id : json::value();
    if (const json::value *version = fields.if_contains("jsonrpc"); !version || *version != json::value("2.0")) {
        return bad(request.id, code::invalidRequest, "Invalid request: \"jsonrpc\" must be \"2.0\"");
    }
    const json::value *method = fields.if_contains("method");
    if (method == nullptr || !method->is_string()) {
        return bad(request.id, code::invalidRequest, "Invalid request: \"method\" must be a text");
    }
    request.method = std::string(method->get_string());
    json::value *params = fields.if_contains("params");
    if (params != nullptr && !params->is_object() && !params->is_null()) {
        return bad(request.id, code::badParams, request.method + " takes its parameters by name, as an object");
    }
    if (params != nullptr && params->is_object()) {
        request.params = std::move(params->get_object());
    }
    return request;
}

} // namespace

std::variant<Request, BadRequest> parseRequest(std::string_view line)
{
    json::parse_options options;
    options.max_depth = deepest;
    json::error_code error;
    json::value value = json::parse(line, error, {}, options);
    if (error) {
        return bad(nullptr, code::parseError, parseMessage(error));
    }
    if (!value.is_object()) {
        return bad(nullptr, code::invalidRequest, "Invalid request: each line is one request object");
    }
    return readRequest(value.get_object());
}

std::string answerLine(const json::value &id, json::value result)
{
    return json::serialize(json::object{{"jsonrpc", "2.0"}, {"id", id}, {"result", std::move(result)}});
}

std::string answerLineOfText(const json::value &id, std::string_view result)
{
    std::string line = R"({"jsonrpc":"2.0","id":)" + json::serialize(id) + R"(,"result":)";
    line.reserve(line.size() + result.size() + 2); // one more for the line feed
    line += result;
    line += '}';
    return line;
}

std::string errorLine(const json::value &id, const Error &error)
{
    json::object object{{"code", error.code}, {"message", error.message}};
    if (error.status) {
        object["status"] = *error.status;
    }
    return json::serialize(json::object{{"jsonrpc", "2.0"}, {"id", id}, {"error", std::move(object)}});
}

std::string eventLine(std::string_view name, json::value data)
{
    return json::serialize(json::object{{"event", name}, {"result", std::move(data)}});
}

} // namespace quillfen::localagent
