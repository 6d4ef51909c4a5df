// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

namespace quillfen {

/// What a section of the main window shows. The window's keys reach the board through here.
class Board : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Asks the agent again for what only this board shows; the state that all boards share is read by the window.
    virtual void reload() {}
    /// Puts the cursor into the board's search field, what it holds selected. Nothing where there is none.
    virtual void focusSearch() {}
};

} // namespace quillfen
