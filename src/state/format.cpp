// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/format.h"

#include "state/isomoment.h"
#include "state/userlocale.h"

#include <QCoreApplication>

#include <unicode/calendar.h>
#include <unicode/dtptngen.h>
#include <unicode/simpleformatter.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>

namespace quillfen {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(Format)
};

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

/// A formatter costs hundreds of times what it takes to use one, so that each thread keeps its own.
class Formats final {
public:
    [[nodiscard]] static Formats &ofThread()
    {
        thread_local Formats formats;
        if (formats.m_generation != localeGeneration()) {
            formats = Formats();
        }
        return formats;
    }

    QString longDate(Instant instant) { return format(m_long, u"EEE, MMM d · HH:mm:ss", instant); }

    QString exactDate(Instant instant)
    {
        return isShownTwice(instant) ? format(m_longWithZone, u"EEE, MMM d · HH:mm:ss z", instant) : longDate(instant);
    }

    QString shortDate(Instant instant)
    {
        return isThisYear(instant) ? format(m_short, u"MMM d", instant)
                                   : format(m_shortWithYear, u"MMM d, yyyy", instant);
    }

    QString timeOfDay(Instant instant) { return format(m_time, u"HH:mm", instant); }

    QString moment(Instant instant)
    {
        if (m_moment == nullptr) {
            m_moment = formatter(momentPattern(m_locale));
        }
        // Where the locale puts narrow no-break spaces, plain ones are shown: fonts without the former show a box.
        return format(m_moment, u"", instant).replace(QChar(narrowNoBreakSpace), QLatin1Char(' '));
    }

private:
    using Formatter = std::unique_ptr<icu::SimpleDateFormat>;

    Formats() : m_generation(localeGeneration()), m_locale(datesLocale())
    {
        UErrorCode status = U_ZERO_ERROR;
        m_calendar.reset(icu::Calendar::createInstance(m_locale, status));
    }

    [[nodiscard]] Formatter formatter(const icu::UnicodeString &pattern) const
    {
        UErrorCode status = U_ZERO_ERROR;
        return std::make_unique<icu::SimpleDateFormat>(pattern, m_locale, status);
    }

    QString format(Formatter &formatter, const char16_t *pattern, Instant instant)
    {
        if (formatter == nullptr) {
            formatter = this->formatter(icu::UnicodeString(pattern));
        }
        icu::UnicodeString text;
        return fromIcu(formatter->format(udate(instant), text));
    }

    /// How far the clock on the wall is ahead of UTC.
    [[nodiscard]] double offsetAt(UDate moment) const
    {
        std::int32_t raw = 0;
        std::int32_t summer = 0;
        UErrorCode status = U_ZERO_ERROR;
        m_calendar->getTimeZone().getOffset(moment, 0, raw, summer, status);
        return static_cast<double>(raw) + summer;
    }

    /// Whether the clock on the wall shows the same at another moment, because it was put back between the two.
    [[nodiscard]] bool isShownTwice(Instant instant) const
    {
        constexpr UDate day = 86'400'000;
        const UDate moment = udate(instant);
        const double offset = offsetAt(moment);
        const auto alsoAt = [&](double otherOffset) {
            return otherOffset != offset && offsetAt(moment + offset - otherOffset) == otherOffset;
        };
        return alsoAt(offsetAt(moment - day)) || alsoAt(offsetAt(moment + day));
    }

    [[nodiscard]] std::int32_t yearOf(Instant instant)
    {
        UErrorCode status = U_ZERO_ERROR;
        m_calendar->setTime(udate(instant), status);
        return m_calendar->get(UCAL_EXTENDED_YEAR, status);
    }

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

/// With a decimal point whatever the locale, and halves to even, as "%.1f" has it in the C locale.
QString oneDecimal(double number)
{
    std::array<char, 64> buffer{};
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed, 1);
    return QString::fromLatin1(buffer.data(), end - buffer.data());
}

std::u16string_view viewOf(const QString &text)
{
    return {reinterpret_cast<const char16_t *>(text.utf16()), static_cast<std::size_t>(text.size())};
}

/// A moment with a zone; or one without zone and without fraction, which is UTC then.
std::optional<Instant> strictMoment(const QString &text)
{
    const std::optional<IsoMoment> moment = isoMoment(viewOf(text));
    return moment && (moment->zone || !moment->fraction) ? std::optional(moment->instant) : std::nullopt;
}

template <typename Char>
std::basic_string_view<Char> trimmedBlanks(std::basic_string_view<Char> text)
{
    const auto isBlank = [](Char character) { return character == Char(' ') || character == Char('\t'); };
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// Blanks around it, a space for the "T", no zone: UTC.
template <typename Char>
std::optional<Instant> lenientMoment(std::basic_string_view<Char> text)
{
    text = trimmedBlanks(text);
    std::optional<IsoMoment> moment = isoMoment(text);
    if (!moment) {
        moment = isoMoment(text, Char(' '));
    }
    return moment ? std::optional(moment->instant) : std::nullopt;
}

/// What the case of no surrounding letter depends on, and what words are parted by blanks alone.
bool isPlain(QChar character)
{
    return character == QLatin1Char(' ') || (character.unicode() < 0x80 && character.isLetterOrNumber());
}

/// Turkish and Azerbaijani know an i without a dot, Dutch takes ij for one letter. All other languages write Latin
/// letters without accents alike.
bool isPlainLanguage(std::string_view language)
{
    return language.size() == 2 && language != "tr" && language != "az" && language != "nl";
}

/// Without ICU, whose rules of words take half a megabyte: nearly every plan has a name like "pro".
QString capitalisedPlainly(const QString &words)
{
    QString text = words.toLower();
    bool inWord = false;
    for (QChar &character : text) {
        if (!inWord) {
            character = character.toUpper();
        }
        inWord = character != QLatin1Char(' ');
    }
    return text;
}

} // namespace

QString gb(std::int64_t bytes)
{
    const double size = static_cast<double>(bytes) / 1'073'741'824.0;
    if (size >= 1024.0) {
        return Words::tr("%1 TB").arg(oneDecimal(size / 1024.0));
    }
    if (size == std::trunc(size)) {
        return Words::tr("%1 GB").arg(static_cast<std::int64_t>(size));
    }
    return Words::tr("%1 GB").arg(oneDecimal(size));
}

QString ago(const QString &timestamp)
{
    using namespace std::chrono_literals;
    const std::optional<Instant> moment = strictMoment(timestamp);
    if (!moment) {
        return timestamp;
    }
    const std::chrono::milliseconds passed = now() - *moment;
    if (passed < 60s) {
        return Words::tr("just now");
    }
    if (passed < 3'600s) {
        return Words::tr("%1 min ago").arg(std::chrono::floor<std::chrono::minutes>(passed).count());
    }
    if (passed < 172'800s) {
        return Words::tr("%1 h ago").arg(std::chrono::floor<std::chrono::hours>(passed).count());
    }
    return Formats::ofThread().moment(*moment);
}

std::optional<Instant> parseDate(const QString &text)
{
    return lenientMoment(viewOf(text));
}

std::optional<Instant> parseDate(std::string_view text)
{
    return lenientMoment(text);
}

QString exactDate(const QString &timestamp)
{
    const std::optional<Instant> moment = parseDate(timestamp);
    return moment ? exactDate(*moment) : timestamp;
}

QString exactDate(Instant moment)
{
    return Formats::ofThread().exactDate(moment);
}

QString shortDate(const QString &timestamp)
{
    const std::optional<Instant> moment = parseDate(timestamp);
    return moment ? Formats::ofThread().shortDate(*moment) : timestamp;
}

QString longDate(const QString &timestamp)
{
    const std::optional<Instant> moment = parseDate(timestamp);
    return moment ? Formats::ofThread().longDate(*moment) : timestamp;
}

QString timeOfDay(Instant instant)
{
    return Formats::ofThread().timeOfDay(instant);
}

QString elapsed(Instant since)
{
    using namespace std::chrono;
    const auto seconds = std::max(floor<std::chrono::seconds>(now() - since), std::chrono::seconds(0));
    const auto minutes = floor<std::chrono::minutes>(seconds);
    if (minutes < 1min) {
        return Words::tr("%1 s").arg(seconds.count());
    }
    if (minutes < 1h) {
        return Words::tr("%1 min").arg(minutes.count());
    }
    return Words::tr("%1 h %2 min").arg(minutes / 1h).arg((minutes % 1h).count());
}

QString capitalised(const QString &words)
{
    if (std::ranges::all_of(words, isPlain) && isPlainLanguage(wordsLanguage())) {
        return capitalisedPlainly(words);
    }
    icu::UnicodeString text(words.utf16(), static_cast<std::int32_t>(words.size()));
    return fromIcu(text.toTitle(nullptr, wordsLocale()));
}

} // namespace quillfen
