// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/worker.h"

namespace quillfen {

namespace {

// Letting go of an answer recurses once per level; some platforms give a thread no more than half a megabyte.
constexpr uint threadStack = 8U * 1'024 * 1'024;

} // namespace

Worker::Worker(MainQueue &queue) : m_queue(queue)
{
    m_threads.setMaxThreadCount(1);
    m_threads.setStackSize(threadStack);
    m_threads.setExpiryTimeout(0); // there is something to do once in minutes
}

Worker::~Worker() = default;

void Worker::end()
{
    m_ended = true;
    const MainQueue::NoLimit pass(m_queue); // the thread we wait for may be waiting for us
    m_threads.waitForDone();
}

bool Worker::Awaiter::await_ready() const
{
    if (m_worker.m_ended) {
        m_work();
    }
    return m_worker.m_ended;
}

void Worker::Awaiter::await_suspend(std::coroutine_handle<> waiting) const
{
    // This object is gone once the coroutine was resumed, which may be before the last line of the task.
    m_worker.m_threads.start([&work = m_work, &queue = m_worker.m_queue, waiting] {
        work();
        queue.post([waiting] { waiting.resume(); });
    });
}

} // namespace quillfen
