// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QPixmap>
#include <QRectF>
#include <QSize>

class QPainter;

namespace quillfen {

/// The drawings of the house, named after their files.
enum class Icon {
    Drive,
    DriveClock,
    ClockBack,
    CalendarClock,
    Box,
    PersonCircle,
    ServerRack,
    Terminal,
    CheckCircle,
    CheckCircleFill,
    Warning,
    WarningFill,
    Key,
    KeySlash,
    Search,
    RadioOn,
    RadioOff,
    Plus,
    Copy,
    FolderReveal,
    Eye,
    EyeOff,
    ChevronDown,
    ChevronRight,
    Calendar,
    WinClose,
    WinMinimise,
    WinMaximise,
    WinRestore,
    TrayTemplate,
};

/// Paints `icon` in one colour into a square of `rect`, crisp at the painter's scale. Drawn once per icon, colour, size
/// and scale, then kept.
void paintIcon(QPainter &painter, Icon icon, const QRectF &rect, const QColor &colour);

/// The same as a picture of `size` device-independent pixels.
[[nodiscard]] QPixmap iconPixmap(Icon icon, int size, const QColor &colour, qreal devicePixelRatio);

/// The drawings with colours of their own.
enum class Artwork { WordmarkLight, WordmarkDark, BrandMark, AppIcon };

/// Paints `artwork` into `rect`, crisp at the painter's scale, drawn once per size and scale, then kept.
void paintArtwork(QPainter &painter, Artwork artwork, const QRectF &rect);

/// The same as a picture of `size` device-independent pixels.
[[nodiscard]] QPixmap artworkPixmap(Artwork artwork, QSize size, qreal devicePixelRatio);

} // namespace quillfen
