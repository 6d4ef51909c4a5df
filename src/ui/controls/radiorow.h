// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/text/type.h"

#include <QAbstractButton>

namespace quillfen {

/// A choice as a row: the radio, a title, an optional caption under it and an optional value at the right, all of which
/// may come from the agent. Rows with the same parent exclude each other; arrow keys move among them.
class RadioRow final : public QAbstractButton {
    Q_OBJECT

public:
    explicit RadioRow(const QString &title, const QString &caption = {}, QWidget *parent = nullptr);

    void setTitle(const QString &title);
    void setCaption(const QString &caption);
    void setValue(const QString &value);
    /// The type of the title while it is not chosen: `Type::Body` unless told. The chosen title is semibold.
    void setTitleType(Type type);
    /// 16 at both sides in a card, 0 in a form.
    void setSidePadding(int padding);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    void describe();
    [[nodiscard]] QRect textRect() const;

    QString m_title;
    QString m_caption;
    QString m_value;
    Type m_titleType = Type::Body;
    int m_padding = 16;
};

} // namespace quillfen
