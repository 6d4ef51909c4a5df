// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/process/commandline.h"

#include "desktop/clipboard.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int narrowest = 80;
constexpr QChar ellipsis = u'…';

} // namespace

CommandLine::CommandLine(const QString &command, QWidget *parent) : QLabel(parent), m_command(command)
{
    setTextFormat(Qt::PlainText);
    setFont(quillfen::font(Type::Mono));
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, Theme::heading);
    setPalette(colours);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFocusPolicy(Qt::ClickFocus);
    setAccessibleName(command);
    setText(command);
}

QSize CommandLine::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(m_command) + 1, lineHeight(Type::Mono)};
}

QSize CommandLine::minimumSizeHint() const
{
    return {std::min(scaled(narrowest), sizeHint().width()), lineHeight(Type::Mono)};
}

void CommandLine::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    const QString line = fontMetrics().elidedText(m_command, Qt::ElideRight, width());
    if (line != text()) {
        setText(line);
        setToolTip(line == m_command ? QString() : m_command);
    }
}

void CommandLine::mouseReleaseEvent(QMouseEvent *event)
{
    QLabel::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && !hasSelectedText() && rect().contains(event->position().toPoint())) {
        Q_EMIT clicked();
    }
}

void CommandLine::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy) && hasSelectedText()) {
        copyText(selectedCommand());
    } else {
        QLabel::keyPressEvent(event);
    }
}

void CommandLine::contextMenuEvent(QContextMenuEvent *event)
{
    auto *const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const QString copied = hasSelectedText() ? selectedCommand() : m_command;
    connect(menu->addAction(tr("Copy")), &QAction::triggered, this, [copied] { copyText(copied); });
    menu->popup(event->globalPos());
}

/// What stands behind the ellipsis cannot be selected alone, so that the whole line counts as selected with it.
QString CommandLine::selectedCommand() const
{
    const bool whole = text() != m_command && selectedText().contains(ellipsis);
    return whole ? m_command : selectedText();
}

} // namespace quillfen
