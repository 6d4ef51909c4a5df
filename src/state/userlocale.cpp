// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/userlocale.h"

#include <atomic>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>

namespace quillfen {

namespace {

std::atomic<std::uint64_t> generation = 0;

std::optional<icu::Locale> &replacement()
{
    static std::optional<icu::Locale> locale;
    return locale;
}

icu::Locale named(const char *name)
{
    const std::string_view language = std::string_view(name).substr(0, std::string_view(name).find('.'));
    return language == "C" || language == "POSIX" ? icu::Locale("en_US_POSIX") : icu::Locale::createCanonical(name);
}

/// ICU has a default of its own, but it takes a variable that is set to nothing for an answer, and knows no LC_TIME.
icu::Locale fromEnvironment(const char *category)
{
    if (replacement()) {
        return *replacement();
    }
    for (const char *const variable : {"LC_ALL", category, "LANG"}) {
        const char *const name = std::getenv(variable);
        if (name != nullptr && *name != '\0') {
            return named(name);
        }
    }
    return icu::Locale::getDefault();
}

} // namespace

icu::Locale wordsLocale()
{
    return fromEnvironment("LC_MESSAGES");
}

icu::Locale datesLocale()
{
    return fromEnvironment("LC_TIME");
}

std::uint64_t localeGeneration() noexcept
{
    return generation.load(std::memory_order_acquire);
}

LocaleOverride::LocaleOverride(const char *locale, const char *timeZone)
    : m_previousLocale(replacement()), m_previousZone(icu::TimeZone::createDefault())
{
    replacement() = icu::Locale::createCanonical(locale);
    icu::TimeZone::adoptDefault(icu::TimeZone::createTimeZone(timeZone));
    ++generation;
}

LocaleOverride::~LocaleOverride()
{
    replacement() = m_previousLocale;
    icu::TimeZone::adoptDefault(m_previousZone.release());
    ++generation;
}

} // namespace quillfen
