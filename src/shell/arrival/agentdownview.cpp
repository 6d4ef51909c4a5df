// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/arrival/agentdownview.h"

#include "shell/arrival/commandwell.h"
#include "shell/window/platform.h"
#include "state/appstate.h"
#include "ui/accessible.h"
#include "ui/controls/spinner.h"
#include "ui/layout.h"
#include "ui/parts/brand.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

namespace quillfen {

namespace {

constexpr int columnWidth = 560;
constexpr int lineWidth = 460;
constexpr int errorLines = 3;

} // namespace

AgentDownView::AgentDownView(std::shared_ptr<AppState> state, QWidget *parent)
    : QWidget(parent), m_state(std::move(state)), m_error(new AgentLabel({}, Type::Body, Theme::text)),
      m_observer({&m_state->agentError}, [this] { render(); })
{
    auto *spinner = new Spinner(20);
    spinner->setColour(Theme::ok);
    setAccessible(spinner, QAccessible::ProgressBar, tr("Reconnecting"));
    auto *title = new Label(tr("Waiting for the Quillfen agent"), Type::Title, Theme::heading);
    m_error->setAlignment(Qt::AlignCenter);
    m_error->setMaximumLines(errorLines);
    auto *line = new Label(tr("It starts with your login and restarts after an upgrade; the app reconnects every two "
                              "seconds."),
                           Type::Body, Theme::heading);
    line->setAlignment(Qt::AlignCenter);
    line->setWrap(lineWidth);
    line->setMinimumWidth(line->maximumWidth());

    auto *wells = column({}, 8);
    const auto addWell = [&](const QString &command, const QString &copyName) {
        auto *well = new CommandWell(command, copyName);
        connect(well, &CommandWell::copied, this, [this] { m_state->show(tr("Copied.")); });
        wells->addWidget(well);
    };
    addWell(QStringLiteral("launchctl kickstart -k gui/$(id -u)/io.quillfen.agent"), tr("Copy the command"));
    if (const std::optional<QString> command = platform::serviceRestartCommand()) {
        addWell(*command, tr("Copy the command for systemd"));
    }

    auto *middle = new QWidget;
    middle->setFixedWidth(scaled(columnWidth));
    middle->setLayout(
        column({Item{new BrandMark(56), 0, Qt::AlignHCenter}, Space{24}, Item{spinner, 0, Qt::AlignHCenter}, Space{16},
                Item{title, 0, Qt::AlignHCenter}, Space{8}, m_error, Space{12}, row({Stretch{}, line, Stretch{}}, 0),
                Space{24}, row({Stretch{}, wells, Stretch{}})}));
    setLayout(column({Stretch{}, row({Stretch{}, middle, Stretch{}}, 0), Stretch{}}));

    render();
}

void AgentDownView::render()
{
    const QString error = m_state->agentError().value_or(QString());
    m_error->setText(error);
    m_error->setVisible(!error.isEmpty());
}

} // namespace quillfen
