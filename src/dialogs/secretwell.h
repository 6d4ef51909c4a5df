// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QWidget>

namespace quillfen {

class SecretText;

/// A secret in a well, selectable, set in as many lines as it needs; scrolls beyond a few.
class SecretWell final : public QWidget {
    Q_OBJECT

public:
    SecretWell(const QString &accessibleName, const QString &secret, int width, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    SecretText *m_text;
};

} // namespace quillfen
