// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/paint/icons.h"

#include <QLineEdit>

#include <optional>

namespace quillfen {

/// A line of text to type. Its border tells hover, focus and trouble; the text stays where it is when the border grows.
class TextField : public QLineEdit {
    Q_OBJECT

public:
    explicit TextField(const QString &accessibleName, const QString &placeholder = {}, int height = 32,
                       QWidget *parent = nullptr);

    /// Whether the border shows that the text is not acceptable; the reason stands in an `InlineError`.
    void setInvalid(bool invalid);
    [[nodiscard]] bool isInvalid() const noexcept { return m_invalid; }
    /// For a dark surface.
    void setDark(bool dark);
    /// A 16-px picture before the text.
    void setLeadingIcon(Icon icon);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void applyColours();
    void applyMargins();
    [[nodiscard]] int padding() const;

    std::optional<Icon> m_icon;
    int m_height;
    bool m_dark = false;
    bool m_invalid = false;
};

} // namespace quillfen
