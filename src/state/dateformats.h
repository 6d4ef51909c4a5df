// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/clock.h"

#include <QString>

#include <unicode/calendar.h>
#include <unicode/smpdtfmt.h>

#include <cstdint>
#include <memory>

namespace quillfen {

/// How moments are written in the user's language and time zone. A formatter costs hundreds of times what it takes to
/// use one, so that each thread keeps its own.
class DateFormats final {
public:
    /// Those of this thread, made anew when the locale has changed.
    [[nodiscard]] static DateFormats &ofThread();

    [[nodiscard]] QString longDate(Instant instant);
    /// The long date, with the zone where the clock on the wall shows the same twice.
    [[nodiscard]] QString exactDate(Instant instant);
    /// With the year unless it is this one.
    [[nodiscard]] QString shortDate(Instant instant);
    [[nodiscard]] QString timeOfDay(Instant instant);
    /// The locale's own date and time.
    [[nodiscard]] QString moment(Instant instant);

private:
    using Formatter = std::unique_ptr<icu::SimpleDateFormat>;

    DateFormats();
    [[nodiscard]] Formatter formatter(const icu::UnicodeString &pattern) const;
    [[nodiscard]] QString format(Formatter &formatter, const char16_t *pattern, Instant instant);
    [[nodiscard]] double offsetAt(UDate moment) const;
    [[nodiscard]] bool isShownTwice(Instant instant) const;
    [[nodiscard]] std::int32_t yearOf(Instant instant);
    [[nodiscard]] bool isThisYear(Instant instant) { return yearOf(instant) == yearOf(now()); }

    std::uint64_t m_generation;
    icu::Locale m_locale;
    std::unique_ptr<icu::Calendar> m_calendar;
    Formatter m_long;
    Formatter m_longWithZone;
    Formatter m_short;
    Formatter m_shortWithYear;
    Formatter m_time;
    Formatter m_moment;
};

} // namespace quillfen
