// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/paint/icons.h"

#include <QWidget>

namespace quillfen {

class AgentLabel;
class Button;

/// What a board shows while it has nothing to show: a picture, one line, and perhaps what to do about it.
class EmptyState final : public QWidget {
    Q_OBJECT

public:
    EmptyState(Icon icon, const QString &line, const QString &buttonText = {}, QWidget *parent = nullptr);

    void setLine(const QString &line);

Q_SIGNALS:
    /// The button has been pressed.
    void activated();

private:
    AgentLabel *m_line;
};

} // namespace quillfen
