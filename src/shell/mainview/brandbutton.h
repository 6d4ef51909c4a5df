// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractButton>

namespace quillfen {

/// The brand in the sidebar, which tells about the program. It lies in the strip that moves the window, so dragging it
/// does that.
class BrandButton final : public QAbstractButton {
    Q_OBJECT

public:
    explicit BrandButton(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void aboutRequested();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    QPoint m_pressed;
};

} // namespace quillfen
