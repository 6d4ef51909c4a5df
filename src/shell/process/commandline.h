// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

namespace quillfen {

/// A command in one line of fixed width. It elides where it has no room; what is copied is whole all the same: a click
/// asks for that, and so does a selection that takes the ellipsis in.
class CommandLine final : public QLabel {
    Q_OBJECT

public:
    explicit CommandLine(const QString &command, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// A click that has selected nothing.
    void clicked();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    [[nodiscard]] QString selectedCommand() const;

    QString m_command;
};

} // namespace quillfen
