// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSpinBox>

namespace quillfen {

/// A size in whole GB that reads like a value and can be typed over: its border comes with the pointer or the focus.
class SizeField final : public QSpinBox {
    Q_OBJECT

public:
    explicit SizeField(const QString &accessibleName, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace quillfen
