// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/controls/textfield.h"

namespace quillfen {

/// A field that filters what stands below it. Esc empties it first and is passed on only when there is nothing left to
/// empty. Its placeholder is its accessible name.
class SearchField final : public TextField {
    Q_OBJECT

public:
    explicit SearchField(const QString &placeholder, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace quillfen
