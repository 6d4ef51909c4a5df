// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/text/type.h"

#include <QAbstractButton>

namespace quillfen {

/// A text on a dark surface as a button. It elides before it takes room from what stands beside it.
class DarkTextButton final : public QAbstractButton {
    Q_OBJECT

public:
    explicit DarkTextButton(QWidget *parent = nullptr);

    /// `acts`: pressing it does something.
    void setLabel(const QString &label, bool acts);
    void setUnderlined(bool underlined);
    /// Small and dim at rest, bright and underlined under the pointer.
    void setQuiet();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    [[nodiscard]] QString shownLabel() const;

    Type m_type;
    bool m_underlined = false;
    bool m_quiet = false;
};

} // namespace quillfen
