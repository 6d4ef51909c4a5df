// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/mainqueue.h"

#include <QThreadPool>

#include <coroutine>
#include <functional>

namespace quillfen {

/// Does what takes longer than a frame may on another thread, one piece of work after another, and lets the coroutine
/// that asked for it go on on the main thread.
///
/// Main thread only, apart from the work. Must outlive its coroutines, which one that holds the owner takes care of.
class Worker final {
public:
    /// What a coroutine waits with: `const Worker::Awaiter read = worker.run(reading); co_await read;`
    class Awaiter final {
    public:
        Awaiter(Worker &worker, const std::function<void()> &work) noexcept : m_worker(worker), m_work(work) {}
        [[nodiscard]] bool await_ready() const;
        void await_suspend(std::coroutine_handle<> waiting) const;
        void await_resume() const noexcept {}

    private:
        Worker &m_worker;
        const std::function<void()> &m_work;
    };

    /// Coroutines resume through `queue`.
    explicit Worker(MainQueue &queue);
    ~Worker();
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    /// `work`, which must not throw, lives in the frame of the coroutine that waits for it.
    [[nodiscard]] Awaiter run(const std::function<void()> &work) noexcept { return {*this, work}; }
    /// Waits until all that was asked for is done, and queues those who waited. From now on whoever asks does the work
    /// himself: for the end of the program, where nobody would come back to them.
    void end();

private:
    MainQueue &m_queue;
    QThreadPool m_threads;
    bool m_ended = false;
};

} // namespace quillfen
