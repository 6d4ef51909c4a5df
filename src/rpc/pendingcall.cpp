// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/pendingcall.h"

#include <algorithm>
#include <cmath>

namespace quillfen {

namespace {

// 2^63, the first whole number above what fits.
constexpr double beyondInteger = 9'223'372'036'854'775'808.0;

QString fromJson(const json::string &text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

RPCError errorOf(const json::object &error)
{
    const json::value *const message = error.if_contains("message");
    const bool isText = message && message->is_string();
    return {integer(error.if_contains("code")).value_or(-1),
            isText ? fromJson(message->get_string()) : RPC::tr("error"), integer(error.if_contains("status"))};
}

std::int64_t wholeSeconds(RPC::Seconds timeout)
{
    if (std::isnan(timeout.count())) {
        return 0;
    }
    return static_cast<std::int64_t>(std::clamp(timeout.count(), -1e18, 1e18));
}

} // namespace

std::optional<std::int64_t> integer(const json::value *value)
{
    if (!value) {
        return std::nullopt;
    }
    if (const std::int64_t *const number = value->if_int64()) {
        return *number;
    }
    const double *const number = value->if_double();
    if (number && std::trunc(*number) == *number && *number >= -beyondInteger && *number < beyondInteger) {
        return static_cast<std::int64_t>(*number);
    }
    return std::nullopt;
}

void PendingCall::failClosed()
{
    RPCError error(RPCError::connectionClosed, RPC::tr("the agent connection closed"));
    error.connectionLost = true;
    fail(std::move(error));
}

void PendingCall::failLate()
{
    const QString seconds = QString::number(wholeSeconds(m_timeout));
    const QString text = RPC::tr("%1: no answer from the agent after %2 s");
    fail(RPCError(RPCError::noAnswer, text.arg(QString::fromStdString(m_method), seconds)));
}

void PendingCall::complete(json::object &answer)
{
    const json::value *const error = answer.if_contains("error");
    json::value *const result = answer.if_contains("result");
    if (error && error->is_object()) {
        fail(errorOf(error->get_object()));
    } else if (result) {
        succeed(std::move(*result));
    } else {
        succeed(json::value());
    }
}

json::value PendingCall::outcome()
{
    if (RPCError *const error = std::get_if<RPCError>(&m_outcome)) {
        throw std::move(*error);
    }
    return std::move(std::get<json::value>(m_outcome));
}

} // namespace quillfen
