// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QBoxLayout;
class QButtonGroup;

namespace quillfen {

/// A choice between a few words side by side. Arrow keys move the choice; Tab reaches the chosen part only.
class Segmented final : public QWidget {
    Q_OBJECT

public:
    explicit Segmented(const QString &accessibleName, QWidget *parent = nullptr);

    /// 32, or 28 inside a card.
    void setControlHeight(int height);
    /// Appends a part and returns its index; the first one becomes the choice.
    int addPart(const QString &text);
    [[nodiscard]] int count() const;
    /// The chosen part, -1 while there is none.
    [[nodiscard]] int currentIndex() const;
    /// Indices outside the parts are ignored.
    void setCurrentIndex(int index);

Q_SIGNALS:
    /// Another part has been chosen, by the user or by `setCurrentIndex`.
    void currentChanged(int index);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QBoxLayout *m_layout;
    QButtonGroup *m_parts;
};

} // namespace quillfen
