// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/keymap.h"

#include "shell/window/platform.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace quillfen {

namespace {

struct KeyMap {
    Q_DECLARE_TR_FUNCTIONS(KeyMap)
};

/// The table while it is written, group by group.
class Table final {
public:
    explicit Table(KeyStyle style) : m_style(style) {}

    void begin(KeyGroup group) { m_group = group; }
    void add(KeyAction action, const QString &words, QList<QKeySequence> keys = {})
    {
        m_entries.push_back({action, m_group, words, std::move(keys)});
    }
    /// With keys of its own on macOS.
    void add(KeyAction action, const QString &words, const QList<QKeySequence> &usual,
             const QList<QKeySequence> &onMacOS)
    {
        add(action, words, m_style == KeyStyle::MacOS ? onMacOS : usual);
    }

    [[nodiscard]] std::vector<KeyEntry> take() { return std::move(m_entries); }

private:
    KeyStyle m_style;
    KeyGroup m_group = KeyGroup::GoTo;
    std::vector<KeyEntry> m_entries;
};

// Qt's "Ctrl" is the Command key on macOS.
QKeySequence withCtrl(Qt::Key key)
{
    return Qt::CTRL | key;
}

QKeySequence withShift(Qt::Key key)
{
    return Qt::SHIFT | key;
}

void addPlaces(Table &table)
{
    table.begin(KeyGroup::GoTo);
    for (const Section section : allSections) {
        const int number = static_cast<int>(section);
        table.add(static_cast<KeyAction>(number), displayTitle(section), {withCtrl(Qt::Key(Qt::Key_1 + number))});
    }
}

void addBoards(Table &table)
{
    table.begin(KeyGroup::Volumes);
    table.add(KeyAction::NewVolume, KeyMap::tr("New volume"), {withCtrl(Qt::Key_N)});
    table.add(KeyAction::SizeByOne, KeyMap::tr("Size by 1 GB"), {Qt::Key_Left, Qt::Key_Right});
    table.add(KeyAction::SizeByTen, KeyMap::tr("Size by 10 GB"), {Qt::Key_PageDown, Qt::Key_PageUp});

    table.begin(KeyGroup::TimeLine);
    table.add(KeyAction::TimeBySecond, KeyMap::tr("One second"), {Qt::Key_Left, Qt::Key_Right});
    table.add(KeyAction::TimeByMinute, KeyMap::tr("One minute"), {withShift(Qt::Key_Left), withShift(Qt::Key_Right)});
    table.add(KeyAction::TimeByHour, KeyMap::tr("One hour"), {Qt::Key_PageUp, Qt::Key_PageDown});
    table.add(KeyAction::TimeToEdge, KeyMap::tr("Oldest, newest"), {Qt::Key_Home, Qt::Key_End});

    table.begin(KeyGroup::Advanced);
    table.add(KeyAction::RunOperation, KeyMap::tr("Run, from the editor"), {withCtrl(Qt::Key_Enter)},
              {withCtrl(Qt::Key_Return)});
    table.add(KeyAction::NextMatch, KeyMap::tr("Next match in the output"), {Qt::Key_F3});
    table.add(KeyAction::PreviousMatch, KeyMap::tr("Previous match"), {withShift(Qt::Key_F3)});
}

void addEverywhere(Table &table)
{
    table.begin(KeyGroup::Everywhere);
    table.add(KeyAction::Search, KeyMap::tr("Search"), {withCtrl(Qt::Key_F)});
    table.add(KeyAction::ClearSearch, KeyMap::tr("Clear the search"), {Qt::Key_Escape});
    table.add(KeyAction::Refresh, KeyMap::tr("Refresh"), {Qt::Key_F5}, {withCtrl(Qt::Key_R), Qt::Key_F5});
    table.add(KeyAction::NextControl, KeyMap::tr("Next, previous control"), {Qt::Key_Tab, withShift(Qt::Key_Tab)});
    table.add(KeyAction::PressButton, KeyMap::tr("Press the focused button"), {Qt::Key_Space, Qt::Key_Enter},
              {Qt::Key_Space, Qt::Key_Return});
    table.add(KeyAction::ShowActivity, KeyMap::tr("Activity"), {Qt::CTRL | Qt::SHIFT | Qt::Key_A});
    table.add(KeyAction::ShowShortcuts, KeyMap::tr("Keyboard shortcuts"), {withCtrl(Qt::Key_Slash), Qt::Key_F1});
    table.add(KeyAction::Minimise, KeyMap::tr("Minimise"), {}, {withCtrl(Qt::Key_M)});
    table.add(KeyAction::CloseWindow, KeyMap::tr("Close the window"), {withCtrl(Qt::Key_W)});
    table.add(KeyAction::Quit, KeyMap::tr("Quit Quillfen"), {withCtrl(Qt::Key_Q)});
    table.add(KeyAction::About, KeyMap::tr("About Quillfen"));
}

void addControls(Table &table)
{
    table.begin(KeyGroup::Lists);
    table.add(KeyAction::StepInList, KeyMap::tr("Previous, next row"), {Qt::Key_Up, Qt::Key_Down});
    table.add(KeyAction::PageInList, KeyMap::tr("One page"), {Qt::Key_PageUp, Qt::Key_PageDown});
    table.add(KeyAction::EndOfList, KeyMap::tr("First, last row"), {Qt::Key_Home, Qt::Key_End});
    table.add(KeyAction::StepInChoices, KeyMap::tr("Previous, next choice"), {Qt::Key_Left, Qt::Key_Right});
    table.add(KeyAction::Switch, KeyMap::tr("Turn on or off, choose"), {Qt::Key_Space});
    table.add(KeyAction::OpenPicker, KeyMap::tr("Open a picker"), {Qt::ALT | Qt::Key_Down, Qt::Key_F4},
              {Qt::ALT | Qt::Key_Down});

    table.begin(KeyGroup::Dialogs);
    table.add(KeyAction::PressDefault, KeyMap::tr("Press the default button"), {Qt::Key_Enter}, {Qt::Key_Return});
    table.add(KeyAction::Cancel, KeyMap::tr("Cancel, close a sheet"), {Qt::Key_Escape});
}

} // namespace

std::vector<KeyEntry> keyMap(KeyStyle style)
{
    Table table(style);
    addPlaces(table);
    addBoards(table);
    addEverywhere(table);
    addControls(table);
    return table.take();
}

std::vector<KeyEntry> keyMap()
{
    return keyMap(platform::keyStyle());
}

std::vector<KeyEntry> shownKeys(bool isOperator)
{
    std::vector<KeyEntry> entries = keyMap();
    std::erase_if(entries, [isOperator](const KeyEntry &entry) {
        return entry.keys.isEmpty() || (entry.action == KeyAction::GoToOperator && !isOperator);
    });
    return entries;
}

QList<QKeySequence> keysOf(KeyAction action)
{
    const std::vector<KeyEntry> entries = keyMap();
    const auto found = std::ranges::find(entries, action, &KeyEntry::action);
    return found == entries.end() ? QList<QKeySequence>() : found->keys;
}

std::optional<Section> sectionOf(KeyAction action)
{
    const auto number = static_cast<std::size_t>(action);
    return number < allSections.size() ? std::optional(allSections.at(number)) : std::nullopt;
}

QString groupTitle(KeyGroup group)
{
    switch (group) {
    case KeyGroup::GoTo:
        break;
    case KeyGroup::Volumes:
        return KeyMap::tr("Volumes");
    case KeyGroup::TimeLine:
        return KeyMap::tr("Timeline");
    case KeyGroup::Advanced:
        return KeyMap::tr("Advanced");
    case KeyGroup::Everywhere:
        return KeyMap::tr("Everywhere");
    case KeyGroup::Lists:
        return KeyMap::tr("Lists and choices");
    case KeyGroup::Dialogs:
        return KeyMap::tr("Dialogs");
    }
    return KeyMap::tr("Go to");
}

QString spokenLine(const KeyEntry &entry)
{
    QStringList parts;
    for (const QKeySequence &keys : entry.keys) {
        parts.append(keys.toString(QKeySequence::NativeText));
    }
    return (parts << entry.words).join(QStringLiteral(", "));
}

} // namespace quillfen
