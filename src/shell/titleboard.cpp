// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/titleboard.h"

#include "state/appstate.h"
#include "state/format.h"
#include "ui/boardframe.h"
#include "ui/layout.h"

#include <QBoxLayout>

namespace quillfen {

QString sectionLine(Section section, const AppState &state)
{
    switch (section) {
    case Section::Volumes:
        break;
    case Section::TimeTravel:
        return state.volumes().isEmpty() ? TitleBoard::tr("No volumes yet.")
                                         : TitleBoard::tr("Viewing the past · read-only");
    case Section::Policy:
        return TitleBoard::tr("How long each second is kept.");
    case Section::Export:
        return TitleBoard::tr("A full copy of a volume as it is now, yours to keep outside Quillfen.");
    case Section::Account:
        return TitleBoard::tr("%1 allocated to volumes, including locked history").arg(gb(state.allocatedBytes()));
    case Section::Operator:
        return TitleBoard::tr("Hubs · Users · Tokens · Exports");
    case Section::Advanced:
        return TitleBoard::tr("Every operation, as the quill command sees it. Pick one.");
    }
    return {};
}

TitleBoard::TitleBoard(Section section, std::shared_ptr<AppState> state, QWidget *parent)
    : QWidget(parent), m_state(std::move(state)), m_section(section), m_frame(new BoardFrame(displayTitle(section))),
      m_observer({&m_state->volumes, &m_state->account}, [this] { render(); })
{
    setLayout(column({Item{m_frame, 1}}));
    render();
}

void TitleBoard::render()
{
    m_frame->setSubtitle(sectionLine(m_section, *m_state));
}

} // namespace quillfen
