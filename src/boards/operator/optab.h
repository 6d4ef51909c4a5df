// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

namespace quillfen {

/// What a tab of the operator console shows.
class OpTab : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Asks the agent for the tab's lists.
    virtual void load() = 0;
    /// Puts the cursor into the tab's filter. Nothing where there is none.
    virtual void focusSearch() {}
    /// How high the tab can be before the board scrolls: long lists scroll by themselves in there.
    virtual void setRoom(int /*height*/) {}
};

} // namespace quillfen
