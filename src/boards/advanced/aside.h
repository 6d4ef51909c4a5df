// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QThreadPool>

#include <memory>
#include <utility>

namespace quillfen {

/// Runs `work` on another thread and then `done` with what it returns on the main thread, unless the program ends
/// before. For work that would hold up the window; neither may throw.
template <typename Work, typename Done>
void aside(Work work, Done done)
{
    QThreadPool::globalInstance()->start([work = std::move(work), done = std::move(done)]() mutable {
        const auto result = std::make_shared<decltype(work())>(work());
        // The application waits for this thread before it goes.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [result, done = std::move(done)]() mutable { done(std::move(*result)); },
            Qt::QueuedConnection);
    });
}

} // namespace quillfen
