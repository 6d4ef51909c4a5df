// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/arrival/commandwell.h"

#include "desktop/clipboard.h"
#include "shell/process/commandline.h"
#include "ui/controls/iconbutton.h"
#include "ui/layout.h"
#include "ui/paint/paint.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPainter>

namespace quillfen {

CommandWell::CommandWell(const QString &command, const QString &copyName, QWidget *parent) : QWidget(parent)
{
    auto *line = new CommandLine(command);
    auto *copy = new IconButton(Icon::Copy, copyName);
    setLayout(row({line, Stretch{}, copy}, 8, QMargins(16, 6, 6, 6)));

    const auto copyWhole = [this, command] {
        copyText(command);
        Q_EMIT copied();
    };
    connect(copy, &QAbstractButton::clicked, this, copyWhole);
    connect(line, &CommandLine::clicked, this, copyWhole);
}

void CommandWell::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintSurface(painter, rect(), 6.0, Theme::panel2, Theme::line);
}

} // namespace quillfen
