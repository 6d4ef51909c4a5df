// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/paint/icons.h"

#include <QAbstractButton>
#include <QPointer>

#include <optional>
#include <variant>

namespace quillfen {

class HoverFade;
class Spinner;

/// The main action's button; one a screen.
struct PrimaryButtonStyle {
    int height = 32;
};

/// Every other action, on light or dark surfaces.
struct SecondaryButtonStyle {
    int height = 32;
    bool dark = false;
};

/// A destructive action.
struct DangerButtonStyle {};

/// A destructive action that is a dialog's default.
struct DangerDefaultButtonStyle {};

using ButtonStyle = std::variant<PrimaryButtonStyle, SecondaryButtonStyle, DangerButtonStyle, DangerDefaultButtonStyle>;

/// A push button of the house. Its text is its accessible name; it takes focus by keyboard only.
class Button final : public QAbstractButton {
    Q_OBJECT

public:
    Button(const QString &text, ButtonStyle style, QWidget *parent = nullptr);
    /// With a 16-px picture before the text.
    Button(Icon icon, const QString &text, ButtonStyle style, QWidget *parent = nullptr);

    /// Shows every sign as it is: "&" makes no mnemonic.
    void setText(const QString &text);
    /// 28 compact, 32, or 36 large; for styles that do not carry a height.
    void setControlHeight(int height);
    /// A running action: a spinner before the label, and disabled until it ends.
    void setRunning(bool running);
    /// Takes effect once nothing runs.
    void setEnabled(bool enabled);
    /// The dialog's default, pressed by Enter.
    void setDefault(bool isDefault);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Button(std::optional<Icon> icon, const QString &text, ButtonStyle style, QWidget *parent);
    void watchWindow();
    [[nodiscard]] QRect contents() const;
    [[nodiscard]] QPoint spinnerPlace() const;
    [[nodiscard]] int leadingWidth() const;
    [[nodiscard]] const QFont &labelFont() const;

    ButtonStyle m_style;
    std::optional<Icon> m_icon;
    int m_height = 32;
    bool m_running = false;
    bool m_enabled = true; ///< what the owner wants, while something runs
    bool m_default = false;
    HoverFade *m_hover;
    Spinner *m_spinner = nullptr;
    QPointer<QWidget> m_window; ///< where Enter presses this button, the default
};

} // namespace quillfen
