// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <exception>
#include <optional>

namespace quillfen {

/// Why a call failed. It reads as its message alone, wherever it is shown; the code is for programs.
class RPCError final : public std::exception {
public:
    /// Codes that the client itself gives; every other code comes from the agent (JSON-RPC 2.0, section 5.1).
    static constexpr std::int64_t notConnected = -1;
    static constexpr std::int64_t badParams = -32600;
    static constexpr std::int64_t connectionClosed = -32603;
    static constexpr std::int64_t noAnswer = -32000;

    RPCError(std::int64_t errorCode, QString text, std::optional<std::int64_t> extraStatus = std::nullopt)
        : code(errorCode), message(std::move(text)), status(extraStatus), m_utf8(message.toUtf8())
    {}

    [[nodiscard]] const char *what() const noexcept override { return m_utf8.constData(); }

    std::int64_t code;
    QString message;
    std::optional<std::int64_t> status; ///< the agent's extra number, carried along when present
    /// The connection ended before the answer, or there was none. The client alone sets it: an agent may give the same
    /// code, and the same words, for a trouble of its own.
    bool connectionLost = false;

private:
    QByteArray m_utf8;
};

} // namespace quillfen
