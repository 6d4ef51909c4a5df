// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/controls/buttons.h"

#include <QDialog>
#include <QPointer>

class QBoxLayout;

namespace quillfen {

class Scrim;
class TextField;

/// The one window behind all questions: a title, a text, perhaps something to type or to copy, and buttons. Frameless,
/// 480 wide whatever its texts, over a scrim on the window of `parent`. It belongs to nobody, so that the end of its
/// parent ends the question and not the object that waits for the answer.
class AlertDialog final : public QDialog {
    Q_OBJECT

public:
    AlertDialog(QWidget *parent, const QString &title);
    ~AlertDialog() override;

    /// A paragraph or several; scrolls where it is longer than the screen has room for.
    void addText(const QString &text);
    TextField *addField(int width, const QString &accessibleName, const QString &initial = {},
                        const QString &placeholder = {});
    void addBody(QWidget *widget);
    /// Buttons stand left to right; the default one comes last. Connect what it does.
    Button *addButton(const QString &text, ButtonStyle style);
    Button *addDefaultButton(const QString &text, ButtonStyle style);
    /// From now on neither Esc nor the window manager nor the end of the parent closes the dialog.
    void insist();

    /// Shows the dialog and waits. True when it was accepted.
    [[nodiscard]] bool ask();

    void reject() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeOver(const QWidget *window);
    [[nodiscard]] QMargins shadowMargins() const;
    [[nodiscard]] int mostTextHeight() const;

    QPointer<QWidget> m_parentWindow;
    QPointer<Scrim> m_scrim;
    QPointer<QWidget> m_first; ///< where the focus starts
    QBoxLayout *m_body;
    QBoxLayout *m_buttons;
    bool m_shadowed; ///< fixed for its life: a compositor that comes or goes does not reshape it
    bool m_insists = false;
};

} // namespace quillfen
