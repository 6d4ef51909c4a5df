// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jsontext.h"

#include <QWidget>

#include <optional>

class QPlainTextEdit;

namespace quillfen {

/// A few lines of JSON to type, with a mark where they are none. It only tells: what is typed is the user's business.
class JsonEditor final : public QWidget {
    Q_OBJECT

public:
    explicit JsonEditor(const QString &accessibleName, QWidget *parent = nullptr);

    /// As it was typed, hard spaces included.
    [[nodiscard]] QString text() const;
    /// Puts another text in; the same one leaves cursor and undo steps alone.
    void setText(const QString &text);
    [[nodiscard]] const std::optional<JsonProblem> &problem() const noexcept { return m_problem; }

Q_SIGNALS:
    /// By the user's hand.
    void edited();
    /// Ctrl+Enter; Enter alone begins a line.
    void submitted();
    /// `problem` is another one, or gone.
    void problemChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void check();
    void mark();

    QPlainTextEdit *m_edit;
    std::optional<JsonProblem> m_problem;
};

} // namespace quillfen
