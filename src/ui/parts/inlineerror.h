// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

namespace quillfen {

class AgentLabel;

/// The reason why a form or a list is not right, under the form or above the list. Wraps over a few lines at most, so
/// that it never pushes buttons out of view; hidden while empty; announced when its text changes.
class InlineError final : public QWidget {
    Q_OBJECT

public:
    explicit InlineError(QWidget *parent = nullptr);

    [[nodiscard]] QString text() const;
    void setText(const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    AgentLabel *m_text;
};

} // namespace quillfen
