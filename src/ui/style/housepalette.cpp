// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/style/housepalette.h"

#include "ui/theme.h"

namespace quillfen {

QPalette housePalette()
{
    using namespace Theme;
    QPalette palette;
    const auto set = [&palette](QPalette::ColorRole role, const QColor &colour, const QColor &disabled) {
        palette.setColor(QPalette::Active, role, colour);
        palette.setColor(QPalette::Inactive, role, colour);
        palette.setColor(QPalette::Disabled, role, disabled);
    };
    set(QPalette::Window, bg, bg);
    set(QPalette::WindowText, text, muted);
    set(QPalette::Base, bg, bg);
    set(QPalette::AlternateBase, panel2, panel2);
    set(QPalette::Text, heading, muted);
    set(QPalette::PlaceholderText, text, muted);
    set(QPalette::Button, bg, bg);
    set(QPalette::ButtonText, heading, muted);
    set(QPalette::BrightText, bg, bg);
    set(QPalette::Highlight, okBg, okBg);
    set(QPalette::HighlightedText, okText, okText);
    set(QPalette::ToolTipBase, dPanel, dPanel);
    set(QPalette::ToolTipText, dBright, dBright);
    set(QPalette::Link, ok, muted);
    set(QPalette::LinkVisited, ok, muted);
    set(QPalette::Light, panel2, panel2);
    set(QPalette::Midlight, panel, panel);
    set(QPalette::Mid, line, line);
    set(QPalette::Dark, muted, muted);
    set(QPalette::Shadow, muted, muted);
    return palette;
}

} // namespace quillfen
