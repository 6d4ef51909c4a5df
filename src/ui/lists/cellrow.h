// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/lists/columns.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace quillfen {

class Button;

/// A row of a list: one widget for each column but the last, whose place is at the right edge and belongs to the row's
/// buttons. Rows stand in line because they share their columns; no layout has to be asked about any of them, so that a
/// row costs little to fill anew.
class CellRow : public QWidget {
    Q_OBJECT

public:
    explicit CellRow(std::shared_ptr<const std::vector<Column>> columns, QWidget *parent = nullptr);

    /// Appends the cell of the next column and owns it. Texts take the column's width, other widgets their own.
    void addCell(QWidget *cell);
    /// Appends a button at the right.
    void addButton(Button *button);
    /// Shows a button or takes it away. One that goes while the keyboard is on it leaves that to the row itself: left
    /// to the window, it would go to the next button, and the next Enter might delete something.
    void setButtonVisible(Button *button, bool visible);
    /// Says which row this is: the buttons carry it in their names, and the row is read as `name` and then `columns`.
    void setRowName(const QString &name, const QString &columns);

protected:
    /// Brings cells and buttons to their places; call after one was shown, hidden or changed its width.
    void arrange();
    /// The room of each cell in `inner`, the row without its margins.
    [[nodiscard]] virtual std::vector<QRect> rooms(const QRect &inner) const;
    void resizeEvent(QResizeEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    std::shared_ptr<const std::vector<Column>> m_columns;
    std::vector<QWidget *> m_cells;
    std::vector<Button *> m_buttons;
};

/// The margin of rows at the left and right.
inline constexpr int cellRowMargin = 16;

} // namespace quillfen
