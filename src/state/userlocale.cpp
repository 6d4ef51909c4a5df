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

constexpr auto words = "LC_MESSAGES";
constexpr auto dates = "LC_TIME";

bool isForProgrammers(std::string_view name)
{
    const std::string_view language = name.substr(0, name.find('.'));
    return language == "C" || language == "POSIX";
}

/// ICU has a default of its own, but it takes a variable that is set to nothing for an answer, and knows no LC_TIME.
const char *nameInEnvironment(const char *category)
{
    for (const char *const variable : {"LC_ALL", category, "LANG"}) {
        const char *const name = std::getenv(variable);
        if (name != nullptr && *name != '\0') {
            return name;
        }
    }
    return nullptr;
}

icu::Locale fromEnvironment(const char *category)
{
    if (replacement()) {
        return *replacement();
    }
    const char *const name = nameInEnvironment(category);
    if (name == nullptr) {
        return icu::Locale::getDefault();
    }
    return isForProgrammers(name) ? icu::Locale("en_US_POSIX") : icu::Locale::createCanonical(name);
}

} // namespace

icu::Locale wordsLocale()
{
    return fromEnvironment(words);
}

icu::Locale datesLocale()
{
    return fromEnvironment(dates);
}

std::string wordsLanguage()
{
    const char *const name = replacement() ? nullptr : nameInEnvironment(words);
    if (name == nullptr) {
        return wordsLocale().getLanguage();
    }
    const std::string_view whole = name;
    return isForProgrammers(whole) ? "en" : std::string(whole.substr(0, whole.find_first_of("_-.@")));
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
