// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/paint/icons.h"

#include <QAbstractButton>

namespace quillfen {

class HoverFade;

/// One control of the window: a glyph on a fill that shows under the pointer. Red under the pointer when it closes. Its
/// colours are those of the surface that it stands on, the sidebar or a board.
class WindowButton final : public QAbstractButton {
    Q_OBJECT

public:
    enum class Kind { Plain, Close };

    WindowButton(Icon icon, const QString &name, Kind kind = Kind::Plain, QWidget *parent = nullptr);

    void setPicture(Icon icon, const QString &name);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    [[nodiscard]] bool standsOnSidebar() const;

    Icon m_icon;
    Kind m_kind;
    HoverFade *m_hover;
};

} // namespace quillfen
