// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/section.h"
#include "state/published.h"

#include <QWidget>

#include <memory>

namespace quillfen {

class AppState;
class BoardFrame;

/// What stands under the title of a section.
[[nodiscard]] QString sectionLine(Section section, const AppState &state);

/// A section as its title and the line under it.
class TitleBoard final : public QWidget {
    Q_OBJECT

public:
    TitleBoard(Section section, std::shared_ptr<AppState> state, QWidget *parent = nullptr);

private:
    void render();

    std::shared_ptr<AppState> m_state;
    Section m_section;
    BoardFrame *m_frame;
    Observer m_observer;
};

} // namespace quillfen
