// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/userlocale.h"

#include <QByteArray>

#include <gmock/gmock.h>

#include <array>
#include <memory>

using namespace quillfen;

namespace {

/// Sets the four variables, and puts back what they held.
class Environment final {
public:
    Environment(const char *all, const char *time, const char *messages, const char *lang)
    {
        const std::array<const char *, 4> values{all, time, messages, lang};
        for (std::size_t index = 0; index < names.size(); ++index) {
            m_before[index] = qgetenv(names[index]);
            values[index] == nullptr ? qunsetenv(names[index]) : qputenv(names[index], values[index]);
        }
    }
    ~Environment()
    {
        for (std::size_t index = 0; index < names.size(); ++index) {
            m_before[index].isNull() ? qunsetenv(names[index]) : qputenv(names[index], m_before[index]);
        }
    }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;

private:
    static constexpr std::array<const char *, 4> names{"LC_ALL", "LC_TIME", "LC_MESSAGES", "LANG"};
    std::array<QByteArray, 4> m_before;
};

TEST(UserLocale, AllComesBeforeTheCategoryBeforeLang)
{
    {
        const Environment environment("fr_FR.UTF-8", "de_DE.UTF-8", "it_IT.UTF-8", "en_US.UTF-8");
        EXPECT_STREQ(datesLocale().getName(), "fr_FR");
        EXPECT_STREQ(wordsLocale().getName(), "fr_FR");
    }
    {
        const Environment environment(nullptr, "de_DE.UTF-8", "it_IT.UTF-8", "en_US.UTF-8");
        EXPECT_STREQ(datesLocale().getName(), "de_DE");
        EXPECT_STREQ(wordsLocale().getName(), "it_IT");
    }
    {
        const Environment environment(nullptr, nullptr, nullptr, "tr_TR.UTF-8");
        EXPECT_STREQ(datesLocale().getName(), "tr_TR");
        EXPECT_STREQ(wordsLocale().getName(), "tr_TR");
    }
}

TEST(UserLocale, AnEmptyVariableSaysNothing)
{
    const Environment environment("", "", "", "de_DE.UTF-8");
    EXPECT_STREQ(datesLocale().getName(), "de_DE");
}

TEST(UserLocale, TheLanguageOfProgrammersIsEnglish)
{
    for (const char *const name : {"C", "C.UTF-8", "POSIX"}) {
        const Environment environment(name, nullptr, nullptr, nullptr);
        EXPECT_STREQ(datesLocale().getLanguage(), "en") << name;
    }
}

TEST(UserLocale, TheLanguageOfWordsComesFromTheSamePlaces)
{
    const auto language = [](const char *messages, const char *lang) {
        const Environment environment(nullptr, "it_IT.UTF-8", messages, lang);
        return wordsLanguage();
    };
    EXPECT_EQ(language("tr_TR.UTF-8", "de_DE"), "tr");
    EXPECT_EQ(language("", "sr_RS@latin"), "sr");
    EXPECT_EQ(language(nullptr, "nds"), "nds");
    EXPECT_EQ(language(nullptr, "C.UTF-8"), "en");
    EXPECT_EQ(language(nullptr, nullptr), icu::Locale::getDefault().getLanguage());

    const Environment environment("de_DE.UTF-8", nullptr, nullptr, nullptr);
    const LocaleOverride turkish("tr_TR");
    EXPECT_EQ(wordsLanguage(), "tr");
}

TEST(UserLocale, AnOverrideWinsWhileItLives)
{
    const Environment environment("de_DE.UTF-8", nullptr, nullptr, nullptr);
    const std::uint64_t before = localeGeneration();
    {
        const LocaleOverride japanese("ja_JP");
        EXPECT_STREQ(datesLocale().getName(), "ja_JP");
        EXPECT_NE(localeGeneration(), before);
    }
    EXPECT_STREQ(datesLocale().getName(), "de_DE");
}

icu::UnicodeString zoneNow()
{
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createDefault());
    icu::UnicodeString id;
    return zone->getID(id);
}

TEST(UserLocale, OverridesNest)
{
    const icu::UnicodeString before = zoneNow();
    {
        const LocaleOverride japanese("ja_JP", "Asia/Tokyo");
        {
            const LocaleOverride german("de_DE", "Europe/Berlin");
            EXPECT_STREQ(datesLocale().getName(), "de_DE");
            EXPECT_TRUE(zoneNow() == icu::UnicodeString("Europe/Berlin"));
        }
        EXPECT_STREQ(datesLocale().getName(), "ja_JP");
        EXPECT_TRUE(zoneNow() == icu::UnicodeString("Asia/Tokyo"));
    }
    EXPECT_TRUE(zoneNow() == before);
}

} // namespace
