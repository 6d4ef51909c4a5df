// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "runninglist.h"

#include "state/format.h"
#include "ui/layout.h"

#include <algorithm>
#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

RunningList::RunningList(std::shared_ptr<AppState> state, std::function<bool(const RunningCall &)> wanted,
                         QWidget *parent)
    : QWidget(parent), m_state(std::move(state)), m_wanted(std::move(wanted)), m_layout(column({})), m_rows(m_layout),
      m_observer(
          {&m_state->activity.running}, [this] { render(); }, m_state->timing().frame)
{
    setLayout(m_layout);
    connect(&m_clock, &QTimer::timeout, this, &RunningList::render);
    m_clock.setInterval(1s);
    render();
}

void RunningList::render()
{
    QList<RunningCall> shown;
    std::ranges::copy_if(m_state->activity.running(), std::back_inserter(shown), m_wanted);
    m_rows.sync(
        shown, [](const RunningCall &operation) { return operation.id; },
        [](const RunningCall &) { return new RunningRow; },
        [](RunningRow *row, const RunningCall &operation) {
            const QString since = tr("since %1 · %2").arg(timeOfDay(operation.since), elapsed(operation.since));
            row->setOperation(operation.title, since, operation.lastLine);
        });
    setVisible(!shown.isEmpty());
}

// The time is counted only where somebody can see it.
void RunningList::showEvent(QShowEvent *event)
{
    render();
    m_clock.start();
    QWidget::showEvent(event);
}

void RunningList::hideEvent(QHideEvent *event)
{
    m_clock.stop();
    QWidget::hideEvent(event);
}

} // namespace quillfen
