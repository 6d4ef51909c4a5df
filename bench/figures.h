// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <time.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <vector>

namespace quillfen::bench {

/// A figure of a run in which this does not hold would say nothing.
inline void require(bool holds, const char *problem)
{
    if (!holds) {
        throw std::runtime_error(problem);
    }
}

inline double milliseconds(std::chrono::steady_clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

inline double millisecondsSince(std::chrono::steady_clock::time_point begin)
{
    return milliseconds(std::chrono::steady_clock::now() - begin);
}

/// What this thread alone has worked: on a machine that does other things meanwhile it says more than the clock.
inline double workMilliseconds()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

inline double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values.at(values.size() / 2);
}

inline double largest(const std::vector<double> &values)
{
    return *std::ranges::max_element(values);
}

} // namespace quillfen::bench
