// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/connection.h"
#include "rpc/rpc.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace quillfen {

/// What the reading thread of one connection does with its messages: answers to their calls, events to the owner, and
/// in the end the end to everybody.
///
/// A message is let go of before its content is handed over. Both keep the same arena, and two threads that count down
/// its users at the same time get in each other's way.
class Intake final {
public:
    /// `onEnd` is posted last of all.
    Intake(MainQueue &queue, decltype(RPC::onEvent) onEvent, decltype(RPC::onDown) onDown, MainQueue::Task onEnd);

    /// The owner is not told of the end any more. Any thread; the rest is for the reading thread.
    void hush() noexcept { m_hushed = true; }

    /// Takes in one message, whose line had so many bytes.
    void received(Connection &connection, LineReader::Message &message, std::size_t bytes);
    /// Fails the calls that are left.
    void ended(const Connection::Waiting &left);

private:
    void resume(PendingCall &call);
    void event(std::string name, LineReader::Message &message);
    void answer(Connection &connection, LineReader::Message &message);
    void holdBack(std::size_t bytes);

    MainQueue &m_queue;
    decltype(RPC::onEvent) m_onEvent;
    decltype(RPC::onDown) m_onDown;
    MainQueue::Task m_onEnd;
    std::atomic<bool> m_hushed = false;
    std::size_t m_bytes = 0; ///< received since the mark
    std::uint64_t m_mark = 0;
};

} // namespace quillfen
