// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/rpc.h"

#include "rpc/connection.h"
#include "rpc/deadlines.h"
#include "rpc/intake.h"
#include "rpc/pendingcall.h"
#include "rpc/request.h"

#include <QThread>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace quillfen {

namespace {

using namespace std::chrono_literals;

Deadlines::Clock::time_point deadlineAfter(RPC::Seconds timeout)
{
    constexpr RPC::Seconds longest = std::chrono::hours(24 * 365);
    const bool isTime = timeout.count() > 0; // not for NaN either
    const RPC::Seconds bounded = isTime ? std::min(timeout, longest) : RPC::Seconds::zero();
    return Deadlines::Clock::now() + std::chrono::duration_cast<Deadlines::Clock::duration>(bounded);
}

} // namespace

class RPC::Impl final {
public:
    Impl()
    {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.callOnTimeout([this] { expire(); });
    }

    MainQueue queue;

    void open(const std::string &path, const RPC &owner);
    void end();
    void finish();

    [[nodiscard]] bool isFinished() const noexcept { return m_finished; }
    [[nodiscard]] bool isMainThread() const { return queue.thread() == QThread::currentThread(); }
    [[nodiscard]] std::int64_t nextId() noexcept { return ++m_lastId; }
    void start(std::int64_t id, PendingCall &call, std::string line);
    void completed();

private:
    [[nodiscard]] bool isWaiting(std::int64_t id) const { return m_connection && m_connection->isWaiting(id); }
    void addDeadline(std::int64_t id, Seconds timeout);
    void expire();
    void arm();

    std::unique_ptr<Connection> m_connection; ///< also one that has ended, until its thread was joined
    std::shared_ptr<Intake> m_intake;
    std::uint64_t m_opened = 0;
    std::int64_t m_lastId = 0;
    std::size_t m_outstanding = 0; ///< calls that wait or are about to resume
    Deadlines m_deadlines;
    QTimer m_timer;
    bool m_comingToRest = false;
    bool m_finished = false;
};

void RPC::Impl::open(const std::string &path, const RPC &owner)
{
    if (m_intake) {
        m_intake->hush();
    }
    end();
    m_intake.reset();
    const std::uint64_t serial = ++m_opened;
    const auto intake = std::make_shared<Intake>(queue, owner.onEvent, owner.onDown, [this, serial] {
        if (serial == m_opened) { // else its successor has joined the thread
            m_connection.reset();
        }
    });
    Connection::Handlers handlers;
    handlers.received = [intake](Connection &connection, LineReader::Message &message, std::size_t bytes) {
        intake->received(connection, message, bytes);
    };
    handlers.ended = [intake](const Connection::Waiting &left) { intake->ended(left); };
    m_connection = std::make_unique<Connection>(path, queue, std::move(handlers));
    m_intake = intake;
}

void RPC::Impl::end()
{
    const MainQueue::NoLimit pass(queue); // the thread we join may be waiting for us
    m_connection.reset();
}

void RPC::Impl::finish()
{
    m_finished = true;
    if (m_intake) {
        m_intake->hush();
    }
    end();
    queue.drain();
    queue.close();
}

void RPC::Impl::start(std::int64_t id, PendingCall &call, std::string line)
{
    ++m_outstanding;
    if (m_connection && m_connection->send(id, call, std::move(line))) {
        addDeadline(id, call.timeout());
        return;
    }
    call.failClosed();
    queue.post([&call] { call.resume(); });
}

void RPC::Impl::completed()
{
    if (--m_outstanding > 0 || std::exchange(m_comingToRest, true)) {
        return;
    }
    // Not at once: more often than not the caller that is about to resume asks again, and setting a timer costs more
    // than a task. But an idle client is not to be woken by what was answered long ago.
    queue.post([this] {
        m_comingToRest = false;
        if (m_outstanding > 0) {
            return;
        }
        m_deadlines.clear();
        m_timer.stop();
    });
}

void RPC::Impl::addDeadline(std::int64_t id, Seconds timeout)
{
    if (m_deadlines.size() > 2 * m_outstanding + 64) {
        m_deadlines.compact([this](std::int64_t entry) { return isWaiting(entry); });
    }
    const auto when = deadlineAfter(timeout);
    const bool isEarliest = m_deadlines.empty() || when < m_deadlines.earliest();
    m_deadlines.add(when, id);
    if (isEarliest) {
        arm();
    }
}

void RPC::Impl::expire()
{
    const auto now = Deadlines::Clock::now();
    while (const auto id = m_deadlines.takeExpired(now)) {
        PendingCall *const call = m_connection ? m_connection->take(*id) : nullptr;
        if (!call) {
            continue;
        }
        call->failLate();
        queue.post([call] { call->resume(); });
    }
    m_deadlines.skipStale([this](std::int64_t id) { return isWaiting(id); });
    arm();
}

void RPC::Impl::arm()
{
    if (m_deadlines.empty()) {
        return;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_deadlines.earliest() - Deadlines::Clock::now());
    m_timer.start(std::clamp<std::chrono::milliseconds>(left, 0ms, 24h));
}

RPC::RPC() : m_impl(std::make_shared<Impl>()) {}

RPC::~RPC()
{
    Q_ASSERT_X(m_impl->isMainThread(), "RPC::~RPC", "waiting callers resume here, on the main thread");
    m_impl->finish();
}

void RPC::connect(const std::string &path)
{
    Q_ASSERT_X(m_impl->isMainThread(), "RPC::connect", "the main thread owns the connection");
    m_impl->open(path, *this);
}

RPC::Request RPC::prepare(std::string method, const json::object &params, Seconds timeout)
{
    Q_ASSERT_X(m_impl->isMainThread(), "RPC::prepare", "callers resume on the main thread, so they come from there");
    Request request;
    request.id = m_impl->nextId();
    request.line = requestLine(request.id, method, params);
    request.method = std::move(method);
    request.timeout = timeout;
    return request;
}

QCoro::Task<json::value> RPC::call(std::string method, json::object params, Seconds timeout)
{
    Request request = prepare(std::move(method), params, timeout);
    json::value result = co_await call(std::move(request));
    co_return result;
}

QCoro::Task<json::value> RPC::call(Request request)
{
    const std::shared_ptr<Impl> impl = m_impl; // the frame may be the last to know it
    Q_ASSERT_X(impl->isMainThread(), "RPC::call", "callers resume on the main thread, so they come from there");
    PendingCall call(std::move(request.method), request.timeout);
    if (impl->isFinished()) {
        call.failClosed();
        co_return call.outcome();
    }
    const std::function<void()> start = [&] { impl->start(request.id, call, std::move(request.line)); };
    const PendingCall::Awaiter answer{call, start};
    co_await answer;
    impl->completed();
    co_return call.outcome();
}

void RPC::close()
{
    Q_ASSERT_X(m_impl->isMainThread(), "RPC::close", "the main thread owns the connection");
    m_impl->end();
}

MainQueue &RPC::mainQueue() noexcept
{
    return m_impl->queue;
}

} // namespace quillfen
