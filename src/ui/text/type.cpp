// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/text/type.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace quillfen {
namespace {

struct Face {
    int size;
    int line;
    QFont::Weight weight;
    qreal tracking = 0.0;
    bool mono = false;
};

constexpr auto roles = static_cast<std::size_t>(Type::Operation) + 1;

constexpr std::array<Face, roles> faces{
    Face{22, 28, QFont::DemiBold, -0.3}, Face{17, 24, QFont::DemiBold, -0.15}, Face{14, 20, QFont::DemiBold},
    Face{14, 20, QFont::Medium},         Face{14, 20, QFont::Normal},          Face{13, 20, QFont::Normal},
    Face{13, 20, QFont::Medium},         Face{13, 20, QFont::DemiBold},        Face{12, 16, QFont::Normal},
    Face{12, 16, QFont::Medium},         Face{12, 16, QFont::DemiBold},        Face{11, 16, QFont::Medium},
    Face{11, 16, QFont::Normal},         Face{12, 18, QFont::Normal, 0, true}, Face{10, 14, QFont::Normal, 0, true},
    Face{20, 28, QFont::DemiBold}};

const Face &face(Type type)
{
    return faces.at(static_cast<std::size_t>(type));
}

/// The largest interface font the usual desktops start with, in pixels: 11 points at 96 dots per inch on Linux, 13
/// points at 72 on macOS. Up to here the user asked for nothing, beyond it for larger text.
#ifdef Q_OS_MACOS
constexpr qreal usualDotsPerInch = 72.0;
constexpr qreal usualFontPixels = 13.0;
#else
constexpr qreal usualDotsPerInch = 96.0;
constexpr qreal usualFontPixels = 11.0 * 96.0 / 72.0;
#endif

/// The text scale: whatever is larger of the text's own dots per inch (desktops with a text-scaling setting raise them)
/// and the interface font's size against the usual one. The screen's scale factor is not in it: that scales everything.
qreal systemTextScale()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) {
        return 1.0;
    }
    const QFont system = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    const qreal dots = screen->logicalDotsPerInchY();
    const qreal pixels = system.pixelSize() > 0 ? system.pixelSize() : system.pointSizeF() * dots / 72.0;
    return std::clamp(std::max(dots / usualDotsPerInch, pixels / usualFontPixels), 1.0, 1.5);
}

qreal textScale()
{
    static const qreal scale = systemTextScale();
    return scale;
}

QFont made(const Face &face)
{
    // The second family is asked only for what the first one lacks; no list of families is searched beforehand, which
    // would cost a start more than all of its text.
    const auto fallback = face.mono ? QFontDatabase::FixedFont : QFontDatabase::GeneralFont;
    QFont font(QStringList{face.mono ? QStringLiteral("JetBrains Mono") : QStringLiteral("Inter"),
                           QFontDatabase::systemFont(fallback).family()});
    font.setPixelSize(scaled(face.size));
    font.setWeight(face.weight);
    if (face.tracking != 0.0) {
        font.setLetterSpacing(QFont::AbsoluteSpacing, face.tracking * textScale());
    }
    if (face.mono) {
        font.setStyleHint(QFont::Monospace);
        // Ligatures of a code font are contextual alternates, which only plain shaping leaves out: "->" stays two
        // signs.
        font.setStyleStrategy(QFont::PreferNoShaping);
        font.setKerning(false);
    }
    return font;
}

} // namespace

const QFont &font(Type type)
{
    static std::array<std::optional<QFont>, roles> fonts;
    std::optional<QFont> &slot = fonts.at(static_cast<std::size_t>(type));
    if (!slot) {
        slot = made(face(type));
    }
    return *slot;
}

int lineHeight(Type type)
{
    return scaled(face(type).line);
}

int scaled(int pixels)
{
    return static_cast<int>(std::lround(pixels * textScale()));
}

} // namespace quillfen
