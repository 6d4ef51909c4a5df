// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractButton>

namespace quillfen {

/// A choice as a tile: a title with the radio at its right, and a subtitle that wraps. Tiles with the same parent
/// exclude each other; arrow keys move among them.
class ShareTile final : public QAbstractButton {
    Q_OBJECT

public:
    ShareTile(const QString &title, const QString &subtitle, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_title;
    QString m_subtitle;
};

} // namespace quillfen
