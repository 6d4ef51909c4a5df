// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFont>

namespace quillfen {

/// The roles of text. Sizes are device-independent pixels at scale 1 and follow the system's text scale up to 150 %.
enum class Type {
    Title,           ///< 22/28 semibold: board, sheet and full-screen titles
    Heading,         ///< 17/24 semibold: card title of a volume, statistic value, dialog title
    Section,         ///< 14/20 semibold: section titles, the selected sidebar entry
    SectionMedium,   ///< 14/20 medium: the line of an empty board
    SectionRegular,  ///< 14/20 regular: sidebar entries
    Body,            ///< 13/20 regular
    BodyMedium,      ///< 13/20 medium: names, button labels
    BodySemibold,    ///< 13/20 semibold
    Caption,         ///< 12/16 regular
    CaptionMedium,   ///< 12/16 medium: table header, compact button
    CaptionSemibold, ///< 12/16 semibold: plan name
    Micro,           ///< 11/16 medium: pill, version line
    MicroRegular,    ///< 11/16 regular
    Mono,            ///< 12/18 fixed width: path, command, key, JSON
    MonoSmall,       ///< 10 fixed width: timeline labels
    Operation,       ///< 20 semibold: the operation's name in Advanced
};

/// The font of a role: Inter or JetBrains Mono, the system's interface or fixed font where they are missing.
[[nodiscard]] const QFont &font(Type type);

/// The line height of a role in pixels, scaled like its font.
[[nodiscard]] int lineHeight(Type type);

/// `pixels` scaled with the system's text size, for heights that must grow with their text.
[[nodiscard]] int scaled(int pixels);

} // namespace quillfen
