// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/mainqueue.h"

#include "rpc/platform.h"

#include <QSocketNotifier>
#include <QThread>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace quillfen {

namespace {

// The main thread's share per turn of its loop. With a frame's 16 ms in mind it leaves three quarters for the rest.
constexpr std::chrono::milliseconds slice{4};

// Room that the queue keeps when it is empty; what a burst took beyond it is given back.
constexpr std::size_t kept = 256;

} // namespace

struct MainQueue::Shared {
    std::mutex lock;
    std::condition_variable moved; ///< the main thread has taken a batch, or nobody is to wait any more
    std::vector<Task> incoming;
    std::uint64_t posted = 0;
    std::uint64_t done = 0;
    int waiting = 0;
    int passes = 0;     ///< living NoLimit objects
    bool awake = false; ///< the wake-up is set or about to be
    bool closed = false;
    std::thread::id batching; ///< whose Batch lives
    platform::WakeUp wakeUp;

    // Below: owning thread only. The batch is a member and not a local of the drain, so that an event loop inside a
    // task goes on with the rest of it.
    std::vector<Task> batch;
    std::size_t next = 0;

    bool nobodyWaits() const { return closed || passes > 0; }
    template <typename Condition>
    void wait(std::unique_lock<std::mutex> &hold, Condition condition);

    bool fetch();
    bool runNext();
};

template <typename Condition>
void MainQueue::Shared::wait(std::unique_lock<std::mutex> &hold, Condition condition)
{
    if (!incoming.empty() && !std::exchange(awake, true)) {
        wakeUp.set(); // a batch must not wait for its own end
    }
    ++waiting;
    moved.wait(hold, [&] { return condition() || nobodyWaits(); });
    --waiting;
}

/// Replaces the batch that was worked off. Once there is nothing more the wake-up is cleared: it stays set while
/// anything waits, so that a slice that is over, or an event loop inside a task, is woken again without a further
/// signal.
bool MainQueue::Shared::fetch()
{
    batch.clear();
    next = 0;
    const std::scoped_lock hold(lock);
    done = posted - incoming.size();
    if (waiting > 0) {
        moved.notify_all();
    }
    if (!incoming.empty()) {
        batch.swap(incoming);
        return true;
    }
    // Also when it does not look set: a poster sets it after it has let go of the lock, and where its task was fetched
    // before that (after an event loop inside a task, say) nobody else would clear it, and the loop would spin.
    awake = false;
    wakeUp.clear();
    for (std::vector<Task> *tasks : {&batch, &incoming}) {
        if (tasks->capacity() > kept) {
            std::vector<Task>().swap(*tasks);
        }
    }
    return false;
}

bool MainQueue::Shared::runNext()
{
    if (next == batch.size() && !fetch()) {
        return false;
    }
    const Task task = std::move(batch[next++]);
    task();
    return true;
}

MainQueue::MainQueue(QObject *parent) : QObject(parent), m_shared(std::make_shared<Shared>())
{
    m_notifier = new QSocketNotifier(m_shared->wakeUp.descriptor(), QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        const auto shared = m_shared; // a task may destroy the queue
        const auto end = std::chrono::steady_clock::now() + slice;
        while (shared->runNext() && std::chrono::steady_clock::now() < end) {
        }
    });
}

MainQueue::~MainQueue()
{
    close();
    delete m_notifier; // before its descriptor goes with the shared part
    std::vector<Task> batch;
    std::vector<Task> incoming;
    m_shared->next = 0;
    m_shared->batch.swap(batch); // a drain that goes on beneath us finds nothing
    const std::scoped_lock hold(m_shared->lock);
    m_shared->incoming.swap(incoming);
}

void MainQueue::post(Task task)
{
    Shared &shared = *m_shared;
    std::unique_lock hold(shared.lock);
    if (shared.incoming.size() >= capacity && thread() != QThread::currentThread()) {
        shared.wait(hold, [&] { return shared.incoming.size() < capacity; });
    }
    if (shared.closed) {
        return;
    }
    shared.incoming.push_back(std::move(task));
    ++shared.posted;
    const bool wake = !shared.awake && shared.batching != std::this_thread::get_id();
    shared.awake = shared.awake || wake;
    hold.unlock(); // else the owning thread wakes only to wait for the lock
    if (wake) {
        shared.wakeUp.set();
    }
}

void MainQueue::drain()
{
    Q_ASSERT_X(thread() == QThread::currentThread(), "MainQueue::drain", "tasks run on the owning thread");
    const auto shared = m_shared;
    while (shared->runNext()) {
    }
}

void MainQueue::close()
{
    const std::scoped_lock hold(m_shared->lock);
    m_shared->closed = true;
    m_shared->moved.notify_all();
}

std::uint64_t MainQueue::posted() const
{
    const std::scoped_lock hold(m_shared->lock);
    return m_shared->posted;
}

void MainQueue::waitUntilRun(std::uint64_t mark)
{
    Shared &shared = *m_shared;
    std::unique_lock hold(shared.lock);
    shared.wait(hold, [&] { return shared.done >= mark; });
}

MainQueue::NoLimit::NoLimit(MainQueue &queue) : m_queue(queue)
{
    const std::scoped_lock hold(queue.m_shared->lock);
    ++queue.m_shared->passes;
    queue.m_shared->moved.notify_all();
}

MainQueue::NoLimit::~NoLimit()
{
    const std::scoped_lock hold(m_queue.m_shared->lock);
    --m_queue.m_shared->passes;
}

MainQueue::Batch::Batch(MainQueue &queue) : m_queue(queue)
{
    const std::scoped_lock hold(queue.m_shared->lock);
    queue.m_shared->batching = std::this_thread::get_id();
}

MainQueue::Batch::~Batch()
{
    Shared &shared = *m_queue.m_shared;
    std::unique_lock hold(shared.lock);
    shared.batching = {};
    const bool wake = !shared.incoming.empty() && !std::exchange(shared.awake, true);
    hold.unlock();
    if (wake) {
        shared.wakeUp.set();
    }
}

} // namespace quillfen
