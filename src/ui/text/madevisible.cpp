// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/text/label.h"

#include <algorithm>

namespace quillfen {
namespace {

bool isPlain(char16_t unit)
{
    return unit >= 0x20 && unit < 0x7F;
}

/// Whether a character would be unseen, or would change how its neighbours are seen.
bool isTreacherous(char16_t unit)
{
    if (isPlain(unit)) {
        return false;
    }
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0)                            // controls
           || unit == 0x00AD                                                       // soft hyphen
           || unit == 0x034F                                                       // grapheme joiner
           || unit == 0x061C                                                       // Arabic letter mark
           || unit == 0x115F || unit == 0x1160 || unit == 0x3164 || unit == 0xFFA0 // fillers that look like nothing
           || (unit >= 0x17B4 && unit <= 0x17B5)                                   // inherent vowels
           || (unit >= 0x180B && unit <= 0x180E)                                   // Mongolian selectors and separator
           || unit == 0x200B || unit == 0x200E || unit == 0x200F    // zero-width space, marks of direction
           || (unit >= 0x2028 && unit <= 0x202E)                    // line and paragraph ends, embeddings and overrides
           || (unit >= 0x2060 && unit <= 0x206F)                    // word joiner, isolates, format controls
           || unit == 0xFEFF || (unit >= 0xFFF0 && unit <= 0xFFFB); // byte order mark, annotations
}

/// The number of a character, as "⟨U+202E⟩".
void appendNumber(QString &shown, char32_t character)
{
    constexpr char16_t digits[] = u"0123456789ABCDEF";
    shown += QStringView(u"⟨U+");
    for (int shift = character > 0xFFFF ? 16 : 12; shift >= 0; shift -= 4) {
        shown += QChar(digits[(character >> shift) & 0xF]);
    }
    shown += u'⟩';
}

/// Control characters have signs of their own; everything else shows its number.
void appendSign(QString &shown, char16_t unit)
{
    if (unit < 0x20) {
        shown += QChar(static_cast<char16_t>(0x2400 + unit));
    } else if (unit == 0x7F) {
        shown += QChar(u'␡');
    } else {
        appendNumber(shown, unit);
    }
}

/// Joiners shape letters in several scripts and in emoji, so they stay between such; beside Latin they only deceive.
bool isIdleJoiner(const QString &text, qsizetype at)
{
    const char16_t unit = text.at(at).unicode();
    if (unit != 0x200C && unit != 0x200D) {
        return false;
    }
    const auto shapes = [&text](qsizetype place) {
        return place >= 0 && place < text.size() && text.at(place).unicode() >= 0x0600;
    };
    return !shapes(at - 1) || !shapes(at + 1);
}

bool isLoneSurrogate(const QString &text, qsizetype at)
{
    const QChar unit = text.at(at);
    if (unit.isHighSurrogate()) {
        return at + 1 >= text.size() || !text.at(at + 1).isLowSurrogate();
    }
    return unit.isLowSurrogate() && (at == 0 || !text.at(at - 1).isHighSurrogate());
}

/// The tag characters of plane 14 (U+E0000 to U+E007F) carry text that nobody sees.
bool isTag(const QString &text, qsizetype at)
{
    return text.at(at).unicode() == 0xDB40 && at + 1 < text.size() && text.at(at + 1).isLowSurrogate() &&
           text.at(at + 1).unicode() < 0xDC80;
}

bool needsSign(const QString &text, qsizetype at)
{
    const char16_t unit = text.at(at).unicode();
    if (unit < 0x0600) {
        return isTreacherous(unit);
    }
    return isTreacherous(unit) || isIdleJoiner(text, at) || isLoneSurrogate(text, at) || isTag(text, at);
}

} // namespace

QString madeVisible(const QString &text)
{
    // Nearly every text is plain throughout; the quick test of the loop is for the long ones among them.
    const QChar *units = text.constData();
    qsizetype at = 0;
    while (at < text.size() && (isPlain(units[at].unicode()) || !needsSign(text, at))) {
        ++at;
    }
    if (at == text.size()) {
        return text; // the usual case: shared, not copied
    }
    QString shown = text.left(at);
    shown.reserve(text.size() + 16);
    for (; at < text.size(); ++at) {
        if (isTag(text, at)) {
            appendNumber(shown, QChar::surrogateToUcs4(text.at(at), text.at(at + 1)));
            ++at;
        } else if (needsSign(text, at)) {
            appendSign(shown, text.at(at).unicode());
        } else {
            shown += text.at(at);
        }
    }
    return shown;
}

} // namespace quillfen
