// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/clock.h"

#include <algorithm>
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

/// A fraction of a second in front of `rest`, taken away from there; nothing when it is broken.
std::optional<std::chrono::milliseconds> takeFraction(std::string_view &rest)
{
    if (!rest.starts_with('.')) {
        return std::chrono::milliseconds(0);
    }
    rest.remove_prefix(1);
    std::int64_t count = 0;
    std::size_t digits = 0;
    for (; !rest.empty() && rest.front() >= '0' && rest.front() <= '9'; ++digits, rest.remove_prefix(1)) {
        count = digits < 3 ? count * 10 + (rest.front() - '0') : count;
    }
    for (std::size_t missing = digits; missing < 3; ++missing) {
        count *= 10;
    }
    return digits == 0 ? std::nullopt : std::optional(std::chrono::milliseconds(count));
}

/// "Z", "+01:00" or "+0100".
std::optional<std::chrono::minutes> zoneOffset(std::string_view text)
{
    if (text == "Z") {
        return std::chrono::minutes(0);
    }
    std::string digits(text.substr(std::min<std::size_t>(1, text.size())));
    if (digits.size() == 5 && digits[2] == ':') {
        digits.erase(2, 1);
    }
    const bool isSigned = text.starts_with('+') || text.starts_with('-');
    if (!isSigned || digits.size() != 4 || digits.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    const int number = std::stoi(digits);
    const std::chrono::minutes offset(number / 100 * 60 + number % 100);
    return text.front() == '-' ? -offset : offset;
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
    std::string text;
    appendIsoTime(text, time);
    return text;
}

void appendIsoTime(std::string &text, Time time)
{
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    std::array<char, 24> digits = {};
    const auto write = [&](std::size_t at, std::size_t length, std::int64_t number, char after) {
        digits.at(at + length) = after;
        for (; length > 0; number /= 10) {
            digits.at(at + --length) = static_cast<char>('0' + number % 10);
        }
    };
    write(0, 4, int(date.year()), '-');
    write(5, 2, unsigned(date.month()), '-');
    write(8, 2, unsigned(date.day()), 'T');
    write(11, 2, clock.hours().count(), ':');
    write(14, 2, clock.minutes().count(), ':');
    write(17, 2, clock.seconds().count(), '.');
    write(20, 3, clock.subseconds().count(), 'Z');
    text.append(digits.data(), digits.size());
}

std::optional<Time> parseIsoTime(std::string_view text)
{
    std::string_view rest = text;
    // The number of `digits` digits in front, which `after` follows ('\0': anything).
    const auto take = [&rest](std::size_t digits, char after) -> std::optional<int> {
        int number = 0;
        const char *const end = rest.data() + std::min(digits, rest.size());
        const bool isDigit = !rest.empty() && rest.front() >= '0' && rest.front() <= '9';
        const auto [stop, error] = std::from_chars(rest.data(), end, number);
        if (!isDigit || rest.size() < digits || error != std::errc() || stop != rest.data() + digits) {
            return std::nullopt;
        }
        rest.remove_prefix(digits);
        if (after != '\0') {
            if (!rest.starts_with(after)) {
                return std::nullopt;
            }
            rest.remove_prefix(1);
        }
        return number;
    };
    const auto year = take(4, '-');
    const auto month = year ? take(2, '-') : std::nullopt;
    const auto day = month ? take(2, 'T') : std::nullopt;
    const auto hour = day ? take(2, ':') : std::nullopt;
    const auto minute = hour ? take(2, ':') : std::nullopt;
    const auto second = minute ? take(2, '\0') : std::nullopt;
    if (!second || *hour > 23 || *minute > 59 || *second > 59) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day))};
    const std::optional<std::chrono::milliseconds> fraction = takeFraction(rest);
    const std::optional<std::chrono::minutes> offset = fraction ? zoneOffset(rest) : std::nullopt;
    if (!date.ok() || !offset) {
        return std::nullopt;
    }
    return std::chrono::sys_days(date) + std::chrono::hours(*hour) + std::chrono::minutes(*minute) +
           std::chrono::seconds(*second) + *fraction - *offset;
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
