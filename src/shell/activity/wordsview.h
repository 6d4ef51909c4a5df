// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPlainTextEdit>

namespace quillfen {

/// A text to be read and selected, whatever its length: it wraps anywhere, is as high as its lines, four at most, and
/// scrolls beyond. What would be unseen in it is made visible.
class WordsView final : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit WordsView(const QString &accessibleName, QWidget *parent = nullptr);

    /// The same words again change nothing, the selection included.
    void setWords(const QString &words);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] int shownLines() const;

    QString m_words;
    int m_lines = 1; ///< that its height is meant for
};

} // namespace quillfen
