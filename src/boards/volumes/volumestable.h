// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTableView>
#include <QVariantAnimation>

#include <cstdint>
#include <functional>
#include <optional>

namespace quillfen {

class VolumesTableModel;

/// The table of volumes: one selected row, columns that follow the width, rows of one height. It draws what is visible,
/// so the length of the list does not matter.
class VolumesTable final : public QTableView {
    Q_OBJECT

public:
    /// Where a list is scrolled to: the volume at the top edge, and how far it is cut off there.
    struct Place {
        std::optional<std::int64_t> volume;
        int row = -1;
        int cut = 0;
    };

    /// Shows `rows` and owns it.
    explicit VolumesTable(VolumesTableModel *rows, QWidget *parent = nullptr);

    [[nodiscard]] const VolumesTableModel &rows() const noexcept { return *m_rows; }
    [[nodiscard]] bool isNarrow() const noexcept { return m_narrow; }
    [[nodiscard]] bool isSelected(int row) const noexcept { return row == m_selectedRow; }
    /// The row under the pointer, the row with the focus ring; -1 for none.
    [[nodiscard]] int hoveredRow() const noexcept { return m_hoveredRow; }
    [[nodiscard]] int ringedRow() const;

    /// How much of the fill under the pointer has come up, 0 to 1.
    [[nodiscard]] float hoverShare() const { return m_hoverFade.currentValue().toFloat(); }

    /// The height at which nothing is left to scroll.
    [[nodiscard]] int fullHeight() const;
    /// Header and `count` rows.
    [[nodiscard]] static int heightOf(int count);

    [[nodiscard]] Place place() const;
    /// Scrolls back to a place; stays where it is when that volume is no longer shown.
    void returnTo(const Place &place);
    void returnToTop();
    /// Runs a change of the rows without taking what it does to the selection for the user's choice.
    void changeRows(const std::function<void()> &change);
    /// Marks the row of a volume, or none. Does not scroll.
    void mark(std::optional<std::int64_t> volume);
    /// Scrolls as little as is needed to show the selected row.
    void showSelected();

    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void volumeChosen(qint64 id);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index, const QEvent *event) const override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    void keyboardSearch(const QString &search) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void layOutColumns();
    void hover(int row);
    void updateRow(int row);

    VolumesTableModel *m_rows;
    bool m_narrow = false;
    bool m_changing = false;
    int m_selectedRow = -1;
    int m_hoveredRow = -1;
    QVariantAnimation m_hoverFade;
};

} // namespace quillfen
