// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStyledItemDelegate>

namespace quillfen {

class ActivityList;

/// Paints a row of the activity: when, what, and how it went.
class ActivityDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit ActivityDelegate(ActivityList *list);

    /// The height of every row.
    [[nodiscard]] static int rowHeight();
    /// Where in a row the mark of its outcome stands.
    [[nodiscard]] static QRect markRect(const QRect &row, Qt::LayoutDirection direction);

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

private:
    ActivityList &m_list;
};

} // namespace quillfen
