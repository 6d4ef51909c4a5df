// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/searchfield.h"

#include <QKeyEvent>

namespace quillfen {

namespace {

constexpr int fieldWidth = 224;

} // namespace

SearchField::SearchField(const QString &placeholder, QWidget *parent) : TextField(placeholder, placeholder, 32, parent)
{
    setLeadingIcon(Icon::Search);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

QSize SearchField::sizeHint() const
{
    return {fieldWidth, height()};
}

bool SearchField::event(QEvent *event)
{
    // Before Esc becomes anybody's shortcut, it has something to do here.
    if (event->type() == QEvent::ShortcutOverride && !text().isEmpty() &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return TextField::event(event);
}

void SearchField::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape) {
        TextField::keyPressEvent(event);
        return;
    }
    event->setAccepted(!text().isEmpty());
    clear();
}

} // namespace quillfen
