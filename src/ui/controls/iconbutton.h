// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/paint/icons.h"

#include <QAbstractButton>

namespace quillfen {

class HoverFade;

/// A button that is only a picture, 28 by 28; its name is its tooltip.
class IconButton final : public QAbstractButton {
    Q_OBJECT

public:
    IconButton(Icon icon, const QString &accessibleName, int iconSize = 16, QWidget *parent = nullptr);

    /// Another picture and name for the other half of a switch, as "Show" and "Hide" of a secret.
    void setIcon(Icon icon, const QString &accessibleName);
    void setDark(bool dark);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    Icon m_icon;
    int m_iconSize;
    bool m_dark = false;
    HoverFade *m_hover;
};

} // namespace quillfen
