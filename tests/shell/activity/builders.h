// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "states.h"

#include <chrono>
#include <string>
#include <utility>

namespace quillfen::test {

inline constexpr Instant someTime{std::chrono::milliseconds(1'800'000'000'000)}; // Jan 15 2027, 08:00 UTC

inline std::string requestLine(int number, const std::string &method)
{
    return R"({"jsonrpc":"2.0","id":)" + std::to_string(number) + R"(,"method":")" + method + R"("})";
}

inline RunningCall runningCall(const std::string &method, const QString &title = {}, const std::string &event = {})
{
    static int number = 0;
    RunningCall call;
    call.method = method;
    call.title = title;
    call.line = requestLine(++number, method);
    call.progressEvent = event;
    return call;
}

/// A call from its beginning to its end.
inline void done(Activity &activity, const std::string &method, const QString &words)
{
    const std::uint64_t id = activity.begin(runningCall(method));
    activity.end(id, {words, false, {}});
}

inline void failed(Activity &activity, const std::string &method, const QString &words, std::int64_t code)
{
    const std::uint64_t id = activity.begin(runningCall(method));
    activity.end(id, {words, true, code});
}

} // namespace quillfen::test
