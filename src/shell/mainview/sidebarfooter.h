// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/published.h"

#include <QWidget>

#include <memory>

namespace quillfen {

class AgentLabel;
class AppState;
class Bar;
class Label;

/// "Quillfen 1.4.0", with the agent's version where it is another one.
[[nodiscard]] QString versionLine(const QString &appVersion, const QString &agentVersion);

/// How the engine is, in words.
[[nodiscard]] QString engineLine(const AppState &state);

/// "1.3 TB of 2.0 TB".
[[nodiscard]] QString planLine(const AppState &state);

/// The foot of the sidebar: plan, account, version and engine, and the way to the program's other windows.
class SidebarFooter final : public QWidget {
    Q_OBJECT

public:
    explicit SidebarFooter(std::shared_ptr<AppState> state, QWidget *parent = nullptr);

Q_SIGNALS:
    void shortcutsRequested();
    void activityRequested();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void render();
    [[nodiscard]] QWidget *createLinks();

    std::shared_ptr<AppState> m_state;
    QWidget *m_plan;
    AgentLabel *m_planName;
    Label *m_planLine;
    Bar *m_bar;
    QWidget *m_account;
    AgentLabel *m_email;
    AgentLabel *m_version;
    AgentLabel *m_engine;
    Observer m_observer;
};

} // namespace quillfen
