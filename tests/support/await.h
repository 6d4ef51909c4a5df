// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QCoroTask>
#include <QDeadlineTimer>
#include <QEvent>
#include <QThread>

#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>

namespace quillfen::test {

namespace detail {

template <typename T>
struct Outcome {
    std::optional<T> value;
    std::exception_ptr error;
    [[nodiscard]] bool isThere() const { return value || error; }
};

template <typename T>
QCoro::Task<> collect(QCoro::Task<T> task, std::shared_ptr<Outcome<T>> outcome)
{
    try {
        outcome->value.emplace(co_await task);
    } catch (...) {
        outcome->error = std::current_exception();
    }
}

inline QCoro::Task<> collect(QCoro::Task<> task, std::shared_ptr<Outcome<bool>> outcome)
{
    try {
        co_await task;
        outcome->value = true;
    } catch (...) {
        outcome->error = std::current_exception();
    }
}

} // namespace detail

/// Turns the event loop until the condition holds; false when the limit has passed. As `QTest::qWaitFor`, which sleeps
/// ten milliseconds between two looks.
template <typename Condition>
bool eventually(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(20))
{
    const QDeadlineTimer deadline(limit);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QThread::usleep(200);
    }
    return true;
}

/// Turns the event loop until the task is done, and returns its value as it is or throws its exception.
/// `QCoro::waitFor` of this version waits for ever for a task that throws, and copies the value.
template <typename T>
T await(QCoro::Task<T> task, std::chrono::milliseconds limit = std::chrono::seconds(100))
{
    const auto outcome = std::make_shared<detail::Outcome<T>>();
    detail::collect(std::move(task), outcome);
    if (!eventually([&] { return outcome->isThere(); }, limit)) {
        throw std::runtime_error("the task is not done in time");
    }
    if (outcome->error) {
        std::rethrow_exception(outcome->error);
    }
    return *std::move(outcome->value);
}

inline void await(QCoro::Task<> task, std::chrono::milliseconds limit = std::chrono::seconds(100))
{
    const auto outcome = std::make_shared<detail::Outcome<bool>>();
    detail::collect(std::move(task), outcome);
    if (!eventually([&] { return outcome->isThere(); }, limit)) {
        throw std::runtime_error("the task is not done in time");
    }
    if (outcome->error) {
        std::rethrow_exception(outcome->error);
    }
}

} // namespace quillfen::test
