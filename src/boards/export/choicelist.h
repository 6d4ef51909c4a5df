// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/text/type.h"

#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

namespace quillfen {

class RadioRow;
class ScrollArea;

/// What one row of a choice says.
struct Choice {
    QString title;
    QString caption;
    QString value;

    bool operator==(const Choice &) const = default;
};

/// A choice as radio rows of one height. A short one is as high as its rows; a long one scrolls by itself, and has row
/// widgets for what can be seen only: ten thousand volumes cost as much as ten.
class ChoiceList final : public QWidget {
    Q_OBJECT

public:
    /// At most `mostRows` rows are shown at a time.
    ChoiceList(const QString &accessibleName, int rowHeight, int mostRows, QWidget *parent = nullptr);

    /// The type of titles that are not chosen.
    void setTitleType(Type type);
    /// `choiceAt` is asked for the rows that can be seen, now and whenever others come into sight.
    void setChoices(int count, std::function<Choice(int)> choiceAt);
    /// The row that is chosen, -1 for none. It is scrolled to when it changes.
    void setCurrent(int index);

Q_SIGNALS:
    /// The user has chosen this row.
    void chosen(int index);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Slot {
        RadioRow *row = nullptr;
        int index = -1; ///< the choice it shows, -1 for none
        Choice choice;
    };

    void fit();
    void addSlot();
    void orderTabs();
    void bindRows();
    void bind(Slot &slot, int index);
    void moveTo(int index);
    void bringIntoView(int index);
    [[nodiscard]] int step() const;
    [[nodiscard]] int slotCount() const;
    [[nodiscard]] Slot &slotOf(int index);

    int m_rowHeight;
    int m_mostRows;
    Type m_titleType = Type::Body;
    int m_count = 0;
    int m_current = -1;
    std::function<Choice(int)> m_choiceAt;
    ScrollArea *m_scroll;
    QWidget *m_canvas;
    std::vector<Slot> m_slots;
};

} // namespace quillfen
