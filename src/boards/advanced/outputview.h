// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "outputrows.h"

#include <QAbstractScrollArea>

#include <algorithm>
#include <memory>

namespace quillfen {

/// Shows a text of any size: lays out the rows that are visible and no others. Long lines wrap. The text can be walked
/// through, selected and copied by keyboard and pointer.
class OutputView final : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit OutputView(const QString &accessibleName, QWidget *parent = nullptr);

    [[nodiscard]] const std::shared_ptr<const OutputText> &text() const noexcept { return m_rows.text(); }
    /// Shows another text from its beginning; the same one again changes nothing.
    void setText(std::shared_ptr<const OutputText> text);

    /// Where the cursor stands; the selection lies between it and the anchor.
    [[nodiscard]] std::size_t cursor() const noexcept { return m_cursor; }
    [[nodiscard]] std::size_t selectionBegin() const noexcept { return std::min(m_anchor, m_cursor); }
    [[nodiscard]] std::size_t selectionEnd() const noexcept { return std::max(m_anchor, m_cursor); }
    [[nodiscard]] bool hasSelection() const noexcept { return m_anchor != m_cursor; }
    /// Selects, and scrolls to where it can be seen.
    void select(std::size_t begin, std::size_t end);
    void selectAll();
    /// Puts the selection, or the whole text, on the clipboard. A large one arrives there a little later.
    void copySelection() const;
    void copyAll() const;

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void layOut();
    void paintRow(QPainter &painter, const OutputRows::Row &row, int top, bool hasCursor) const;
    [[nodiscard]] std::size_t offsetAt(const QPointF &position) const;
    [[nodiscard]] int visibleRows() const;
    void moveCursor(std::size_t offset, bool selecting);
    void reveal(std::size_t offset);
    void tellVisible();
    void copy(std::size_t begin, std::size_t end) const;

    OutputRows m_rows;
    std::size_t m_anchor = 0;
    std::size_t m_cursor = 0;
};

} // namespace quillfen
