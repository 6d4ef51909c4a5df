// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/searchkey.h"

#include "state/userlocale.h"

#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

#include <algorithm>

namespace quillfen {

namespace {

std::uint32_t foldingRules()
{
    const std::string language = wordsLanguage();
    return language == "tr" || language == "az" ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT;
}

/// Nothing to compose and, under the usual rules, nothing but A to Z to fold: most names, and the empty query.
bool isAscii(const QString &text)
{
    return std::ranges::all_of(text, [](QChar character) { return character.unicode() < 0x80; });
}

icu::UnicodeString composed(const icu::UnicodeString &text)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2 *const rules = icu::Normalizer2::getNFCInstance(status);
    return U_SUCCESS(status) ? rules->normalize(text, status) : text;
}

} // namespace

QString searchKey(const QString &text)
{
    thread_local std::uint64_t generation = localeGeneration();
    thread_local std::uint32_t rules = foldingRules();
    if (generation != localeGeneration()) {
        generation = localeGeneration();
        rules = foldingRules();
    }
    if (rules == U_FOLD_CASE_DEFAULT && isAscii(text)) {
        return text.toLower();
    }
    // A read-only alias of the text's own memory: names are short, and there are ten thousand of them.
    icu::UnicodeString key(false, text.utf16(), static_cast<std::int32_t>(text.size()));
    key = composed(key);
    key.foldCase(rules);
    // Folding can leave a letter apart from its accent.
    key = composed(key);
    return QString::fromUtf16(key.getBuffer(), key.length());
}

} // namespace quillfen
