// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/clock.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <stdexcept>

namespace quillfen::localagent {

namespace {

struct Unit {
    const char *word;
    double seconds;
};

std::chrono::milliseconds milliseconds(Seconds span)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(span);
}

double secondsOf(char unit)
{
    switch (unit) {
    case 's':
        return 1;
    case 'm':
        return 60;
    case 'h':
        return 3600;
    case 'd':
        return 86400;
    default:
        return 0;
    }
}

} // namespace

Clock::Clock(Timers &timers, double speed, Time start)
    : m_timers(timers), m_speed(speed), m_start(start), m_origin(timers.now())
{}

Time Clock::now() const
{
    return m_start + milliseconds(Seconds(m_timers.now() - m_origin) * m_speed);
}

void Clock::after(Seconds delay, Timers::Task task)
{
    m_timers.after(delay / m_speed, std::move(task));
}

std::string isoTime(Time time)
{
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    std::array<char, 64> text = {};
    const int length =
        std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", int(date.year()),
                      unsigned(date.month()), unsigned(date.day()), int(clock.hours().count()),
                      int(clock.minutes().count()), int(clock.seconds().count()), int(clock.subseconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string minuteDigits(Time time)
{
    std::string digits = isoTime(time);
    std::erase_if(digits, [](char letter) { return letter < '0' || letter > '9'; });
    return digits.substr(0, 12);
}

std::string spanText(Seconds span)
{
    static constexpr std::array units = {Unit{"day", 86400}, Unit{"hour", 3600}, Unit{"minute", 60}};
    const auto words = [](double count, const char *word) {
        const auto whole = static_cast<long long>(count);
        return std::to_string(whole) + " " + word + (whole == 1 ? "" : "s");
    };
    for (const Unit &unit : units) {
        if (span.count() >= unit.seconds) {
            return words(span.count() / unit.seconds, unit.word);
        }
    }
    return words(span.count() > 0 ? span.count() : 0, "second");
}

Time parseMoment(std::string_view text, Time now)
{
    if (text == "now") {
        return now;
    }
    double amount = 0;
    const char *const begin = text.data() + (text.starts_with('+') ? 1 : 0);
    const char *const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(begin, end, amount);
    const double unit = error == std::errc() && end - rest == 1 ? secondsOf(*rest) : 0;
    if (unit == 0) {
        throw std::invalid_argument("\"" + std::string(text) + "\" is not a moment like \"-3h\", \"-90d\" or \"now\"");
    }
    return now + milliseconds(Seconds(amount * unit));
}

} // namespace quillfen::localagent
