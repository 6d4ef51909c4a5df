// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/timetravel/timetravelmodel.h"
#include "state/notifications.h"
#include "ui/parts/board.h"

#include <QTimer>

#include <cstdint>
#include <memory>
#include <vector>

class QBoxLayout;

namespace quillfen {

class BoardFrame;
class Button;
class EmptyState;
class Picker;

/// The Time travel board: one second of a volume's past, to look at or to make a volume of.
class TimeTravelView final : public Board {
    Q_OBJECT

public:
    explicit TimeTravelView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);
    ~TimeTravelView() override;

    void reload() override;
    /// Shows the volume that a wish to navigate names. The board hears of such wishes by itself, but for the one that
    /// it was created for.
    void navigate(const json::object &wish);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void build();
    [[nodiscard]] QWidget *head();
    void pick(int index);
    void loadSoon();
    void render();
    void renderPicker();

    std::shared_ptr<AppState> m_state;
    std::shared_ptr<TimeTravelModel> m_model;
    BoardFrame *m_frame;
    Picker *m_volumes = nullptr;
    Button *m_backToNow = nullptr;
    EmptyState *m_empty = nullptr;
    QWidget *m_cards = nullptr;
    std::vector<std::int64_t> m_ids; ///< of the volumes, ascending, as of the last render
    QStringList m_names;             ///< the same volumes' in the list's order
    QTimer m_loadSoon;               ///< several reasons to load within a turn of the loop become one load
    Notifications::Subscription m_navigation;
    Observer m_observer;
    Observer m_copies;
};

} // namespace quillfen
