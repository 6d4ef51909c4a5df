// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/activity/activitymodel.h"
#include "shell/window/panelwindow.h"
#include "state/published.h"

#include <QTimer>

#include <memory>
#include <variant>

namespace quillfen {

class ActivityDetail;
class ActivityList;
class AppState;
class Button;
class EmptyState;
class Hairline;
class Label;
class SearchField;
class Toast;
class Toggle;

/// What was said and done in this run of the program, the newest first, with what runs on top. One of it can be looked
/// at as a whole; one or all can be copied.
class ActivityWindow final : public PanelWindow {
    Q_OBJECT

public:
    explicit ActivityWindow(std::shared_ptr<AppState> state, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    /// What is looked at, as it was: it stays readable when the list has let it go.
    using Chosen = std::variant<std::monostate, RunningCall, ActivityEntry>;

    [[nodiscard]] QWidget *createHead();
    [[nodiscard]] QWidget *createFoot();
    void render();
    void filter();
    void choose(const ActivityModel::Key &key);
    void followChosen();
    void showChosen();
    void renderClock();
    void copyChosen();
    void copyAll();
    void confirm(const QString &words);

    std::shared_ptr<AppState> m_state;
    SearchField *m_search;
    Toggle *m_problemsOnly;
    ActivityList *m_list;
    EmptyState *m_empty;
    Hairline *m_line;
    ActivityDetail *m_detail;
    Label *m_count;
    Button *m_copyAll;
    Toast *m_toast;
    Chosen m_chosen;
    QTimer m_clock{this};
    QTimer m_confirmation{this};
    Observer m_observer;
};

} // namespace quillfen
