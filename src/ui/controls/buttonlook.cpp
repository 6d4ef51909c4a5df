// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/buttonlook.h"

#include "ui/paint/paint.h"
#include "ui/theme.h"

namespace quillfen {
namespace {

ButtonLooks looks(const PrimaryButtonStyle &)
{
    using namespace Theme;
    return {{accent, {}, onAccent},
            {blended(accent, bg, 0.16), {}, onAccent},
            {accent, {}, onAccent, faded(onAccent, 0.35F)},
            {line, {}, muted}};
}

ButtonLooks looks(const SecondaryButtonStyle &style)
{
    using namespace Theme;
    if (style.dark) {
        return {{dPanel, dLine, dBright}, {dLine, dLine, dBright}, {dPanel2, dLine, dBright}, {{}, dLine, dMuted}};
    }
    return {{bg, line, heading}, {panel, line, heading}, {line, line, heading}, {{}, line, muted}};
}

ButtonLooks looks(const DangerButtonStyle &)
{
    using namespace Theme;
    return {{bg, line, danger},
            {dangerBg, blended(dangerBg, danger, 0.45), danger},
            {danger, danger, bg},
            {{}, line, muted}};
}

ButtonLooks looks(const DangerDefaultButtonStyle &)
{
    using namespace Theme;
    return {{danger, {}, bg}, {dangerText, {}, bg}, {dangerText, {}, bg, faded(bg, 0.35F)}, {line, {}, muted}};
}

/// Between two colours, where nothing is a colour too: it fades out.
QColor between(const QColor &from, const QColor &to, qreal share)
{
    if (!from.isValid() || !to.isValid()) {
        return share < 0.5 ? from : to;
    }
    return blended(from, to, share);
}

struct HeightOf {
    int operator()(const PrimaryButtonStyle &style) const { return style.height; }
    int operator()(const SecondaryButtonStyle &style) const { return style.height; }
    int operator()(const DangerButtonStyle &) const { return 32; }
    int operator()(const DangerDefaultButtonStyle &) const { return 32; }
};

} // namespace

ButtonLooks looksOf(const ButtonStyle &style)
{
    return std::visit([](const auto &each) { return looks(each); }, style);
}

ButtonLook between(const ButtonLook &from, const ButtonLook &to, qreal share)
{
    return {between(from.fill, to.fill, share), between(from.line, to.line, share),
            between(from.label, to.label, share)};
}

int heightOf(const ButtonStyle &style)
{
    return std::visit(HeightOf{}, style);
}

bool isStrong(const ButtonStyle &style)
{
    return std::holds_alternative<PrimaryButtonStyle>(style) || std::holds_alternative<DangerDefaultButtonStyle>(style);
}

bool isDark(const ButtonStyle &style)
{
    const auto *secondary = std::get_if<SecondaryButtonStyle>(&style);
    return secondary != nullptr && secondary->dark;
}

} // namespace quillfen
