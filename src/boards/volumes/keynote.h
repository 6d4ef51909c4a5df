// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QWidget>

#include <memory>

class QTextLayout;

namespace quillfen {

/// The line under a key's title: the key file in fixed width, then what is to be known about it, wrapped as one
/// paragraph. A file name longer than two lines elides in the middle; the whole text is the accessible name.
class KeyNote final : public QWidget {
    Q_OBJECT

public:
    explicit KeyNote(QWidget *parent = nullptr);

    void setText(const QString &file, const QString &note);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    [[nodiscard]] QString shownFile(int width) const;
    /// Sets the paragraph in `width` pixels; returns its height.
    int lay(QTextLayout &layout, const QString &file, int width) const;

    QString m_file; ///< nothing invisible left
    QString m_note;
};

} // namespace quillfen
