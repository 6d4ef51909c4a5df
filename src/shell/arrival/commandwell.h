// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

namespace quillfen {

/// A command for a terminal: one line of fixed width that can be selected, and a button that copies it whole, as a
/// click on the line does.
class CommandWell final : public QWidget {
    Q_OBJECT

public:
    /// `copyName` is the name of the button, which shows a picture only.
    CommandWell(const QString &command, const QString &copyName, QWidget *parent = nullptr);

Q_SIGNALS:
    void copied();

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace quillfen
