// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/window/keymap.h"
#include "shell/window/panelwindow.h"

#include <vector>

namespace quillfen {

class ScrollArea;

/// Every key and what it does, by groups. The keyboard goes from row to row, so that a screen reader reads them.
class ShortcutsWindow final : public PanelWindow {
    Q_OBJECT

public:
    explicit ShortcutsWindow(std::vector<KeyEntry> entries, QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] QWidget *createGroups(bool sideBySide);
    [[nodiscard]] QWidget *createGroup(KeyGroup group);
    void fit(const QSize &room);
    /// Puts the keyboard on a row, which comes into view.
    void go(int index);
    [[nodiscard]] bool step(int key);

    std::vector<KeyEntry> m_entries;
    std::vector<QWidget *> m_rows;
    ScrollArea *m_scroll;
};

} // namespace quillfen
