// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/published.h"

#include <QWidget>

#include <memory>

namespace quillfen {

class AgentLabel;
class AppState;

/// The screen while the agent is away: that the program waits, why the last attempt failed, and how to restart the
/// agent by hand.
class AgentDownView final : public QWidget {
    Q_OBJECT

public:
    explicit AgentDownView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);

private:
    void render();

    std::shared_ptr<AppState> m_state;
    AgentLabel *m_error;
    Observer m_observer;
};

} // namespace quillfen
