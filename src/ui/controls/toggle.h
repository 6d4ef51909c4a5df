// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractButton>

namespace quillfen {

class AgentLabel;

/// A switch at the right of its text, with an optional caption under the text. The whole row is clickable. Without a
/// text it is the bare switch and wants an accessible name.
class Toggle final : public QAbstractButton {
    Q_OBJECT

public:
    explicit Toggle(const QString &text, const QString &caption = {}, QWidget *parent = nullptr);

    void setCaption(const QString &caption);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private:
    void showCaption();
    [[nodiscard]] int captionWidth(int width) const;
    [[nodiscard]] int textWidth() const;

    AgentLabel *m_caption;
};

} // namespace quillfen
