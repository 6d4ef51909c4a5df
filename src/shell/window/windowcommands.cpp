// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/windowcommands.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>
#include <QWidget>

#include <optional>
#include <vector>

namespace quillfen {

namespace {

/// A line between two groups of commands.
constexpr auto separator = std::nullopt;
using Items = std::vector<std::optional<KeyAction>>;

/// Where macOS wants it; everything else stays in the menu that it is put into.
QAction::MenuRole roleOf(KeyAction command)
{
    switch (command) {
    case KeyAction::About:
        return QAction::AboutRole;
    case KeyAction::Quit:
        return QAction::QuitRole;
    default:
        return QAction::NoRole;
    }
}

/// A greyed action's keys are dead, and nobody would wake them when the command comes to mean something again.
void greyWhileOpen(QMenu &menu, const WindowCommands &commands, const Items &items, const Offers &offers)
{
    const auto forEach = [&commands, items](const Offers &enabled) {
        for (const std::optional<KeyAction> &item : items) {
            if (item) {
                commands.action(*item)->setEnabled(enabled(*item));
            }
        }
    };
    QObject::connect(&menu, &QMenu::aboutToShow, &commands, [forEach, offers] { forEach(offers); });
    QObject::connect(
        &menu, &QMenu::aboutToHide, &commands, [forEach] { forEach([](KeyAction) { return true; }); },
        Qt::QueuedConnection); // what was chosen is on its way
}

Items sectionItems()
{
    Items items;
    for (const Section section : allSections) {
        items.emplace_back(static_cast<KeyAction>(section));
    }
    return items;
}

struct Menus {
    Q_DECLARE_TR_FUNCTIONS(Menus)
};

} // namespace

WindowCommands::WindowCommands(QWidget *window) : QObject(window)
{
    for (const KeyEntry &entry : keyMap()) {
        if (!isCommand(entry.action)) {
            continue;
        }
        // "&" is a sign of the words, not a mnemonic.
        auto *const action = new QAction(QString(entry.words).replace(u'&', QStringLiteral("&&")), this);
        action->setShortcuts(entry.keys);
        action->setAutoRepeat(false); // a held key asks once
        action->setMenuRole(roleOf(entry.action));
        connect(action, &QAction::triggered, this, [this, command = entry.action] { Q_EMIT chosen(command); });
        window->addAction(action);
        m_actions.emplace(entry.action, action);
    }
}

void fillMenuBar(QMenuBar &bar, const WindowCommands &commands, const Offers &offers)
{
    const auto addMenu = [&](const QString &title, const Items &items) {
        QMenu *const menu = bar.addMenu(title);
        for (const std::optional<KeyAction> &item : items) {
            if (item) {
                menu->addAction(commands.action(*item));
            } else {
                menu->addSeparator();
            }
        }
        greyWhileOpen(*menu, commands, items, offers);
    };
    addMenu(Menus::tr("File"), {KeyAction::NewVolume, separator, KeyAction::CloseWindow, KeyAction::Quit});
    addMenu(Menus::tr("Go"), sectionItems());
    addMenu(Menus::tr("View"), {KeyAction::Search, KeyAction::Refresh});
    addMenu(Menus::tr("Window"), {KeyAction::Minimise, separator, KeyAction::ShowActivity});
    addMenu(Menus::tr("Help"), {KeyAction::ShowShortcuts, separator, KeyAction::About});
}

} // namespace quillfen
