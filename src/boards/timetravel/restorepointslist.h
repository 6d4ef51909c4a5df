// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/restorepoints.h"

#include <QAbstractScrollArea>

#include <cstddef>
#include <vector>

namespace quillfen {

class RestorePointRow;

/// The restore points below one another, each with its moment, its label and "Open": the one row of the card
/// "Restore points" while there are any. Seven rows high at most; the rest is scrolled to. It begins at its end, where
/// the newest are.
///
/// Keeps row widgets for what is visible only and gives them other points to show while it scrolls, so that a million
/// points cost what eight do. The buttons are one stop of Tab; Up, Down, Page Up, Page Down, Home and End go from row
/// to row, End to the newest.
class RestorePointsList final : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit RestorePointsList(QWidget *parent = nullptr);

    /// Replaces the points and keeps the place: what is on top stays on top, and at the end the list stays at the end.
    /// The same ones again cost nothing.
    void setPoints(const RestorePoints &points);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// "Open" of a point, with its timestamp as the agent wrote it.
    void openRequested(const QString &timestamp);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    [[nodiscard]] int fullHeight() const;
    [[nodiscard]] RestorePointRow *focusedRow() const;
    [[nodiscard]] RestorePointRow *rowAt(std::size_t place) const;
    void returnTo(const QString &timestamp, int cut);
    void fitScrollBar();
    void layOutRows(bool anew = false);
    void show(RestorePointRow *row, std::size_t place, bool anew);
    void moveStop();
    void goTo(std::size_t place);
    [[nodiscard]] bool moveBy(int key);

    RestorePoints m_points;
    std::vector<RestorePointRow *> m_rows; ///< as many as can be visible, and one for a row with focus beyond
    std::size_t m_stop = 0;                ///< the place whose button Tab reaches
};

} // namespace quillfen
