// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/pauses.h"

#include <QTimer>

namespace quillfen {

void Pauses::end()
{
    m_ended = true;
    while (!m_waiting.empty()) {
        resume(m_waiting.begin()->first);
    }
}

void Pauses::add(std::chrono::milliseconds length, std::coroutine_handle<> waiting)
{
    const std::uint64_t id = ++m_lastId;
    m_waiting.emplace(id, waiting);
    // A coarse timer may come as much as a twentieth early.
    QTimer::singleShot(length, Qt::PreciseTimer, &m_context, [this, id] { resume(id); });
}

void Pauses::resume(std::uint64_t id)
{
    const auto node = m_waiting.extract(id);
    if (!node.empty()) {
        node.mapped().resume(); // the last act: this object may be gone with the coroutine
    }
}

} // namespace quillfen
