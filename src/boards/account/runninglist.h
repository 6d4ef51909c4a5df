// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"
#include "ui/lists/rowlist.h"
#include "ui/lists/runningrow.h"

#include <QTimer>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <memory>

namespace quillfen {

/// The operations that run, of those that `wanted` accepts, with the time they have taken so far. Hidden while there
/// are none.
class RunningList final : public QWidget {
    Q_OBJECT

public:
    RunningList(std::shared_ptr<AppState> state, std::function<bool(const RunningCall &)> wanted, QWidget *parent);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void render();

    std::shared_ptr<AppState> m_state;
    std::function<bool(const RunningCall &)> m_wanted;
    QBoxLayout *m_layout;
    RowList<std::uint64_t, RunningRow> m_rows;
    QTimer m_clock;
    Observer m_observer;
};

} // namespace quillfen
