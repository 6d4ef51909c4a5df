// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSizeF>

#include <string_view>

class QPainter;

namespace quillfen {

/// Paints one of the house's own SVG drawings at `size`. It knows what they use: paths, rectangles and circles with
/// fill and stroke, and groups. A library that knows all of SVG takes half a megabyte of every client for thirty icons.
void paintDrawing(QPainter &painter, std::string_view source, const QSizeF &size);

} // namespace quillfen
