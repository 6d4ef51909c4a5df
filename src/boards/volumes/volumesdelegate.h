// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "volumerows.h"

#include <QHeaderView>
#include <QStyledItemDelegate>

namespace quillfen {

class VolumesTable;

/// Paints the cells of the volumes table, each with its slice of what belongs to the whole row: fill, selection mark,
/// focus ring, hairline. Shows an elided text whole in a tooltip, and only then. Owned by the table.
class VolumesDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit VolumesDelegate(VolumesTable *table);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

private:
    void paintRow(QPainter &painter, const QRect &cell, int row) const;
    void paintCell(QPainter &painter, const QRect &cell, int row, VolumeColumn column) const;
    [[nodiscard]] bool isPicture(const VolumeRow &row, VolumeColumn column) const;
    [[nodiscard]] QColor textColour(const VolumeRow &row, VolumeColumn column, int rowNumber) const;

    const VolumesTable &m_table;
};

/// The captions above the columns; where the Encryption column is narrow, a key stands for its caption. A caption that
/// is not written out is shown whole in a tooltip.
class VolumesHeader final : public QHeaderView {
    Q_OBJECT

public:
    explicit VolumesHeader(VolumesTable *table);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintSection(QPainter *painter, const QRect &rect, int section) const override;
    [[nodiscard]] QSize sectionSizeFromContents(int section) const override;
    bool viewportEvent(QEvent *event) override;

private:
    [[nodiscard]] bool isPicture(VolumeColumn column) const;
    [[nodiscard]] QString caption(int section, int width) const;
    void showCaption(const QHelpEvent &event);

    const VolumesTable &m_table;
};

} // namespace quillfen
