// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractButton>

namespace quillfen {

class Pill;

/// A named policy to choose: a radio, the name with an optional tag, and a description over as many lines as it needs.
/// Rows with the same parent exclude each other; none of them may be the choice.
class PresetRow final : public QAbstractButton {
    Q_OBJECT

public:
    PresetRow(const QString &name, const QString &description, const QString &tag = {}, QWidget *parent = nullptr);

    /// Unlike `setChecked`, this takes the choice from the last one as well.
    void setChosen(bool chosen);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void paintChosen(QPainter &painter);
    void placeTag();

    QString m_name;
    QString m_description;
    Pill *m_tag = nullptr;
};

} // namespace quillfen
