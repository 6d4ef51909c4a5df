// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/window/panelwindow.h"

namespace quillfen {

/// Tells about the program: its name, its version and the agent's, and where to read more.
class AboutPanel final : public PanelWindow {
    Q_OBJECT

public:
    /// `version` is "agent " and the agent's version, which is empty while the agent has not said it.
    AboutPanel(const QString &applicationVersion, const QString &version, QWidget *parent = nullptr);
};

} // namespace quillfen
