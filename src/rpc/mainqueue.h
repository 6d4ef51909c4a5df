// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace quillfen {

/// Carries finished work from the reading thread to the main thread, in order and in batches.
///
/// One wake-up serves everything that has piled up, the main thread works it off in slices short enough to leave room
/// for painting, and a thread that posts faster than the main thread works waits in `post` instead of growing the
/// queue. A task may turn an event loop of its own (a modal dialog does): the tasks behind it go on being run. Bad at:
/// anything that must not wait for the event loop.
class MainQueue final : public QObject {
    Q_OBJECT

public:
    using Task = std::function<void()>;

    /// As many tasks wait for the main thread at most, and as many again are being worked off.
    static constexpr std::size_t capacity = 8192;

    /// Belongs to the thread that constructs it, which is the one that runs the tasks.
    explicit MainQueue(QObject *parent = nullptr);
    /// Drops what was not run. A task may destroy the queue it runs in.
    ~MainQueue() override;

    /// Queues `task`. Any thread. Waits while the queue is full, unless called on the owning thread. Once `close()` was
    /// called the task is dropped.
    void post(Task task);

    /// Runs everything queued so far at once, and what that posts in turn. Owning thread only.
    void drain();

    /// Wakes and releases every waiting poster; later posts are dropped. What is queued can still be drained.
    /// Owning thread.
    void close();

    /// How many tasks were posted so far; a mark for `waitUntilRun`. Any thread.
    [[nodiscard]] std::uint64_t posted() const;
    /// Waits until the tasks up to this mark were worked off (or nobody is to wait any more). Not on the owning thread.
    void waitUntilRun(std::uint64_t mark);

    /// While one of these lives, posters pass without waiting: for an owning thread that itself waits for a poster.
    class NoLimit final {
    public:
        explicit NoLimit(MainQueue &queue);
        ~NoLimit();
        NoLimit(const NoLimit &) = delete;
        NoLimit &operator=(const NoLimit &) = delete;

    private:
        MainQueue &m_queue;
    };

    /// While one of these lives, what its thread posts wakes the owning thread only at its end, or once the queue is
    /// full: for a thread that has many tasks at hand. One at a time.
    class Batch final {
    public:
        explicit Batch(MainQueue &queue);
        ~Batch();
        Batch(const Batch &) = delete;
        Batch &operator=(const Batch &) = delete;

    private:
        MainQueue &m_queue;
    };

private:
    struct Shared;
    std::shared_ptr<Shared> m_shared; ///< shared with a running drain, which outlives the queue that a task destroys
    QSocketNotifier *m_notifier = nullptr;
};

} // namespace quillfen
