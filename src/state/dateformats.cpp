// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/dateformats.h"

#include "state/userlocale.h"

#include <unicode/dtptngen.h>
#include <unicode/simpleformatter.h>

namespace quillfen {

namespace {

constexpr char16_t narrowNoBreakSpace = u'\u202f';

QString fromIcu(const icu::UnicodeString &text)
{
    return QString::fromUtf16(text.getBuffer(), text.length());
}

UDate udate(Instant instant)
{
    return static_cast<UDate>(instant.time_since_epoch().count());
}

icu::UnicodeString patternOf(std::unique_ptr<icu::DateFormat> format)
{
    icu::UnicodeString pattern;
    if (const auto *const simple = dynamic_cast<const icu::SimpleDateFormat *>(format.get())) {
        simple->toPattern(pattern);
    }
    return pattern;
}

/// The locale's medium date and short time, joined as it speaks of a moment: "… at …" in English, "… um …" in German.
icu::UnicodeString momentPattern(const icu::Locale &locale)
{
    const icu::UnicodeString date = patternOf(
        std::unique_ptr<icu::DateFormat>(icu::DateFormat::createDateInstance(icu::DateFormat::kMedium, locale)));
    const icu::UnicodeString time = patternOf(
        std::unique_ptr<icu::DateFormat>(icu::DateFormat::createTimeInstance(icu::DateFormat::kShort, locale)));

    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> patterns(
        icu::DateTimePatternGenerator::createInstance(locale, status));
    icu::UnicodeString joined;
    if (U_SUCCESS(status)) {
        // The medium joint is a comma; the long one has the word.
        const icu::SimpleFormatter joint(patterns->getDateTimeFormat(UDAT_LONG, status), 2, 2, status);
        joint.format(time, date, joined, status);
    }
    return U_SUCCESS(status) ? joined : date + u' ' + time;
}

} // namespace

DateFormats &DateFormats::ofThread()
{
    thread_local DateFormats formats;
    if (formats.m_generation != localeGeneration()) {
        formats = DateFormats();
    }
    return formats;
}

DateFormats::DateFormats() : m_generation(localeGeneration()), m_locale(datesLocale())
{
    UErrorCode status = U_ZERO_ERROR;
    m_calendar.reset(icu::Calendar::createInstance(m_locale, status));
}

QString DateFormats::longDate(Instant instant)
{
    return format(m_long, u"EEE, MMM d · HH:mm:ss", instant);
}

QString DateFormats::exactDate(Instant instant)
{
    return isShownTwice(instant) ? format(m_longWithZone, u"EEE, MMM d · HH:mm:ss z", instant) : longDate(instant);
}

QString DateFormats::shortDate(Instant instant)
{
    return isThisYear(instant) ? format(m_short, u"MMM d", instant) : format(m_shortWithYear, u"MMM d, yyyy", instant);
}

QString DateFormats::timeOfDay(Instant instant)
{
    return format(m_time, u"HH:mm", instant);
}

QString DateFormats::moment(Instant instant)
{
    if (m_moment == nullptr) {
        m_moment = formatter(momentPattern(m_locale));
    }
    // Where the locale puts narrow no-break spaces, plain ones are shown: fonts without the former show a box.
    return format(m_moment, u"", instant).replace(QChar(narrowNoBreakSpace), QLatin1Char(' '));
}

DateFormats::Formatter DateFormats::formatter(const icu::UnicodeString &pattern) const
{
    UErrorCode status = U_ZERO_ERROR;
    return std::make_unique<icu::SimpleDateFormat>(pattern, m_locale, status);
}

QString DateFormats::format(Formatter &formatter, const char16_t *pattern, Instant instant)
{
    if (formatter == nullptr) {
        formatter = this->formatter(icu::UnicodeString(pattern));
    }
    icu::UnicodeString text;
    return fromIcu(formatter->format(udate(instant), text));
}

/// How far the clock on the wall is ahead of UTC.
double DateFormats::offsetAt(UDate moment) const
{
    std::int32_t raw = 0;
    std::int32_t summer = 0;
    UErrorCode status = U_ZERO_ERROR;
    m_calendar->getTimeZone().getOffset(moment, 0, raw, summer, status);
    return static_cast<double>(raw) + summer;
}

/// Whether the clock on the wall shows the same at another moment, because it was put back between the two.
bool DateFormats::isShownTwice(Instant instant) const
{
    constexpr UDate day = 86'400'000;
    const UDate moment = udate(instant);
    const double offset = offsetAt(moment);
    const auto alsoAt = [&](double otherOffset) {
        return otherOffset != offset && offsetAt(moment + offset - otherOffset) == otherOffset;
    };
    return alsoAt(offsetAt(moment - day)) || alsoAt(offsetAt(moment + day));
}

std::int32_t DateFormats::yearOf(Instant instant)
{
    UErrorCode status = U_ZERO_ERROR;
    m_calendar->setTime(udate(instant), status);
    return m_calendar->get(UCAL_EXTENDED_YEAR, status);
}

} // namespace quillfen
