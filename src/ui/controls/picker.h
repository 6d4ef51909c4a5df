// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QComboBox>

namespace quillfen {

class HoverFade;

/// A choice from a list that drops down. Entries may come from the agent: plain text, elided, whole in the tooltip. The
/// wheel never changes the choice, so that scrolling a form over it does no harm.
class Picker final : public QComboBox {
    Q_OBJECT

public:
    explicit Picker(const QString &accessibleName, QWidget *parent = nullptr);

    /// 28 compact, 32, or 36 large.
    void setControlHeight(int height);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    bool event(QEvent *event) override;

private:
    [[nodiscard]] QRect textRect() const;

    int m_height = 32;
    HoverFade *m_hover;
};

} // namespace quillfen
