// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QWidget>

namespace quillfen {

/// A horizontal bar whose filled part is `fraction` (0 to 1, clamped) of its width. A part above nothing shows as a dot
/// at least. Assistive technology reads the value text; give it an accessible name where no text stands beside it.
class Bar final : public QWidget {
    Q_OBJECT

public:
    Bar(double fraction, const QColor &track, const QColor &fill, int height = 4, QWidget *parent = nullptr);

    [[nodiscard]] double fraction() const noexcept { return m_fraction; }
    void setFraction(double fraction);
    /// The value in words, "1.3 TB of 2.0 TB".
    void setValueText(const QString &words);
    void setFill(const QColor &fill);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double m_fraction;
    QColor m_track;
    QColor m_fill;
    int m_height;
    QString m_words;
};

} // namespace quillfen
