// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/restorepoints.h"
#include "ui/lists/longlist.h"

namespace quillfen {

/// The restore points below one another, each with its moment, its label and "Open": the one row of the card
/// "Restore points" while there are any. Seven rows high at most; the rest is scrolled to. It begins at its end, where
/// the newest are, and is one stop of Tab.
class RestorePointsList final : public LongList, private RowSource {
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

private:
    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] QString rowKey(int row) const override;
    [[nodiscard]] int findRow(const QString &key, int near) const override;
    [[nodiscard]] QWidget *makeRow() override;
    void fillRow(QWidget *widget, int row) override;

    RestorePoints m_points;
};

} // namespace quillfen
