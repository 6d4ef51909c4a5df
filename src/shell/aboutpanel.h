// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

namespace quillfen {

/// Tells about the program: its name, its version and the agent's, and where to read more. Esc closes it.
class AboutPanel final : public QDialog {
    Q_OBJECT

public:
    /// `version` is "agent " and the agent's version, which is empty while the agent has not said it.
    AboutPanel(const QString &applicationVersion, const QString &version, QWidget *parent = nullptr);

Q_SIGNALS:
    /// The keys that end the program were pressed here.
    void quitRequested();

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace quillfen
