// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/clock.h"

#include <utility>

namespace quillfen {

namespace {

std::function<Instant()> &replacement()
{
    static std::function<Instant()> clock;
    return clock;
}

} // namespace

Instant now()
{
    const std::function<Instant()> &clock = replacement();
    return clock ? clock() : std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

ClockOverride::ClockOverride(std::function<Instant()> clock)
    : m_previous(std::exchange(replacement(), std::move(clock)))
{}

ClockOverride::~ClockOverride()
{
    replacement() = std::move(m_previous);
}

} // namespace quillfen
