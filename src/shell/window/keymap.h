// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/window/section.h"

#include <QKeySequence>
#include <QList>
#include <QString>

#include <optional>
#include <vector>

namespace quillfen {

/// Everything that keys do. The sections come first, in the order of the sidebar.
enum class KeyAction {
    // What a window does wherever its focus is.
    GoToVolumes,
    GoToTimeTravel,
    GoToPolicy,
    GoToExport,
    GoToAccount,
    GoToOperator,
    GoToAdvanced,
    NewVolume,
    Search,
    Refresh,
    ShowActivity,
    ShowShortcuts,
    Minimise,
    CloseWindow,
    Quit,
    About,
    // What the control with the focus does with its keys, by itself.
    SizeByOne,
    SizeByTen,
    NextControl,
    PressButton,
    ClearSearch,
    StepInList,
    PageInList,
    EndOfList,
    StepInChoices,
    Switch,
    OpenPicker,
    TimeBySecond,
    TimeByMinute,
    TimeByHour,
    TimeToEdge,
    RunOperation,
    NextMatch,
    PreviousMatch,
    PressDefault,
    Cancel,
};

/// Where the shortcuts window lists them.
enum class KeyGroup { GoTo, Volumes, TimeLine, Advanced, Everywhere, Lists, Dialogs };

/// Whose habits the keys follow.
enum class KeyStyle { Linux, MacOS };

struct KeyEntry {
    KeyAction action;
    KeyGroup group;
    QString words;
    QList<QKeySequence> keys; ///< the first is the one that menus show; none where only menus offer it
};

/// The one table of keys, from which shortcuts, menus and the shortcuts window are made.
[[nodiscard]] std::vector<KeyEntry> keyMap(KeyStyle style);
/// In the style of the platform.
[[nodiscard]] std::vector<KeyEntry> keyMap();
/// What there is to show to somebody: only what has keys, and the operators' section to operators.
[[nodiscard]] std::vector<KeyEntry> shownKeys(bool isOperator);

/// Whether windows perform it, and not the control that has the focus.
[[nodiscard]] constexpr bool isCommand(KeyAction action)
{
    return action <= KeyAction::About;
}

[[nodiscard]] QList<QKeySequence> keysOf(KeyAction action);
/// The section that an action goes to; none for every other action.
[[nodiscard]] std::optional<Section> sectionOf(KeyAction action);
[[nodiscard]] QString groupTitle(KeyGroup group);
/// "Ctrl+1, Volumes": the keys as the platform writes them, then what they do.
[[nodiscard]] QString spokenLine(const KeyEntry &entry);

} // namespace quillfen
