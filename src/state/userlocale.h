// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <unicode/locid.h>
#include <unicode/timezone.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace quillfen {

/// The locale that the environment asks for, LC_ALL before the category's own variable before LANG; where none is set,
/// the one that the system's settings name. Any thread.
[[nodiscard]] icu::Locale wordsLocale(); ///< the language of texts (LC_MESSAGES)
[[nodiscard]] icu::Locale datesLocale(); ///< how dates and times are written (LC_TIME)

/// The language of texts alone, in two or three letters. Reads no data of ICU where the environment names a language,
/// so that plain texts need none. Any thread.
[[nodiscard]] std::string wordsLanguage();

/// Changes whenever locale or time zone were replaced, so that whoever keeps something made for them knows. Any thread.
[[nodiscard]] std::uint64_t localeGeneration() noexcept;

/// Replaces locale and time zone for as long as it lives: `LocaleOverride german("de_DE", "Europe/Berlin")`. They
/// nest. Tests only; not for use while other threads format.
class LocaleOverride final {
public:
    explicit LocaleOverride(const char *locale, const char *timeZone = "UTC");
    ~LocaleOverride();
    LocaleOverride(const LocaleOverride &) = delete;
    LocaleOverride &operator=(const LocaleOverride &) = delete;

private:
    std::optional<icu::Locale> m_previousLocale;
    std::unique_ptr<icu::TimeZone> m_previousZone;
};

} // namespace quillfen
