// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/format.h"

#include "state/dateformats.h"
#include "state/isomoment.h"
#include "state/userlocale.h"

#include <QCoreApplication>

#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace quillfen {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(Format)
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
    return DateFormats::ofThread().moment(*moment);
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
    return DateFormats::ofThread().exactDate(moment);
}

QString shortDate(const QString &timestamp)
{
    const std::optional<Instant> moment = parseDate(timestamp);
    return moment ? shortDate(*moment) : timestamp;
}

QString shortDate(Instant moment)
{
    return DateFormats::ofThread().shortDate(moment);
}

QString longDate(const QString &timestamp)
{
    const std::optional<Instant> moment = parseDate(timestamp);
    return moment ? DateFormats::ofThread().longDate(*moment) : timestamp;
}

QString timeOfDay(Instant instant)
{
    return DateFormats::ofThread().timeOfDay(instant);
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
    text.toTitle(nullptr, wordsLocale());
    return QString::fromUtf16(text.getBuffer(), text.length());
}

} // namespace quillfen
