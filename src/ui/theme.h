// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>

#include <array>

/// The palette. Boards name these entries and never pick a colour of their own.
namespace quillfen::Theme {

// Light surfaces.
inline constexpr QColor bg{0xFD, 0xF6, 0xE3};
inline constexpr QColor panel{0xEE, 0xE8, 0xD5};
inline constexpr QColor panel2{0xF5, 0xEF, 0xDC};
inline constexpr QColor line{0xDD, 0xD6, 0xC1};
inline constexpr QColor text{0x58, 0x6E, 0x75};
inline constexpr QColor heading{0x07, 0x36, 0x42};
inline constexpr QColor muted{0x83, 0x94, 0x96};
inline constexpr QColor accent{0x2A, 0xA1, 0x98};
inline constexpr QColor onAccent{0x00, 0x2B, 0x36};
inline constexpr QColor ok{0x1C, 0x7A, 0x73};
inline constexpr QColor okBg{0xD9, 0xEE, 0xE9};
inline constexpr QColor okText{0x0F, 0x5A, 0x55};
inline constexpr QColor warn{0x9A, 0x5B, 0x00};
inline constexpr QColor warnBright{0xE3, 0xA3, 0x3B};
inline constexpr QColor danger{0xA3, 0x3A, 0x0F};
inline constexpr QColor dangerBg{0xF8, 0xE9, 0xDD};
inline constexpr QColor dangerText{0x7A, 0x2E, 0x0C};

// Dark surfaces.
inline constexpr QColor dBg{0x00, 0x2B, 0x36};
inline constexpr QColor dPanel{0x07, 0x36, 0x42};
inline constexpr QColor dPanel2{0x01, 0x32, 0x3D};
inline constexpr QColor dLine{0x0D, 0x45, 0x52};
inline constexpr QColor dText{0x93, 0xA1, 0xA1};
inline constexpr QColor dBright{0xEE, 0xE8, 0xD5};
inline constexpr QColor dMuted{0x65, 0x7B, 0x83};

/// The dot of a running engine, the one colour outside the two sets.
inline constexpr QColor engineOn{133, 153, 0};

/// One colour a history tier, from "every second" to "every month".
inline constexpr std::array<QColor, 6> tierColors{QColor{0xCB, 0x4B, 0x16}, QColor{0xE3, 0xA3, 0x3B},
                                                  QColor{0x2A, 0xA1, 0x98}, QColor{0x26, 0x8B, 0xD2},
                                                  QColor{0x6C, 0x71, 0xC4}, QColor{0x58, 0x6E, 0x75}};

/// `colour` at `share` (0 to 1) of its opacity.
[[nodiscard]] inline QColor faded(QColor colour, float share)
{
    return QColor(colour.red(), colour.green(), colour.blue(), static_cast<int>(255.0F * share + 0.5F));
}

} // namespace quillfen::Theme
