// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/controls/taborder.h"

#include <QBoxLayout>
#include <QPointer>
#include <QWidget>

#include <map>
#include <utility>
#include <vector>

namespace quillfen {

/// Keeps one row widget per key in a layout: a list that comes anew every fifteen seconds moves, adds and removes only
/// what changed, so that focus, hover and an open menu survive. For short lists of rich rows; long ones are item views.
template <typename Key, typename Row>
class RowList final {
public:
    explicit RowList(QBoxLayout *layout) : m_layout(layout) {}

    /// `items` in their order: `keyOf(item)`, `make(item)` for a row that is new, `update(row, item)` for every row.
    /// Among items with one key the first counts.
    template <typename Items, typename KeyOf, typename Make, typename Update>
    void sync(const Items &items, KeyOf keyOf, Make make, Update update)
    {
        std::map<Key, QPointer<Row>> gone = std::exchange(m_rows, {});
        int place = 0;
        m_moved = false;
        for (const auto &item : items) {
            const Key key = keyOf(item);
            if (m_rows.contains(key)) {
                continue;
            }
            const auto known = gone.find(key);
            Row *row = known == gone.end() ? nullptr : known->second.data();
            if (row == nullptr) {
                row = make(item);
            } else {
                gone.erase(known);
            }
            put(row, place++);
            m_rows.emplace(key, row);
            update(row, item);
        }
        if (m_moved) {
            orderTabs();
        }
        for (const auto &[key, row] : gone) {
            if (row) {
                m_layout->removeWidget(row);
                row->hide();
                // Not at once: the row's own button may be what led here.
                row->deleteLater();
            }
        }
    }

    [[nodiscard]] Row *row(const Key &key) const
    {
        const auto found = m_rows.find(key);
        return found == m_rows.end() ? nullptr : found->second.data();
    }

    [[nodiscard]] std::size_t size() const { return m_rows.size(); }

private:
    void put(Row *row, int place)
    {
        if (m_layout->indexOf(row) != place) {
            m_layout->removeWidget(row);
            m_layout->insertWidget(place, row);
            m_moved = true;
        }
    }

    /// Tab goes through the rows as they stand, wherever in the window the list is: a new row would come last of all.
    void orderTabs()
    {
        std::vector<QWidget *> controls;
        for (int place = 0; place < m_layout->count(); ++place) {
            for (QWidget *const part : m_layout->itemAt(place)->widget()->findChildren<QWidget *>()) {
                if ((part->focusPolicy() & Qt::TabFocus) != 0) {
                    controls.push_back(part);
                }
            }
        }
        if (m_layout->parentWidget() != nullptr) {
            placeInTabOrder(m_layout->parentWidget(), controls);
        }
    }

    QBoxLayout *m_layout;
    bool m_moved = false; ///< a row is not where it was
    std::map<Key, QPointer<Row>> m_rows;
};

} // namespace quillfen
