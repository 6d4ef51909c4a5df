// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/activity/activitymodel.h"

#include <QListView>
#include <QTimer>

#include <functional>

namespace quillfen {

/// The rows of the activity: one may be chosen, by a click or by keys. Paints what is visible. What comes in on top
/// moves nothing that is being read, unless the list stands at its very top.
class ActivityList final : public QListView {
    Q_OBJECT

public:
    explicit ActivityList(const Activity &activity, QWidget *parent = nullptr);

    [[nodiscard]] const ActivityModel &rows() const noexcept { return *m_rows; }
    /// The row with the focus ring; -1 for none. While nothing is chosen it is the one that the first key chooses.
    [[nodiscard]] int ringedRow() const;
    /// Takes over what happened since.
    void sync();
    void setFilter(const QString &search, bool problemsOnly);
    /// Marks what was chosen, where the list has it. Does not scroll.
    void mark(const std::optional<ActivityModel::Key> &key);
    /// Counts the time of what runs.
    void updateRunning();

    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// By the user's hand.
    void chosen(const quillfen::ActivityModel::Key &key);

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void keyboardSearch(const QString &search) override;
    void focusInEvent(QFocusEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void changeRows(const std::function<void()> &change);
    void turnSpinners();

    ActivityModel *m_rows;
    std::optional<ActivityModel::Key> m_marked;
    bool m_changing = false;
    QTimer m_turn{this};
};

} // namespace quillfen
