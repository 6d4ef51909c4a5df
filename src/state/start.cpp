// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/start.h"

#include <QtGlobal>

#include <exception>

namespace quillfen {

namespace {

QCoro::Task<> reportingEscapes(QCoro::Task<> task)
{
    try {
        co_await task;
    } catch (const std::exception &escaped) {
        qWarning("A task ended with an error nobody caught: %s", escaped.what());
    }
}

} // namespace

void start(QCoro::Task<> task)
{
    reportingEscapes(std::move(task));
}

} // namespace quillfen
