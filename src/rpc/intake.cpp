// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/intake.h"

#include "rpc/pendingcall.h"

#include <utility>

namespace quillfen {

namespace {

// Text received between two looks at how far the main thread has come: twice this much of it waits there at most, apart
// from a single longer line.
constexpr std::size_t bytesPerMark = 16U * 1'024 * 1'024;

} // namespace

Intake::Intake(MainQueue &queue, decltype(RPC::onEvent) onEvent, decltype(RPC::onDown) onDown, MainQueue::Task onEnd)
    : m_queue(queue), m_onEvent(std::move(onEvent)), m_onDown(std::move(onDown)), m_onEnd(std::move(onEnd))
{}

void Intake::received(Connection &connection, LineReader::Message &message, std::size_t bytes)
{
    const json::value *const name = message->get_object().if_contains("event");
    if (name && name->is_string()) {
        event(std::string(name->get_string()), message);
    } else {
        answer(connection, message);
    }
    holdBack(bytes);
}

void Intake::ended(const Connection::Waiting &left)
{
    for (const auto &[id, call] : left) {
        call->failClosed();
        resume(*call);
    }
    if (m_onDown && !m_hushed) {
        m_onDown(RPC::tr("the agent connection closed"));
    }
    m_queue.post(m_onEnd);
}

void Intake::resume(PendingCall &call)
{
    m_queue.post([&call] { call.resume(); });
}

void Intake::event(std::string name, LineReader::Message &message)
{
    if (!m_onEvent) {
        return;
    }
    std::optional<json::value> data;
    if (json::value *const result = message->get_object().if_contains("result")) {
        data.emplace(std::move(*result));
    }
    message.reset();
    m_onEvent(std::move(name), std::move(data));
}

void Intake::answer(Connection &connection, LineReader::Message &message)
{
    json::object &answer = message->get_object();
    const auto id = integer(answer.if_contains("id"));
    PendingCall *const call = id ? connection.take(*id) : nullptr;
    if (!call) {
        return;
    }
    call->complete(answer);
    message.reset();
    resume(*call);
}

/// The queue counts tasks; this keeps few large ones from filling the memory.
void Intake::holdBack(std::size_t bytes)
{
    m_bytes += bytes;
    if (m_bytes < bytesPerMark) {
        return;
    }
    m_bytes = 0;
    m_queue.waitUntilRun(m_mark);
    m_mark = m_queue.posted();
}

} // namespace quillfen
