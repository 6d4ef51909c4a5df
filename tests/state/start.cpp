// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/start.h"

#include <QCoroTimer>
#include <QTest>

#include <gmock/gmock.h>

#include <stdexcept>

using namespace quillfen;
using namespace std::chrono_literals;

namespace {

std::string logged;

void keep(QtMsgType, const QMessageLogContext &, const QString &message)
{
    logged = message.toStdString();
}

QCoro::Task<> failing()
{
    co_await QCoro::sleepFor(1ms);
    throw std::runtime_error("a wheel came off");
}

TEST(Start, LogsWhatEscapes)
{
    const QtMessageHandler before = qInstallMessageHandler(keep);
    logged.clear();
    start(failing());
    EXPECT_TRUE(QTest::qWaitFor([] { return !logged.empty(); }, 2'000));
    qInstallMessageHandler(before);
    EXPECT_THAT(logged, testing::HasSubstr("a wheel came off"));
}

} // namespace
