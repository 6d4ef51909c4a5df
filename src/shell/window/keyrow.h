// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>
#include <QWidget>

namespace quillfen {

struct KeyEntry;

/// Beside the words and beside the caps.
inline constexpr int keyRowPadding = 8;

/// One line of the shortcuts window: what keys do, and the keys as small caps at the right.
class KeyRow final : public QWidget {
    Q_OBJECT

public:
    explicit KeyRow(const KeyEntry &entry, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] int capsWidth() const;

    QString m_words;
    QStringList m_keys;
};

} // namespace quillfen
